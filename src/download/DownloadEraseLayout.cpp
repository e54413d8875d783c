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
      MSComm1(*this),
      MSComm3(*this),
      TimerSampling(*this, 1000),
      erase_(*this) {
  BuildMenu();
  BuildBody();
  MSComm1.OnComm = [this] { MSComm1_OnComm(); };
  TimerSampling.OnTimer = [this] { TimerSampling_Timer(); };
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
  auto* progress = new QVBoxLayout(fraPBar);
  progress->addWidget(PBar);

  lblWarning = MakeLabel("lblWarning", "Comm failure: attempting re-sample", this);
  lblWarning->setStyleSheet("color: #ffffff; background: #b00020; padding: 6px; font-weight: 600;");
  lblWarning->setAlignment(Qt::AlignCenter);
  auto policy = lblWarning->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  lblWarning->setSizePolicy(policy);
  lblWarning->hide();

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(24, 24, 24, 24);
  column->setSpacing(12);
  column->addWidget(fraPBar);
  column->addWidget(lblWarning);
  column->addWidget(BuildDetails());
  column->addWidget(erase_.Frame());
  column->addWidget(preview_ = new RunPreview(this), 100);
  column->addStretch(1);  // while there is no run to show
}

QWidget* DownloadErase::BuildDetails() {
  struct Row {
    QLineEdit*& box;
    const char *name, *label, *caption;
  };
  const Row rows[] = {{txtMode, "txtMode", "Label4", "Mode"},
                      {txtChannels, "txtChannels", "Label5", "Channels"},
                      {txtTimer, "txtTimer", "Label3", "Timer Advance"},
                      {txtBufferLen, "txtBufferLen", "Label1", "Buffer Len"}};
  auto* details = new QWidget(this);
  auto* line = new QHBoxLayout(details);
  line->setContentsMargins(0, 0, 0, 0);
  for (const auto& [box, name, label, caption] : rows) {
    box = MakeReadOnlyBox(name, caption, details);
    line->addWidget(MakeLabel(label, caption, details, box));
    line->addWidget(box);
  }
  return details;
}

}  // namespace bexlow::download
