// Reviews a two-channel run: the angles, and a cursor at each push of the wearer's button.
#pragma once

#include <string>
#include <vector>

#include "files/RunFacts.h"
#include "files/Series.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/Form.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace bexlow::graph {
class GraphPair;
}

namespace bexlow::review {

class GraphBP : public platform::Form {
 public:
  GraphBP();

  /// The Open action with a file that is chosen already.
  void Open(const std::string& fileName);

 private:
  void BuildMenu();
  void BuildBody();
  QWidget* BuildSteps();

  void mnuOpen_Click();
  void cmdBack_Click();
  void cmdForward_Click();
  void cmdShowAll_Click();

  bool HeaderIsAccepted(const std::string& text);
  void BuildDoubleChannelArrays(const std::string& text);
  void ShowFile();
  void ShowPush(std::size_t number);
  QString PushWords(std::size_t number) const;
  void ChooseCursor(double point);
  void ShowAllPushes();
  void ShowOnePush();
  void PlaceCursor(int cursor, double point);
  std::size_t Number() const;
  std::string FileName() const;

  platform::CommonDialog CommonDialog1;
  files::RunFacts facts_;
  files::Run run_;
  std::vector<double> ButtonPushes;  ///< index of each push in XLinear; a single 0 for a file without a push

  QLineEdit* txtFileName = nullptr;
  graph::GraphPair* graphs_ = nullptr;
  QLabel* lblPush_ = nullptr;
  QLineEdit* txtBPNumber = nullptr;
  QLineEdit* txtBPValue = nullptr;
  QPushButton* cmdBack = nullptr;
  QPushButton* cmdForward = nullptr;
  QPushButton* cmdShowAll = nullptr;
};

}  // namespace bexlow::review
