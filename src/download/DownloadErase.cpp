#include <exception>

#include "download/Erase.h"
#include "download/Pace.h"
#include "download/RunPreview.h"
#include "live/RecordingScreen.h"
#include "shared/NumberBox.h"
#include "shared/Screens.h"

namespace bexlow::download {

using link::Bytes;
using namespace platform;
using shared::Guarded;
using shared::Shared;
using shared::Shown;

namespace {

constexpr int LateAfterSeconds = 1;
constexpr auto Retrieving = "Retrieving on-board parameters";

/// What is read of the logger before its pages: mode and channels, and the values of the header.
struct Retrieval {
  const char* what;
  link::Block (*block)();
  void (*take)(const Bytes& reply);
};

constexpr Retrieval Retrievals[] = {
    {"MODE", link::ModeBlock,
     [](const Bytes& reply) {
       Shared.OnBoardParameters.BinLinearMode = reply[0];
       Shared.OnBoardParameters.LinearChannels = reply[1];
     }},
    {"FIRMWARE", link::FirmwareBlock,
     [](const Bytes& reply) { files::FillFirmware(reply, Shared.DownloadHeader); }},
    {"HEADER(1)", link::IdentityBlock,
     [](const Bytes& reply) { files::FillHeader1(reply, Shared.DownloadHeader); }},
    {"HEADER(2)", link::CalibrationBlock,
     [](const Bytes& reply) { files::FillHeader2(reply, Shared.DownloadHeader); }}};

std::int64_t NowInSeconds() { return platform::Machine::Get().Now().seconds; }

class DownloadErase : public Form {
 public:
  explicit DownloadErase(std::function<void()> openGraph)
      : Form("DownloadErase", "Download"), openGraph_(std::move(openGraph)) {
    Build();
    MSComm1.OnComm = [this] { MSComm1_OnComm(); };
    TimerSampling.OnTimer = [this] { TimerSampling_Timer(); };
    resting_.OnTimer = [this] {
      resting_.Enabled(false);
      MSComm1.RThreshold(static_cast<int>(link::PageSize));
    };
    OnActivity = [this] { return mnuErase->isChecked() ? erase_.Activity() : Activity(); };
    OnCloseRequest = [this] { mnuReturn_Click(); };
  }

 private:
  void Build() {
    mnuData->addSeparator()->setObjectName("mnuSep");
    AddEntry(mnuData, "mnuReturn", "&Return", [this] { mnuReturn_Click(); });
    lblWarning->setStyleSheet("color: #ffffff; background: #b00020; padding: 2px 6px; font-weight: 600;");
    lblWarning->hide();
    progress_.line->addWidget(lblWarning);
    txtMode->setMinimumWidth(fontMetrics().horizontalAdvance("Linear") + 20);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->addWidget(progress_.frame);
    column->addWidget(erase_.Frame());
    column->addWidget(preview_, 1);
  }

  void mnuDownload_Click() {
    if (mnuDownload->isChecked()) return StopDownload();
    if (link::LoggerIsFree(*this) && RetrieveAll() && ChooseFile()) StartPages();
  }

  void mnuReturn_Click() {
    if (mnuDownload->isChecked()) StopDownload();
    erase_.End();
    if (OtherEngaged(this) == nullptr) Shared.LiveSample.SavingToFile = false;  // others' recordings go on
    Unload();
  }

  bool RetrieveAll() {
    txtMode->clear();
    txtChannels->clear();
    preview_->Clear();
    mnuDownload->setEnabled(false);
    mnuErase->setEnabled(false);
    progress_.bar->setMaximum(4);
    progress_.Show(Retrieving, 0);
    Machine::Get().Repaint();
    const auto& parameters = Shared.OnBoardParameters;
    for (int done = 0; const auto& [what, block, take] : Retrievals) {
      const auto reply = Retrieve(block());
      if (reply.empty()) {
        shared::TellFailure(std::string("Download ") + what +
                            " parameters were not retrieved! Download failed!");
        BackToIdle();
        return false;
      }
      take(reply);
      if (parameters.BinLinearMode == 0) txtMode->setText("Bin");
      if (parameters.BinLinearMode == 1) txtMode->setText("Linear");
      if (parameters.BinLinearMode == 1) txtChannels->setText(Shown(parameters.LinearChannels));
      progress_.Show(Retrieving, ++done);
      Machine::Get().Repaint();
    }
    preview_->ShowHeader(Shared.DownloadHeader, parameters.BinLinearMode, parameters.LinearChannels);
    return true;
  }

