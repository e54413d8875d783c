// Finds offset and gain of the three accelerometers from the extremes of their samples, and writes them.
#pragma once

#include <array>
#include <optional>

#include "config/CalibrationMath.h"
#include "config/WriteSequence.h"
#include "link/SamplingChain.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"

class QGridLayout;
class QLineEdit;

namespace bexlow::config {

class Calibrate : public platform::Form {
  Q_OBJECT

 public:
  Calibrate();

 private:
  /// The boxes of one axis.
  struct Axis {
    QLineEdit *current, *min, *max, *offset, *gain;
  };

  void BuildMenu();
  void BuildBody();
  void BuildGrid(QWidget* frame);
  Axis BuildAxis(const char* letter, int line, QGridLayout* grid, QWidget* frame);

  void Take(const link::Bytes& reply);

  void PrepareRun();
  void FinishRun();
  void ClearRun();
  void DisableShaker();
  void Widen(const Axis& axis);

  platform::MSComm MSComm1;
  link::SamplingChain chain_;
  Progress progress_;
  WriteSequence write_;
  QAction* mnuSample = nullptr;
  QAction* mnuWrite = nullptr;
  std::array<Axis, 3> axes_{};
  config::CalibrationValues
      CalibrationValues{};  ///< fixed when a run stops; the write sends these, not the boxes
  bool sampled_ = false;    ///< the run has taken a sample
};

}  // namespace bexlow::config
