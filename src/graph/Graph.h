// Draws a download, X above Y: a Linear run as a whole, a Bin file one pair of pages at a time.
#pragma once

#include <string>

#include "files/BinPages.h"
#include "files/Series.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/Form.h"

class QLineEdit;
class QPushButton;

namespace bexlow::graph {

class GraphPair;

class Graph : public platform::Form {
 public:
  Graph();

  /// The Open action: asks for a file, or takes the one that a download handed over.
  void mnuOpen_Click();
  void Open(const std::string& fileName);

 private:
  void BuildMenu();
  void BuildBody();
  QWidget* BuildScroll();

  void cmdNext_Click();
  void cmdPrevious_Click();
  void txtPageNumberX_Change();

  void OpenFile();
  void OpenBin();
  void OpenLinear(int channel);
  void PageNumber(int page);
  void Big(std::int16_t page, const std::string& fileName);
  void ConvertPointArraysToDegreeArrays(const files::BinPair& pair);
  void BuildArrays(const char* procedure, int channel);
  std::string FileName() const;

  platform::CommonDialog CommonDialog1;
  files::Run run_;
  files::DegreeArrays degrees_;
  std::int16_t PageNumberX = 0;
  std::int16_t LastPageX = 0;

  QLineEdit* txtFileName = nullptr;
  GraphPair* graphs_ = nullptr;
  QPushButton* cmdNext = nullptr;
  QPushButton* cmdPrevious = nullptr;
  QLineEdit* txtPageNumberX = nullptr;
  QLineEdit* txtPageNumberY = nullptr;
};

}  // namespace bexlow::graph