  /// Nothing unless exactly the block's bytes came.
  Bytes Retrieve(const link::Block& block) {
    try {
      auto reply = link::ReadBlock(MSComm3, *this, block);
      if (reply.size() == block.reply) return reply;
    } catch (const std::exception&) {
      MSComm3.PortOpen(false);
    }
    return {};
  }

  bool ChooseFile() {
    CommonDialog1.FileName.clear();
    const std::string failure =
        shared::WriteDataFileHeader(CommonDialog1, files::DataFileKind::DownloadPages);
    const bool cancelled = CommonDialog1.FileName.empty();
    const bool chosen = !cancelled && !Shared.DataFileName.empty();
    Shared.LiveSample.SavingToFile = chosen;
    mnuDownload->setEnabled(true);
    if (chosen) {
      live::RecordingScreen::EndSavingOfOthers(Shared.DataFileName, *this);
      return true;
    }
    if (!failure.empty()) MsgBox(failure);
    MsgBox(cancelled ? "Download operation cancelled!" : "No data file has been selected!");
    BackToIdle();
    return false;
  }

  void StartPages() {
    preview_->Begin(Shared.DataFileName);
    MousePointer(Pointer::Busy);
    mnuDownload->setChecked(true);
    Shared.DownloadPageNumber = 0;
    Shared.TimerAdvanceCount = 0;
    progress_.bar->setMaximum(Shared.MaxDownloadPages);
    TellPage();
    TellTimeLeft("");
    MSComm1.RThreshold(static_cast<int>(link::PageSize));
    Shared.EndOfDataReached = false;
    bytesBeforeRepeat_.reset();
    wrongReplies_ = 0;
    link::OpenCommPort(MSComm1, *this);
    TimerSampling.Enabled(true);
    pace_.Begin();
    RequestPage();
  }

  void RequestPage(std::size_t stepsSent = 0) {
    const auto request = link::DownloadPage(Shared.DownloadPageNumber);
    link::Send(MSComm1, std::span(request).subspan(stepsSent));
  }

  void MSComm1_OnComm() {
    Guarded(
        *this, "MSComm1_OnComm",
        [this] {
          if (MSComm1.CommEvent() != ReceiveEvent) return;
          Shared.LastReplyTime = NowInSeconds();
          lblWarning->hide();
          if (pace_.HeldBack(MSComm1.FirstByteAt())) pace_.Interrupt();
          Bytes reply = MSComm1.Input();
          if (bytesBeforeRepeat_) preview_->NoteLate(Shared.DownloadPageNumber);
          const auto torn = std::exchange(bytesBeforeRepeat_, std::nullopt).value_or(0);
          const auto firstSteps = torn == 0 ? BeginNextRequest(reply) : link::Request{};
          try {
            link::EndReply(MSComm1, reply, torn + link::PageSize, firstSteps,
                           torn == 0 ? link::LineSilenceUs : Pace::PageUs);
          } catch (const std::exception&) {
            // The line is gone. A page that has come whole is still stored, then the request fails again.
          }
          txtBufferLen->setText(Shown(static_cast<double>(reply.size())));
          const bool isPage = torn == 0 && reply.size() == link::PageSize;
          wrongReplies_ = isPage ? 0 : wrongReplies_ + 1;
          if (!isPage) return RequestPage(firstSteps.size());
          pace_.PageCame();
          TakePage(reply, firstSteps.size());
        },
        [this] {
          TellTimeLeft("");
          MousePointer(Pointer::Normal);
        });
  }

