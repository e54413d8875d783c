#include "download/RunPreview.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <filesystem>

#include "files/BinPages.h"
#include "files/RunFacts.h"
#include "graph/GraphPair.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Machine.h"
#include "values/NumberText.h"

namespace bexlow::download {

using graph::GraphPair;

namespace {

constexpr int BoxFrame = 20;  // pixels of a text box beside its text
constexpr int BoxesALine = 4;
constexpr std::int64_t ShowingsASecond = 10;  // at most: a page of a real line takes 163 ms

}  // namespace

RunPreview::RunPreview(QWidget* parent)
    : QWidget(parent), boxes_(new QGridLayout), graphs_(new GraphPair(this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(boxes_);
  column->addWidget(graphs_, 100);
  column->addStretch(1);  // while there is no run to show
  AddBox(txtDataFile, "txtDataFile", "", "Data File");
  AddBox(txtLaunchTime, "txtLaunchTime", "", "Launched");
  AddBox(txtTimeLeft, "txtTimeLeft", "", "Time Left");
  AddBox(txtPages, "txtPages", "", "Pages");
  AddBox(txtSerialNumber, "txtSerialNumber", "", "Serial Number");
  AddBox(txtFirmwareVersion, "txtFirmwareVersion", "", "Firmware");
  AddBox(txtSamplingFrequency, "txtSamplingFrequency", "", "Frequency");
  txtLaunchTime->setMinimumWidth(fontMetrics().horizontalAdvance("00/00/0000 00:00:00") + BoxFrame);
  txtTimeLeft->setMinimumWidth(fontMetrics().horizontalAdvance("at most 5 min 55 s") + BoxFrame);
  txtDataFile->setMinimumWidth(txtTimeLeft->minimumWidth());
  graphs_->hide();
}

void RunPreview::AddBox(QLineEdit*& box, const char* name, const char* label, const char* caption) {
  const int place = boxes_->count() / 2;
  box = platform::MakeReadOnlyBox(name, caption, this);
  boxes_->addWidget(platform::MakeLabel(label, caption, this, box), place / BoxesALine,
                    place % BoxesALine * 2);
  boxes_->addWidget(box, place / BoxesALine, place % BoxesALine * 2 + 1);
}

void RunPreview::Begin(const files::DownloadHeader& header, const std::string& fileName, double BinLinearMode,
                       double LinearChannels) {
  const auto set = [](QLineEdit* box, const std::string& text) {
    box->setText(QString::fromStdString(text));
  };
  set(txtDataFile, std::filesystem::path(fileName).filename().string());
  platform::SetPlainToolTip(txtDataFile, QString::fromStdString(fileName));
  set(txtSerialNumber, values::PlainNumberText(header.SerialNumber));
  set(txtLaunchTime, header.LaunchTimeText);
  set(txtFirmwareVersion, header.FirmwareVersionText);
  set(txtSamplingFrequency, header.SamplingFrequencyText + " Hz");
  for (auto* box : {txtPages, txtTimeLeft}) box->clear();
  bins_ = BinLinearMode == 0;
  channels_ = BinLinearMode == 1 ? static_cast<int>(LinearChannels) : 0;
  samples_ = {};
  records_.clear();
  graphs_->PrepareLinear();
  if (bins_) graphs_->PrepareBin();
  if (channels_ != 3) graphs_->MoveTogether(false);
  const auto text =
      files::DataFileHeader(files::DataFileKind::DownloadPages, {}, header, BinLinearMode, LinearChannels);
  graphs_->TellFile(fileName, files::ReadRunFacts(text));
  for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) {
    graph->ClearData();
    graph->SetInteractive(false);  // each page shows the whole run again
  }
  graphs_->show();
}

void RunPreview::Add(std::int32_t page, const std::string& pageDataText, const std::string& timeLeft) {
  page_ = page;
  timeLeft_ = timeLeft;
  unshown_ = true;
  const std::string record = files::PageRecord(page, pageDataText);
  if (bins_) {
    records_ = (page % 2 == 0 ? records_ : "") + record;
  } else {
    if (channels_ >= 1 && channels_ <= 3) files::AppendRecord(samples_, record, channels_);
  }
  auto& machine = platform::Machine::Get();
  if ((machine.QueryPerformanceCounter() - shownAt_) * ShowingsASecond >= machine.QueryPerformanceFrequency())
    Show();
}

void RunPreview::End() {
  if (unshown_) Show();
  txtTimeLeft->clear();
  for (auto* graph : {graphs_->CWGraph1, graphs_->CWGraph2}) graph->SetInteractive(true);
}

void RunPreview::Show() {
  unshown_ = false;
  shownAt_ = platform::Machine::Get().QueryPerformanceCounter();
  txtPages->setText(QString::fromStdString(values::CountText(page_)));
  txtTimeLeft->setText(QString::fromStdString(timeLeft_));
  if (bins_) return ShowBins();
  graphs_->Show(samples_);
}

// A set is complete when its Y page has come.
void RunPreview::ShowBins() {
  if (page_ % 2 != 0) return;
  const auto pair = files::FindPair(records_, page_ - 1);
  if (pair.result == files::PairResult::Found)
    graphs_->Show(files::SpreadOverDegrees(pair.XPoints, pair.YPoints), page_ - 1);
}

}  // namespace bexlow::download
