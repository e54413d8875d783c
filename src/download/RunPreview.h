// The run of a download while it arrives: its header values, and its pages as graphs.
#pragma once

#include "files/LinearCsv.h"
#include "graph/GraphPair.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Machine.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::download {

class RunPreview : public QWidget {
 public:
  explicit RunPreview(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(boxes_);
    column->addWidget(lblRemark);
    column->addWidget(graphs_, 100);
    column->addWidget(lblHelp, 1, Qt::AlignCenter);
    column->addStretch(1);  // while there is no run to show
    for (auto* label : {lblRemark, lblHelp}) label->setWordWrap(true);
    const auto widen = [this](QLineEdit* box, const char* text) {
      box->setMinimumWidth(fontMetrics().horizontalAdvance(text) + BoxFrame);
    };
    boxes_->setColumnStretch(1, 1);  // the file's name has what is left
    widen(txtLaunchTime, "0000-00-00 00:00:00");
    widen(txtTimeLeft, "at most 5 min 55 s");
    widen(txtPages, "2,047 saved");
    graphs_->HideRunLine();
    lblRemark->hide();
    graphs_->hide();
  }

  /// Adds a box behind those that are there, four a line.
  QLineEdit* AddBox(const char* name, const char* label, const char* caption) {
    const int number = boxes_->count() / 2;
    auto* box = platform::MakeReadOnlyBox(name, caption, this);
    boxes_->addWidget(platform::MakeLabel(label, caption, this, box), number / BoxesALine,
                      number % BoxesALine * 2);
    boxes_->addWidget(box, number / BoxesALine, number % BoxesALine * 2 + 1);
    return box;
  }

  /// Forgets the run on show, before another is asked for.
  void Clear() {
    for (auto* box : {txtDataFile, txtLaunchTime, txtTimeLeft, txtPages, txtSerialNumber, txtFirmwareVersion,
                      txtSamplingFrequency})
      box->clear();
    txtDataFile->setToolTip({});
    lblRemark->hide();
    lblHelp->hide();
    graphs_->hide();
  }

  /// Shows the header of the run that is to come.
  void ShowHeader(const files::DownloadHeader& header, double BinLinearMode, double LinearChannels) {
    hasLayout_ = !files::ColumnHeads(BinLinearMode, LinearChannels).empty();
    bins_ = BinLinearMode == 0;
    channels_ = BinLinearMode == 1 ? static_cast<int>(LinearChannels) : 0;
    header_ =
        files::DataFileHeader(files::DataFileKind::DownloadPages, {}, header, BinLinearMode, LinearChannels);
    SetText(txtSerialNumber, values::PlainNumberText(header.SerialNumber));
    SetText(txtLaunchTime, files::ReadRunFacts(header_).launch);
    SetText(txtFirmwareVersion, header.FirmwareVersionText);
    SetText(txtSamplingFrequency, header.SamplingFrequencyText + " Hz");
  }

