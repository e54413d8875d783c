// How the Download screen is built; what it does is in DownloadErase.cpp.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QVBoxLayout>

#include "download/DownloadErase.h"
#include "download/RunPreview.h"
#include "platform/controls/Controls.h"

namespace bexlow::download {

using namespace platform;

DownloadErase::DownloadErase(std::function<void()> openGraph)
    : Form("DownloadErase", "Download"),
      openGraph_(std::move(openGraph)),
      MSComm1(*this, "MSComm1"),
      MSComm3(*this, "MSComm3"),
      TimerSampling(*this, "TimerSampling", 1000),
      resting_(*this, "TimerResting", 1000),
      erase_(*this) {
  BuildMenu();
  BuildBody();
  MSComm1.OnComm = [this] { MSComm1_OnComm(); };
  TimerSampling.OnTimer = [this] { TimerSampling_Timer(); };
  resting_.OnTimer = [this] { EndRest(); };
  OnActivity = [this] { return mnuErase->isChecked() ? erase_.Activity() : Activity(); };
  OnCloseRequest = [this] { mnuReturn_Click(); };
}

void DownloadErase::BuildMenu() {
  auto* menu = AddMenu("mnuData", "&Data");
  mnuDownload = AddCheckEntry(menu, "mnuDownload", "&Download", [this] { mnuDownload_Click(); });
  mnuErase = AddCheckEntry(menu, "mnuErase", "&Erase", [this] { erase_.mnuErase_Click(); });
  AddSeparator(menu, "mnuSep");
  AddEntry(menu, "mnuReturn", "&Return", [this] { mnuReturn_Click(); });
  erase_.Attach(mnuErase, mnuDownload);
}

void DownloadErase::BuildBody() {
  fraPBar = MakeFrame("fraPBar", "Download Progress", this);
  PBar = MakeProgressBar("PBar", "Download Progress", fraPBar);
  lblWarning = MakeLabel("lblWarning", "Comm failure: attempting re-sample", fraPBar);
  lblWarning->setStyleSheet("color: #ffffff; background: #b00020; padding: 2px 6px; font-weight: 600;");
  lblWarning->hide();
  auto* progress = new QHBoxLayout(fraPBar);
  progress->addWidget(PBar, 1);
  progress->addWidget(lblWarning);

  preview_ = new RunPreview(this);
  preview_->AddBox(txtMode, "txtMode", "Label4", "Mode");
  txtMode->setMinimumWidth(fontMetrics().horizontalAdvance("Linear") + 20);
  preview_->AddBox(txtChannels, "txtChannels", "Label5", "Channels");
  preview_->AddBox(txtTimer, "txtTimer", "Label3", "Timer Advance");
  preview_->AddBox(txtBufferLen, "txtBufferLen", "Label1", "Buffer Len");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(12, 12, 12, 12);
  column->addWidget(fraPBar);
  column->addWidget(erase_.Frame());
  column->addWidget(preview_, 1);
}

}  // namespace bexlow::download
