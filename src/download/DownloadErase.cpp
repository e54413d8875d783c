#include "download/DownloadErase.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>

#include "download/RunPreview.h"
#include "files/LinearCsv.h"
#include "files/PageDecoder.h"
#include "link/Communications.h"
#include "live/RecordingScreen.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Machine.h"
#include "platform/machine/TextFile.h"
#include "shared/DataFiles.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::download {

using link::Bytes;
using platform::MsgBox;
using platform::Pointer;
using shared::Guarded;
using shared::Shared;
using shared::Shown;
using values::NumberText;

namespace {

constexpr int LateAfterSeconds = 1;
constexpr std::int64_t PageUs = 162'000;  // two pauses of 12 ms and 265 bytes at 19200 baud

std::int64_t NowInSeconds() {
  return platform::Machine::Get().Now().seconds;
}

}  // namespace

void DownloadErase::mnuDownload_Click() {
  Guarded(*this, "mnuDownload_Click", [this] {
    if (mnuDownload->isChecked()) return StopDownload();
    if (link::LoggerIsFree(*this) && RetrieveAll() && ChooseFile()) StartPages();
  });
}

void DownloadErase::mnuReturn_Click() {
  if (mnuDownload->isChecked()) StopDownload();
  erase_.End();
  if (OtherEngaged(this) == nullptr) Shared.LiveSample.SavingToFile = false;  // others' recordings go on
  Unload();
}

bool DownloadErase::RetrieveAll() {
  struct Step {
    bool (DownloadErase::*retrieve)();
    const char* what;
  };
  constexpr Step Steps[] = {{&DownloadErase::RetrieveModeParameters, "MODE"},
                            {&DownloadErase::RetrieveFirmwareParameters, "FIRMWARE"},
                            {&DownloadErase::RetrieveHeader1Parameters, "HEADER(1)"},
                            {&DownloadErase::RetrieveHeader2Parameters, "HEADER(2)"}};
  txtMode->clear();
  txtChannels->clear();
  mnuDownload->setEnabled(false);
  mnuErase->setEnabled(false);
  fraPBar->setTitle("Retrieving on-board parameters");
  PBar->setMaximum(4);
  platform::Machine::Get().Repaint();
  int done = 0;
  for (const auto& [retrieve, what] : Steps) {
    if (!(this->*retrieve)()) {
      shared::TellFailure(std::string("Download ") + what +
                          " parameters were not retrieved! Download failed!");
      BackToIdle();
      return false;
    }
    platform::SetProgress(PBar, ++done);
    platform::Machine::Get().Repaint();
  }
  return true;
}

std::optional<Bytes> DownloadErase::Retrieve(const link::Block& block) {
  try {
    const auto reply = link::ReadBlock(MSComm3, *this, block);
    if (reply.size() == block.reply) return reply;
  } catch (const std::exception&) {
    MSComm3.PortOpen(false);
  }
  return std::nullopt;
}

bool DownloadErase::RetrieveModeParameters() {
  const auto reply = Retrieve(link::ModeBlock());
  if (!reply) return false;
  auto& parameters = Shared.OnBoardParameters;
  parameters.BinLinearMode = (*reply)[0];
  parameters.LinearChannels = (*reply)[1];
  if (parameters.BinLinearMode == 0) txtMode->setText("Bin");
  if (parameters.BinLinearMode == 1) {
    txtMode->setText("Linear");
    txtChannels->setText(Shown(parameters.LinearChannels));
  }
  return true;
}

bool DownloadErase::RetrieveFirmwareParameters() {
  const auto reply = Retrieve(link::FirmwareBlock());
  if (reply) files::FillFirmware(*reply, Shared.DownloadHeader);
  return reply.has_value();
}

bool DownloadErase::RetrieveHeader1Parameters() {
  const auto reply = Retrieve(link::IdentityBlock());
  if (reply) files::FillHeader1(*reply, Shared.DownloadHeader);
  return reply.has_value();
}

bool DownloadErase::RetrieveHeader2Parameters() {
  const auto reply = Retrieve(link::CalibrationBlock());
  if (reply) files::FillHeader2(*reply, Shared.DownloadHeader);
  return reply.has_value();
}

bool DownloadErase::ChooseFile() {
  CommonDialog1.FileName.clear();
  const std::string failure = shared::WriteDataFileHeader(CommonDialog1, files::DataFileKind::DownloadPages);
  const char* refusal = nullptr;
  if (CommonDialog1.FileName.empty()) {
    refusal = "Download operation cancelled!";
  } else if (Shared.DataFileName.empty()) {
    refusal = "No data file has been selected!";
  }
  Shared.LiveSample.SavingToFile = refusal == nullptr;
  mnuDownload->setEnabled(true);
  if (refusal == nullptr) {
    live::RecordingScreen::EndSavingOfOthers(Shared.DataFileName, *this);
    return true;
  }
  if (!failure.empty()) MsgBox(failure);
  MsgBox(refusal);
  BackToIdle();
  return false;
}