  // Empty if the reply ends the download: no request follows a blank page or the last page.
  link::Request BeginNextRequest(const Bytes& reply) const {
    const auto page = Shared.DownloadPageNumber;
    if (page == Shared.MaxDownloadPages - 1 || EndsData(reply)) return {};
    auto request = link::DownloadPage(page);
    request.erase(std::ranges::mismatch(request, link::DownloadPage(page + 1)).in1, request.end());
    return request;
  }

  // Page 0 is skipped, whatever it holds; the data ends before the first blank page after it.
  static bool EndsData(const Bytes& reply) {
    return Shared.DownloadPageNumber != 0 && reply.size() >= link::PageSize &&
           files::IsBlankPage(files::Page(reply.data(), link::PageSize));
  }

  // The request for the next page is completed before the file is touched. On a slow disk, or while an error
  // box is open, the logger would wait too long for its last byte and then take it for a command.
  void TakePage(const Bytes& reply, std::size_t stepsSent) {
    const auto taken = Shared.DownloadPageNumber;
    Shared.EndOfDataReached = EndsData(reply);
    if (!Shared.EndOfDataReached) ++Shared.DownloadPageNumber;
    const bool finished = Shared.EndOfDataReached || Shared.DownloadPageNumber > Shared.MaxDownloadPages - 1;
    std::exception_ptr failure;
    try {
      if (!finished) RequestPage(stepsSent);
    } catch (const std::exception&) {
      failure = std::current_exception();
    }
    if (!finished) TellPage();
    // Only a blank page shows where the data ends, so the time left is that of a full logger.
    const auto pages = Shared.MaxDownloadPages - Shared.DownloadPageNumber;
    if (!finished && !failure) TellTimeLeft("at most " + values::DurationText(pages * pace_.Seconds()));
    if (taken != 0 && !Shared.EndOfDataReached) StorePage(taken, reply);
    if (failure) std::rethrow_exception(failure);
    if (finished) FinishDownload();
  }

  // After a failure the next page waits for a second, so that a user who is told of one at each page can
  // stop.
  void StorePage(std::int32_t number, const Bytes& page) {
    const auto& parameters = Shared.OnBoardParameters;
    Shared.PageDataText = files::DecodePage(files::Page(page.data(), link::PageSize),
                                            parameters.BinLinearMode, parameters.LinearChannels);
    if (Shared.LiveSample.SavingToFile && shared::WriteDownloadPagesToFile(number))
      return preview_->Add(number, Shared.PageDataText);
    preview_->NoteLost(number);
    if (!Shared.LiveSample.SavingToFile) return;
    pace_.Interrupt();
    MSComm1.RThreshold(0);
    resting_.Enabled(true);
  }

  // Counts whole seconds of the calendar clock. Repeats without limit: only the user knows when to give up.
  void TimerSampling_Timer() {
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
      pace_.Interrupt();
      bytesBeforeRepeat_ = static_cast<std::size_t>(MSComm1.InBufferCount());
      TellTimeLeft("");
      RequestPage();
      TimerSampling.Enabled(true);
    };
    // A line that takes no request is gone for good: the timer stays off, and nothing more is saved.
    Guarded(*this, "TimerSampling_Timer", tick, [this] {
      MSComm1.RThreshold(0);
      Shared.LiveSample.SavingToFile = false;
      TellTimeLeft("");
      MousePointer(Pointer::Normal);
    });
  }

  void TellPage() {
    page_ = "page " + values::NumberText(Shared.DownloadPageNumber);
    progress_.Show(QString::fromStdString("Downloading " + page_), Shared.DownloadPageNumber);
  }

  // Empty where it is not known: before page 0 has come, and while no reply comes.
  void TellTimeLeft(const std::string& text) {
    timeLeft_ = text;
    preview_->TellTimeLeft(text);
    emit ActivityChanged();
  }

