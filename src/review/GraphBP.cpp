#include "graph/DataScreen.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "shared/Screens.h"

namespace bexlow::review {

using platform::MsgBox;
using shared::Guarded;
using shared::NumberIn;
using shared::Shown;

namespace {

class GraphBP : public graph::DataScreen {
 public:
  GraphBP() : DataScreen("GraphBP", "Graph Button Pushes", true) {
    auto* steps = BuildSteps();
    BuildBody(steps, cmdBack, cmdForward);
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) {
      graph->SetXAxis(false, 0, 10);
      graph->SetCursors({0});
      graph->CursorClicked = [this](double point) { ChooseCursor(point); };
    }
  }

  void Open(const std::string& fileName) override {
    Guarded(*this, "mnuOpen_Click", [&] {
      FileName(fileName);
      const auto text = platform::ReadWhole(FileName());
      if (!HeaderIsAccepted(text)) return;
      shared::ForgetFailure(*this);
      BuildDoubleChannelArrays(text);
      graphs_->TellFile(FileName(), facts_);
      graphs_->PrepareLinear();
      graphs_->Show(run_);
      ShowPush(0);
    });
  }

 private:
  QWidget* BuildSteps() {
    auto* frame = platform::MakeFrame("fraSteps", "Button Pushes", this);
    txtBPNumber = platform::MakeReadOnlyBox("txtBPNumber", "Number", frame);
    txtBPValue = platform::MakeReadOnlyBox("txtBPValue", "Point", frame);
    cmdBack = MakeButton("cmdBack", "<", [this] { cmdBack_Click(); });
    cmdForward = MakeButton("cmdForward", ">", [this] { cmdForward_Click(); });
    cmdShowAll = MakeButton("cmdShowAll", "Show All", [this] { cmdShowAll_Click(); });
    cmdBack->setAccessibleName("Back");
    cmdForward->setAccessibleName("Forward");
    cmdBack->setToolTip("The push before (Page Up in a graph)");
    cmdForward->setToolTip("The next push (Page Down in a graph)");
    lblPush_ = platform::MakeLabel("lblPush", "no file", frame);
    const int width = fontMetrics().horizontalAdvance("0000000000");
    auto* row = new QHBoxLayout(frame);
    row->addWidget(platform::MakeLabel("Label1", "Number", frame, txtBPNumber));
    row->addWidget(txtBPNumber);
    row->addWidget(platform::MakeLabel("Label2", "Point", frame, txtBPValue));
    row->addWidget(txtBPValue);
    row->addWidget(lblPush_);
    row->addWidget(cmdBack);
    row->addWidget(platform::MakeLabel("Label3", "<--Scroll-->", frame));
    row->addWidget(cmdForward);
    row->addWidget(cmdShowAll);
    for (QWidget* box : {static_cast<QWidget*>(txtBPNumber), static_cast<QWidget*>(txtBPValue)})
      box->setFixedWidth(width);
    for (auto* button : {cmdBack, cmdForward}) button->setFixedWidth(width / 2);
    return frame;
  }

  std::size_t Number() const { return static_cast<std::size_t>(NumberIn(*txtBPNumber)); }

  void mnuOpen_Click() override {
    CommonDialog1.CancelError = true;
    graph::AskForDataFile(CommonDialog1);
    Open(CommonDialog1.FileName);
  }

  bool HeaderIsAccepted(const std::string& text) {
    switch (files::CheckReviewFile(text)) {
      case files::ReviewCheck::Ok:
        facts_ = files::ReadRunFacts(text);
        return true;
      case files::ReviewCheck::Empty:
        MsgBox("This is not a Quornell Download file!");
        break;
      case files::ReviewCheck::TooShort:
        MsgBox(graph::EndOfFileText);
        break;
      case files::ReviewCheck::NotSupported:
        MsgBox("This Quornell Download is not supported in Button Mode!");
        break;
    }
    return false;
  }

  // Reports a damaged record; the file is then shown with empty series and the pushes before the damage.
  void BuildDoubleChannelArrays(const std::string& text) {
    files::Run run;  // while a failure is told, the graphs still show the run before
    Guarded(*this, "BuildDoubleChannelArrays", [&] { files::ReadRun(text, 3, run); });
    run_ = std::move(run);
    ButtonPushes = run_.pushes;
    if (ButtonPushes.empty()) ButtonPushes.push_back(0);
  }

  void ShowPush(std::size_t number) {
    txtBPNumber->setText(Shown(static_cast<double>(number)));
    txtBPValue->setText(Shown(ButtonPushes[number]));
    const double point = NumberIn(*txtBPValue);
    lblPush_->setText(PushWords(number));
    txtBPNumber->setAccessibleDescription(lblPush_->text());
    auto cursors = graphs_->CWGraph1->Cursors();
    cursors.front() = point;
    SetCursors(cursors);
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->StressCursor(point);
    graphs_->CWGraph1->BringIntoView(point);
  }

  // People count from 1, the given number from 0.
  QString PushWords(std::size_t number) const {
    if (run_.pushes.empty()) return "no push";
    const auto time = graphs_->TimeWords(ButtonPushes[number]);
    return QString("push %1 of %2").arg(number + 1).arg(run_.pushes.size()) +
           (time.isEmpty() ? QString() : ", " + time);
  }

  void ChooseCursor(double point) {
    if (const auto number = files::PushAt(ButtonPushes, point)) ShowPush(*number);
  }

  void SetCursors(const std::vector<double>& points) {
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->SetCursors(points);
  }

  void cmdBack_Click() {
    if (Number() > 0) ShowPush(Number() - 1);
  }

  void cmdForward_Click() {
    if (Number() + 1 < ButtonPushes.size()) ShowPush(Number() + 1);
  }

  void cmdShowAll_Click() {
    if (ButtonPushes.empty()) return;
    const bool all = cmdShowAll->text() == "Show All";
    cmdShowAll->setText(all ? "Hide All" : "Show All");
    SetCursors(all ? ButtonPushes : std::vector{NumberIn(*txtBPValue)});
  }

  files::RunFacts facts_;
  files::Run run_;
  std::vector<double> ButtonPushes;  ///< index of each push in XLinear; a single 0 for a file without a push

  QLabel* lblPush_ = nullptr;
  QLineEdit* txtBPNumber = nullptr;
  QLineEdit* txtBPValue = nullptr;
  QPushButton* cmdBack = nullptr;
  QPushButton* cmdForward = nullptr;
  QPushButton* cmdShowAll = nullptr;
};

}  // namespace

graph::DataScreen* MakeGraphBP() { return new GraphBP; }

}  // namespace bexlow::review