void DownloadErase::StartPages() {
  const auto& parameters = Shared.OnBoardParameters;
  preview_->Begin(Shared.DownloadHeader, Shared.DataFileName, parameters.BinLinearMode,
                  parameters.LinearChannels);
  MousePointer(Pointer::Busy);
  mnuDownload->setChecked(true);
  Shared.DownloadPageNumber = 0;
  Shared.TimerAdvanceCount = 0;
  PBar->setMaximum(Shared.MaxDownloadPages);
  fraPBar->setTitle("Downloading page 0");
  PBar->setValue(0);
  MSComm1.RThreshold(static_cast<int>(link::PageSize));
  Shared.EndOfDataReached = false;
  torn_ = 0;
  link::OpenCommPort(MSComm1, *this);
  TimerSampling.Enabled(true);
  RequestPage();
}

void DownloadErase::RequestPage(std::size_t stepsSent) {
  const auto request = link::DownloadPage(Shared.DownloadPageNumber);
  link::Send(MSComm1, std::span(request).subspan(stepsSent));
}

void DownloadErase::MSComm1_OnComm() {
  Guarded(
      *this, "MSComm1_OnComm",
      [this] {
        if (MSComm1.CommEvent() != platform::ReceiveEvent) return;
        Shared.LastReplyTime = NowInSeconds();
        lblWarning->hide();
        Bytes reply = MSComm1.Input();
        const auto torn = std::exchange(torn_, 0);
        auto begun = torn == 0 ? BeginNextRequest(reply) : link::Request{};
        try {
          link::EndReply(MSComm1, reply, torn + link::PageSize, begun,
                         torn == 0 ? link::LineSilenceUs : PageUs);
        } catch (const std::exception&) {
          // The line is gone. A page that has come whole is still stored, then the whole request fails again.
          begun.clear();
        }
        txtBufferLen->setText(Shown(static_cast<double>(reply.size())));
        if (torn != 0 || reply.size() != link::PageSize) return RequestPage(begun.size());
        TakePage(reply, begun.size());
      },
      [this] { MousePointer(Pointer::Normal); });
}

// Empty if the reply ends the download: no request follows a blank page or the last page.
link::Request DownloadErase::BeginNextRequest(const Bytes& reply) const {
  const auto page = Shared.DownloadPageNumber;
  if (page == Shared.MaxDownloadPages - 1 || EndsData(reply)) return {};
  auto request = link::DownloadPage(page);
  request.erase(std::ranges::mismatch(request, link::DownloadPage(page + 1)).in1, request.end());
  return request;
}

// Page 0 is skipped, whatever it holds; the data ends before the first blank page after it.
bool DownloadErase::EndsData(const Bytes& reply) {
  return Shared.DownloadPageNumber != 0 && reply.size() >= link::PageSize &&
         files::IsBlankPage(files::Page(reply.data(), link::PageSize));
}

// The request for the next page is completed before the file is touched. On a slow disk, or while an error
// box is open, the logger would wait too long for its last byte and then take it for a command.
void DownloadErase::TakePage(const Bytes& reply, std::size_t stepsSent) {
  const auto taken = Shared.DownloadPageNumber;
  Shared.EndOfDataReached = EndsData(reply);
  if (!Shared.EndOfDataReached) ++Shared.DownloadPageNumber;
  const bool finished = Shared.EndOfDataReached || Shared.DownloadPageNumber > Shared.MaxDownloadPages - 1;
  const auto store = [&] {
    if (taken != 0 && !Shared.EndOfDataReached) StorePage(taken, reply);
  };
  try {
    if (!finished) RequestPage(stepsSent);
  } catch (const std::exception&) {
    store();
    throw;
  }
  store();
  if (finished) return FinishDownload();
  fraPBar->setTitle(QString::fromStdString("Downloading page " + NumberText(Shared.DownloadPageNumber)));
  platform::SetProgress(PBar, Shared.DownloadPageNumber);
}

// After a failure the next page waits for a second, so that a user who is told of one at each page can stop.
void DownloadErase::StorePage(std::int32_t number, const Bytes& page) {
  const auto& parameters = Shared.OnBoardParameters;
  Shared.PageDataText = files::DecodePage(files::Page(page.data(), link::PageSize), parameters.BinLinearMode,
                                          parameters.LinearChannels);
  if (Shared.LiveSample.SavingToFile && !shared::WriteDownloadPagesToFile(number)) {
    MSComm1.RThreshold(0);
    resting_.Enabled(true);
  }
  preview_->Add(number, Shared.PageDataText, TimeLeft());
}

