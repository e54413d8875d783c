#include <exception>

#include "graph/DataScreen.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Screens.h"
#include "values/Conversions.h"

namespace bexlow::graph {

using platform::MsgBox;
using shared::Guarded;
using shared::NumberIn;
using values::NumberText;

namespace {

constexpr auto WrongFile = "This is not a Quornell Download Pages file!";

class Graph : public DataScreen {
 public:
  Graph() : DataScreen("Graph", "Graph", false) {
    auto* scroll = BuildScroll();
    BuildBody(scroll, cmdPrevious, cmdNext);
    PageNumber(0);
    cmdPrevious->setEnabled(false);
  }

  void Open(const std::string& fileName) override {
    FileName(fileName);
    try {
      OpenFile();
    } catch (const std::exception&) {}
  }

 private:
  QWidget* BuildScroll() {
    auto* frame = platform::MakeFrame("fraScroll", "Scroll Data Bins", this);
    auto* row = new QHBoxLayout(frame);
    const auto addBox = [&](const char* name, const char* label, const char* caption) {
      auto* box = platform::MakeReadOnlyBox(name, QString("Page ") + caption, frame);
      box->setFixedWidth(fontMetrics().horizontalAdvance("00000000"));
      row->addWidget(platform::MakeLabel(label, caption, frame, box));
      row->addWidget(box);
      return box;
    };
    txtPageNumberX = addBox("txtPageNumberX", "Label2", "X");
    txtPageNumberY = addBox("txtPageNumberY", "Label1", "Y");
    connect(txtPageNumberX, &QLineEdit::textChanged, this, [this] { txtPageNumberX_Change(); });
    cmdPrevious = MakeButton("cmdPrevious", "Previous", [this] { cmdPrevious_Click(); });
    cmdNext = MakeButton("cmdNext", "Next", [this] { cmdNext_Click(); });
    cmdPrevious->setToolTip("The pair before (Page Up in a graph)");
    cmdNext->setToolTip("The next pair (Page Down in a graph)");
    row->addWidget(cmdPrevious);
    row->addWidget(cmdNext);
    return frame;
  }

  void PageNumber(int page) { txtPageNumberX->setText(QString::number(page)); }

  void txtPageNumberX_Change() {
    txtPageNumberY->setText(QString::number(static_cast<int>(NumberIn(*txtPageNumberX)) + 1));
  }

  // If the dialog is cancelled or the file cannot be read, no message appears and the graphs stay as they
  // are.
  void mnuOpen_Click() override {
    try {
      if (AskForDataFile(CommonDialog1)) Open(CommonDialog1.FileName);
    } catch (const std::exception&) {}
  }

  void OpenFile() {
    const auto text = platform::ReadWhole(FileName());
    const auto [kind, channel] = files::CheckFile(text);
    if (kind == files::FileKind::Bin || kind == files::FileKind::Linear) {
      shared::ForgetFailure(*this);
      graphs_->TellFile(FileName(), files::ReadRunFacts(text));
    }
    switch (kind) {
      case files::FileKind::Empty:
        return MsgBox(WrongFile);
      case files::FileKind::WrongKind:
        MsgBox(WrongFile);
        FileName("");
        CommonDialog1.FileName.clear();
        return;
      case files::FileKind::Bin:
        return OpenBin();
      case files::FileKind::Linear:
        return OpenLinear(channel, text);
      case files::FileKind::TooShort:
      case files::FileKind::OtherMode:
        shared::NoteFailure(FileName() + " holds no run; the graphs are unchanged", this);
        return;
    }
  }

  void OpenBin() {
    PageNumberX = 1;
    LastPageX = 0;
    PageNumber(1);
    cmdPrevious->setEnabled(false);
    cmdNext->setEnabled(true);
    graphs_->PrepareBin();
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->ClearData();
    Big(PageNumberX, FileName());
  }

  void OpenLinear(int channel, const std::string& text) {
    PageNumber(0);
    cmdPrevious->setEnabled(false);
    cmdNext->setEnabled(false);
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->ClearData();
    graphs_->PrepareLinear();
    graphs_->MoveTogether(channel == 3);  // with one channel there is nothing to move together
    run_ = {};
    if (channel < 1 || channel > 3)
      return shared::NoteFailure(FileName() + " holds no run: its channels are unknown", this);
    Guarded(*this, channel == 3 ? "BuildDoubleChannelArrays" : "BuildSingleChannelArray", [&] {
      if (!files::ReadRun(text, channel, run_)) MsgBox(EndOfFileText);
    });
    graphs_->Show(run_);
  }

  void cmdNext_Click() {
    if (FileName().empty()) return MsgBox("No data file has been selected!");
    if (NumberIn(*txtPageNumberX) == LastPageX) return MsgBox(EndOfFileText);
    PageNumberX = values::ToInt16(PageNumberX + 2);
    if (PageNumberX > 0) cmdPrevious->setEnabled(true);
    PageNumber(PageNumberX);
    Big(PageNumberX, FileName());
  }

  void cmdPrevious_Click() {
    if (FileName().empty()) return MsgBox("No data file has been selected!");
    if (PageNumberX == 1) return cmdPrevious->setEnabled(false);
    PageNumberX = values::ToInt16(PageNumberX - 2);
    cmdPrevious->setEnabled(PageNumberX != 0);
    PageNumber(PageNumberX);
    Big(PageNumberX, FileName());
  }

  void Big(std::int16_t page, const std::string& fileName) {
    Guarded(*this, "Big", [&] {
      degrees_ = {};
      const auto text = platform::ReadWhole(fileName);
      const files::BinPair pair = files::FindPair(text, page);
      switch (pair.result) {
        case files::PairResult::NoPage:
          return MsgBox("Unable to locate data page " + NumberText(page) + " in this file!");
        case files::PairResult::NoPartner:
          MsgBox(EndOfFileText);
          LastPageX = page;
          return;
        case files::PairResult::Found:
          ConvertPointArraysToDegreeArrays(pair);
          graphs_->TellFile(fileName, files::ReadRunFacts(text));  // it may be another one by now
          graphs_->Show(degrees_, page, pair.partner);
      }
    });
  }

  void ConvertPointArraysToDegreeArrays(const files::BinPair& pair) {
    Guarded(*this, "ConvertPointArraysToDegreeArrays",
            [&] { degrees_ = files::SpreadOverDegrees(pair.XPoints, pair.YPoints); });
  }

  files::Run run_;
  files::DegreeArrays degrees_;
  std::int16_t PageNumberX = 0;
  std::int16_t LastPageX = 0;

  QPushButton* cmdNext = nullptr;
  QPushButton* cmdPrevious = nullptr;
  QLineEdit* txtPageNumberX = nullptr;
  QLineEdit* txtPageNumberY = nullptr;
};

}  // namespace

DataScreen* MakeGraph() { return new Graph; }

}  // namespace bexlow::graph