  platform::Activity Activity() const {
    const bool asks = MSComm1.RThreshold() > 0 || resting_.Enabled();
    if (!asks) return {"Download has stopped", page_, ", ", true};
    if (!lblWarning->isHidden()) return {"No reply from the logger", "asking again for " + page_, ", ", true};
    if (wrongReplies_ >= link::ToldWrongReplies)
      return {"Wrong replies from the logger", "asking again for " + page_, ", ", true};
    return {"Downloading", page_ + (timeLeft_.empty() ? "" : ", " + timeLeft_ + " left")};
  }

  // Saving ends with the download: a live screen on another tab must not append its samples to this file.
  void FinishDownload() {
    TimerSampling.Enabled(false);
    resting_.Enabled(false);
    Shared.LiveSample.SavingToFile = false;
    link::CloseCommPort(MSComm1, *this);
    TellTimeLeft("");
    if (Shared.OnBoardParameters.BinLinearMode == 1)
      Guarded(*this, "MakeLinearCSV", [] { shared::WriteLinearCsv(Shared.DataFileName); });
    BackToIdle();
    MsgBox("Download completed!");
    Shared.GraphAfterDownload = AskYesNo("Would you like to graph this download immediately?");
    if (!Shared.GraphAfterDownload) return;
    Shared.GraphFileName = Shared.DataFileName;
    Shared.DataFileName.clear();
    openGraph_();
  }

  void StopDownload() {
    TimerSampling.Enabled(false);
    resting_.Enabled(false);
    if (OtherEngaged(this) == nullptr) {
      Shared.LiveSample.SavingToFile = false;
      Shared.DataFileName.clear();
    }
    link::CloseCommPort(MSComm1, *this);
    BackToIdle();
  }

  void BackToIdle() {
    preview_->End();
    TellTimeLeft("");
    progress_.Show("Download Progress", 0);
    mnuDownload->setChecked(false);
    mnuDownload->setEnabled(true);
    mnuErase->setEnabled(true);
    txtBufferLen->clear();
    txtTimer->clear();
    lblWarning->hide();
    CommonDialog1.FileName.clear();
    MousePointer(Pointer::Normal);
  }

  std::function<void()> openGraph_;
  MSComm MSComm1{*this, "MSComm1"};
  MSComm MSComm3{*this, "MSComm3"};
  Timer TimerSampling{*this, "TimerSampling", 1000};
  Timer resting_{*this, "TimerResting", 1000};
  CommonDialog CommonDialog1;
  QMenu* mnuData = AddMenu("mnuData", "&Data");
  QAction* mnuDownload = AddCheckEntry(mnuData, "mnuDownload", "&Download", [this] { mnuDownload_Click(); });
  QAction* mnuErase = AddCheckEntry(mnuData, "mnuErase", "&Erase", [this] { erase_.mnuErase_Click(); });
  Progress progress_ = MakeProgress("fraPBar", "PBar", "Download Progress", 100, this);
  QLabel* lblWarning = MakeLabel("lblWarning", "Comm failure: attempting re-sample", progress_.frame);
  Erase erase_{*this, mnuErase, mnuDownload, progress_.frame};
  RunPreview* preview_ = new RunPreview(this);
  QLineEdit* txtMode = preview_->AddBox("txtMode", "Label4", "Mode");
  QLineEdit* txtChannels = preview_->AddBox("txtChannels", "Label5", "Channels");
  QLineEdit* txtTimer = preview_->AddBox("txtTimer", "Label3", "Timer Advance");
  QLineEdit* txtBufferLen = preview_->AddBox("txtBufferLen", "Label1", "Buffer Len");

  /// How many bytes of a torn reply waited when the watchdog asked again; nothing if it has not. The new
  /// reply follows them, so the bytes taken next are never a page, even if on a line that stalls their number
  /// is that of a page.
  std::optional<std::size_t> bytesBeforeRepeat_;
  int wrongReplies_ = 0;  ///< in a row
  Pace pace_;
  std::string page_, timeLeft_;  ///< "page 9", "at most 5 min 12 s": one text for all who tell it
};

}  // namespace

platform::Form* MakeDownloadErase(std::function<void()> openGraph) {
  return new DownloadErase(std::move(openGraph));
}

}  // namespace bexlow::download
