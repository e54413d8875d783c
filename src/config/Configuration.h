// Shows the logger's on-board parameters, reads them all and writes them back.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "config/ParameterMap.h"
#include "config/WriteSequence.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"

class QGridLayout;
class QLineEdit;
class QRadioButton;

namespace bexlow::platform {
class CWNumEdit;
}

namespace bexlow::config {

/// Opening the screen starts a read.
class Configuration : public platform::Form {
  Q_OBJECT

 public:
  Configuration();

 private:
  void BuildMenus();
  void BuildBody();
  /// The rows of parameters that have this many cells.
  QWidget* BuildAddresses(const char* name, int cells);
  QWidget* BuildIdentity();
  QWidget* MakeValueBox(const Parameter& row, QWidget* parent);
  void AddUpdateRate(QGridLayout* grid, const Parameter& row, QWidget* frame);

  void mnuRead_Click();
  void mnuShow_Click(double Parameter::*value);
  void mnuShowDefaults_Click();
  void MSComm1_OnComm();
  void ToggleHidden();

  platform::Activity Activity() const;
  void RequestCell(std::size_t stepsSent = 0);
  void TakeCell(std::uint8_t byte);
  void FinishRead();
  void BreakOutReadArray();
  void ShowParameters();
  void ClearParameters();
  void EnableSequences(bool enabled);
  std::optional<CellByte> CellAt(int k) const;
  double ValueOf(std::size_t row) const;

  platform::MSComm MSComm1;
  Progress progress_;
  WriteSequence write_;
  std::array<platform::CWNumEdit*, ParameterCount> edits_{};  ///< indexed as Parameters, null for other rows
  std::array<QLineEdit*, ParameterCount> boxes_{};

  QMenu* mnuTools = nullptr;
  QAction* mnuRead = nullptr;
  QAction* mnuWrite = nullptr;
  QAction* mnuEEPROM = nullptr;
  QWidget* fra100108 = nullptr;
  QRadioButton* opt75Hz = nullptr;
  QRadioButton* opt15Hz = nullptr;
};

}  // namespace bexlow::config