  /// Shows the file that the pages go to, and empty graphs.
  void Begin(const std::string& fileName) {
    fileName_ = fileName;
    SetText(txtDataFile, std::filesystem::path(fileName).filename().string());
    platform::SetPlainToolTip(txtDataFile, QString::fromStdString(fileName));
    lost_.clear();
    late_.clear();
    TellPages();
    run_ = {};
    records_.clear();
    graphs_->PrepareLinear();
    if (bins_) graphs_->PrepareBin();
    if (channels_ != 3) graphs_->MoveTogether(false);
    graphs_->TellFile(fileName, files::ReadRunFacts(header_));
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) {
      graph->ClearData();
      graph->SetInteractive(false);  // each page shows the whole run again
    }
    graphs_->show();
  }

  /// Adds a page that is in the file, and draws it unless a page was drawn less than 0.1 s ago.
  void Add(std::int32_t page, const std::string& pageDataText) {
    page_ = page;
    TellPages();
    const std::string record = files::PageRecord(page, pageDataText);
    if (bins_) {
      records_ = (page % 2 == 0 ? records_ : "") + record;
    } else if (channels_ >= 1 && channels_ <= 3) {
      files::AppendRecord(run_, std::string_view(record).substr(0, record.find('\r')), channels_);
    }
    drawn_ = false;
    if (platform::SecondsSince(drawnAt_) >= DrawingSeconds) Draw();
  }

  /// Notes a page that could not be stored, or one that came only after it was asked for again.
  void NoteLost(std::int32_t page) {
    lost_.push_back(page);
    TellPages();
  }

  void NoteLate(std::int32_t page) {
    if (late_.empty() || late_.back() != page) late_.push_back(page);
    TellPages();
  }

  void TellTimeLeft(const std::string& text) { SetText(txtTimeLeft, text); }
  /// Draws what has not been drawn yet, and lets the user move about in it.
  void End() {
    if (!drawn_) Draw();
    for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->SetInteractive(true);
    if (!graphs_->isHidden()) TellPages();
    lblHelp->setVisible(graphs_->isHidden());
  }

 private:
  static constexpr int BoxFrame = 20;  // pixels of a text box beside its text
  static constexpr int BoxesALine = 4;
  static constexpr double DrawingSeconds = 0.1;  // at least: a page of a real line takes 162 ms
  static constexpr std::size_t MostListed = 10;  // pages named in a remark

  static void SetText(QLineEdit* box, const std::string& text) { box->setText(QString::fromStdString(text)); }

  /// "page 2", "pages 2, 17", "pages 1, 2, ... and 5 more".
  static std::string Listed(const std::vector<std::int32_t>& pages) {
    std::string text = pages.size() == 1 ? "page" : "pages";
    const auto named = std::min(pages.size(), MostListed);
    for (std::size_t i = 0; i < named; ++i) text += (i == 0 ? " " : ", ") + values::NumberText(pages[i]);
    if (named < pages.size()) text += " and " + std::to_string(pages.size() - named) + " more";
    return text;
  }

  /// Of a CSV file that this download has not written: it may hold another logger's run.
  std::string OlderCsv() const {
    try {
      const std::filesystem::path csv = files::CsvFileName(fileName_), file = fileName_;
      if (std::filesystem::last_write_time(csv) >= std::filesystem::last_write_time(file)) return {};
      return " " + csv.filename().string() + " is older than this file and belongs to an earlier download.";
    } catch (const std::system_error&) {  // there is none
      return {};
    }
  }

  void TellPages() {
    const auto lost = values::CountText(static_cast<std::int64_t>(lost_.size())) + " lost";
    SetText(txtPages,
            values::CountText(shared::Shared.RecordsInFile) + " saved" + (lost_.empty() ? "" : ", " + lost));
    std::string remark =
        hasLayout_ ? "" : "Mode or channels are unknown: the file gets the pages' numbers alone. ";
    if (!lost_.empty()) remark += "Not in the file: " + Listed(lost_) + (late_.empty() ? "." : ". ");
    if (!late_.empty())
      remark += "Asked again for " + Listed(late_) +
                "; a page may be in the file twice, and those after it under a number too high.";
    remark += OlderCsv();
    lblRemark->setText(QString::fromStdString(remark).trimmed());
    lblRemark->setVisible(!remark.empty());
  }

  void Draw() {
    drawn_ = true;
    drawnAt_ = platform::Machine::Get().QueryPerformanceCounter();
    if (bins_) return DrawBins();
    graphs_->Show(run_);
  }

  // A set is complete when its Y page has come.
  void DrawBins() {
    if (page_ % 2 != 0) return;
    const auto pair = files::FindPair(records_, page_ - 1);
    if (pair.result == files::PairResult::Found)
      graphs_->Show(files::SpreadOverDegrees(pair.XPoints, pair.YPoints), page_ - 1, pair.partner);
  }

  QGridLayout* boxes_ = new QGridLayout;
  QLabel* lblRemark = platform::MakeLabel("lblRemark", "", this);
  QLabel* lblHelp =
      platform::MakeLabel("lblHelp",
                          "Choose Download from the Data menu: the run is saved in a file and appears "
                          "here as it arrives.",
                          this);
  graph::GraphPair* graphs_ = new graph::GraphPair(this);
  QLineEdit* txtDataFile = AddBox("txtDataFile", "", "Data File");
  QLineEdit* txtLaunchTime = AddBox("txtLaunchTime", "", "Launched");
  QLineEdit* txtTimeLeft = AddBox("txtTimeLeft", "", "Time Left");
  QLineEdit* txtPages = AddBox("txtPages", "", "Pages");
  QLineEdit* txtSerialNumber = AddBox("txtSerialNumber", "", "Serial Number");
  QLineEdit* txtFirmwareVersion = AddBox("txtFirmwareVersion", "", "Firmware");
  QLineEdit* txtSamplingFrequency = AddBox("txtSamplingFrequency", "", "Frequency");
  std::string fileName_, header_;  ///< the header as in the file
  bool bins_ = false, hasLayout_ = true;
  int channels_ = 0;
  std::int32_t page_ = 0;  ///< the last one stored
  std::vector<std::int32_t> lost_, late_;
  files::Run run_;
  std::string records_;  ///< of the last pair of bin pages
  bool drawn_ = true;
  std::int64_t drawnAt_ = 0;  ///< reading of the high-resolution counter
};

}  // namespace bexlow::download