void DownloadErase::EndRest() {
  resting_.Enabled(false);
  MSComm1.RThreshold(static_cast<int>(link::PageSize));
}

// Counts whole seconds of the calendar clock. Repeats without limit: only the user knows when to give up.
void DownloadErase::TimerSampling_Timer() {
  const auto tick = [this] {
    ++Shared.TimerAdvanceCount;
    txtTimer->setText(Shown(Shared.TimerAdvanceCount));
    // A clock that was set back must not keep the watchdog silent for as long.
    Shared.LastReplyTime = std::min(Shared.LastReplyTime, NowInSeconds());
    const bool waits = MSComm1.InBufferCount() >= static_cast<int>(link::PageSize);  // behind an error box
    const bool late = !waits && NowInSeconds() - Shared.LastReplyTime > LateAfterSeconds;
    lblWarning->setVisible(late);
    if (!late) return;
    TimerSampling.Enabled(false);
    torn_ = static_cast<std::size_t>(MSComm1.InBufferCount());
    RequestPage();
    TimerSampling.Enabled(true);
  };
  // A line that takes no request is gone for good. The timer stays off, so the warning that the program tries
  // again is hidden, and nothing more is saved.
  Guarded(*this, "TimerSampling_Timer", tick, [this] {
    MSComm1.RThreshold(0);
    Shared.LiveSample.SavingToFile = false;
    lblWarning->hide();
    MousePointer(Pointer::Normal);
  });
}

// Only a blank page shows where the data ends, so the time left is that of a full logger.
platform::Activity DownloadErase::Activity() const {
  const std::string page = "page " + NumberText(Shared.DownloadPageNumber);
  if (!TimerSampling.Enabled()) return {"Download has stopped", page};
  if (!lblWarning->isHidden()) return {"No reply from the logger", "asking again for " + page};
  return {"Downloading", page + ", " + TimeLeft() + " left"};
}

std::string DownloadErase::TimeLeft() const {
  return "at most " +
         values::DurationText((Shared.MaxDownloadPages - Shared.DownloadPageNumber) * (PageUs / 1e6));
}

// Saving ends with the download: a live screen on another tab must not append its samples to this file.
void DownloadErase::FinishDownload() {
  TimerSampling.Enabled(false);
  resting_.Enabled(false);
  Shared.LiveSample.SavingToFile = false;
  link::CloseCommPort(MSComm1, *this);
  if (Shared.OnBoardParameters.BinLinearMode == 1) MakeLinearCSV(Shared.DataFileName);
  BackToIdle();
  MsgBox("Download completed!");
  Shared.GraphAfterDownload = platform::AskYesNo("Would you like to graph this download immediately?");
  if (!Shared.GraphAfterDownload) return;
  Shared.GraphFileName = Shared.DataFileName;
  Shared.DataFileName.clear();
  openGraph_();
}

void DownloadErase::StopDownload() {
  TimerSampling.Enabled(false);
  resting_.Enabled(false);
  if (OtherEngaged(this) == nullptr) {
    Shared.LiveSample.SavingToFile = false;
    Shared.DataFileName.clear();
  }
  link::CloseCommPort(MSComm1, *this);
  BackToIdle();
}

void DownloadErase::BackToIdle() {
  preview_->End();
  fraPBar->setTitle("Download Progress");
  PBar->setValue(0);
  mnuDownload->setChecked(false);
  mnuDownload->setEnabled(true);
  mnuErase->setEnabled(true);
  txtBufferLen->clear();
  txtTimer->clear();
  lblWarning->hide();
  CommonDialog1.FileName.clear();
  MousePointer(Pointer::Normal);
}

void DownloadErase::MakeLinearCSV(const std::string& dataFileName) {
  Guarded(*this, "MakeLinearCSV", [&] {
    const std::string csvName = files::CsvFileName(dataFileName);
    std::error_code none;  // where there is no CSV file yet
    if (csvName == dataFileName || std::filesystem::equivalent(csvName, dataFileName, none))
      throw std::system_error(std::make_error_code(std::errc::file_exists),
                              "The CSV file would replace the data file " + dataFileName);
    const std::string dataFile = platform::ReadWhole(dataFileName);
    std::string csv;
    try {
      files::AppendLinearCsv(dataFile, csv);
    } catch (const std::exception&) {
      platform::WriteWhole(csvName, csv);
      throw;
    }
    platform::WriteWhole(csvName, csv);
  });
}

}  // namespace bexlow::download
