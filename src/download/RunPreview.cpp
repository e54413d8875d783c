#include "download/RunPreview.h"

#include "graph/GraphPair.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Machine.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::download {

using graph::GraphPair;

namespace {

constexpr int BoxFrame = 20;  // pixels of a text box beside its text
constexpr int BoxesALine = 4;
constexpr std::int64_t DrawingsASecond = 10;  // at most: a page of a real line takes 162 ms
constexpr std::size_t MostListed = 10;        // pages named in a remark

void SetText(QLineEdit* box, const std::string& text) { box->setText(QString::fromStdString(text)); }

/// "page 2", "pages 2, 17", "pages 1, 2, ... and 5 more".
std::string Listed(const std::vector<std::int32_t>& pages) {
  std::string text = pages.size() == 1 ? "page" : "pages";
  const auto named = std::min(pages.size(), MostListed);
  for (std::size_t i = 0; i < named; ++i) text += (i == 0 ? " " : ", ") + values::NumberText(pages[i]);
  if (named < pages.size()) text += " and " + std::to_string(pages.size() - named) + " more";
  return text;
}

}  // namespace

RunPreview::RunPreview(QWidget* parent)
    : QWidget(parent),
      boxes_(new QGridLayout),
      lblRemark(platform::MakeLabel("lblRemark", "", this)),
      lblHelp(
          platform::MakeLabel("lblHelp",
                              "Choose Download from the Data menu: the run is saved in a file and appears "
                              "here as it arrives.",
                              this)),
      graphs_(new GraphPair(this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(boxes_);
  column->addWidget(lblRemark);
  column->addWidget(graphs_, 100);
  column->addWidget(lblHelp, 1, Qt::AlignCenter);
  column->addStretch(1);  // while there is no run to show
  for (auto* label : {lblRemark, lblHelp}) label->setWordWrap(true);
  AddBox(txtDataFile, "txtDataFile", "", "Data File");
  AddBox(txtLaunchTime, "txtLaunchTime", "", "Launched");
  AddBox(txtTimeLeft, "txtTimeLeft", "", "Time Left");
  AddBox(txtPages, "txtPages", "", "Pages");
  AddBox(txtSerialNumber, "txtSerialNumber", "", "Serial Number");
  AddBox(txtFirmwareVersion, "txtFirmwareVersion", "", "Firmware");
  AddBox(txtSamplingFrequency, "txtSamplingFrequency", "", "Frequency");
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

void RunPreview::AddBox(QLineEdit*& box, const char* name, const char* label, const char* caption) {
  const int place = boxes_->count() / 2;
  box = platform::MakeReadOnlyBox(name, caption, this);
  boxes_->addWidget(platform::MakeLabel(label, caption, this, box), place / BoxesALine,
                    place % BoxesALine * 2);
  boxes_->addWidget(box, place / BoxesALine, place % BoxesALine * 2 + 1);
}

void RunPreview::Clear() {
  for (auto* box : {txtDataFile, txtLaunchTime, txtTimeLeft, txtPages, txtSerialNumber, txtFirmwareVersion,
                    txtSamplingFrequency})
    box->clear();
  txtDataFile->setToolTip({});
  lblRemark->hide();
  lblHelp->hide();
  graphs_->hide();
}

void RunPreview::ShowHeader(const files::DownloadHeader& header, double BinLinearMode,
                            double LinearChannels) {
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

void RunPreview::Begin(const std::string& fileName) {
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

void RunPreview::Add(std::int32_t page, const std::string& pageDataText) {
  page_ = page;
  TellPages();
  const std::string record = files::PageRecord(page, pageDataText);
  if (bins_) {
    records_ = (page % 2 == 0 ? records_ : "") + record;
  } else if (channels_ >= 1 && channels_ <= 3) {
    files::AppendRecord(run_, std::string_view(record).substr(0, record.find('\r')), channels_);
  }
  drawn_ = false;
  auto& machine = platform::Machine::Get();
  if ((machine.QueryPerformanceCounter() - drawnAt_) * DrawingsASecond >= machine.QueryPerformanceFrequency())
    Draw();
}

void RunPreview::NoteLost(std::int32_t page) {
  lost_.push_back(page);
  TellPages();
}

void RunPreview::NoteLate(std::int32_t page) {
  if (late_.empty() || late_.back() != page) late_.push_back(page);
  TellPages();
}

void RunPreview::TellPages() {
  const auto lost = values::CountText(static_cast<std::int64_t>(lost_.size())) + " lost";
  SetText(txtPages,
          values::CountText(shared::Shared.RecordsInFile) + " saved" + (lost_.empty() ? "" : ", " + lost));
  std::string remark =
      hasLayout_ ? "" : "Mode or channels are unknown: the file gets the pages' numbers alone. ";
  if (!lost_.empty()) remark += "Not in the file: " + Listed(lost_) + (late_.empty() ? "." : ". ");
  if (!late_.empty())
    remark += "Asked again for " + Listed(late_) +
              "; a page may be in the file twice, and those after it under a number too high.";
  lblRemark->setText(QString::fromStdString(remark));
  lblRemark->setVisible(!remark.empty());
}

void RunPreview::TellTimeLeft(const std::string& text) { SetText(txtTimeLeft, text); }

void RunPreview::End() {
  if (!drawn_) Draw();
  for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->SetInteractive(true);
  lblHelp->setVisible(graphs_->isHidden());
}

void RunPreview::Draw() {
  drawn_ = true;
  drawnAt_ = platform::Machine::Get().QueryPerformanceCounter();
  if (bins_) return DrawBins();
  graphs_->Show(run_);
}

// A set is complete when its Y page has come.
void RunPreview::DrawBins() {
  if (page_ % 2 != 0) return;
  const auto pair = files::FindPair(records_, page_ - 1);
  if (pair.result == files::PairResult::Found)
    graphs_->Show(files::SpreadOverDegrees(pair.XPoints, pair.YPoints), page_ - 1, pair.partner);
}

}  // namespace bexlow::download
