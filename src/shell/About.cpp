#include "platform/controls/Form.h"
#include "shared/Records.h"
#include "shared/Screens.h"

namespace bexlow::shell {

using platform::MakeLabel;

namespace {

class About : public platform::Form {
 public:
  About();
};

About::About() : Form("About", "About") {
  auto* picture = platform::MakePicture("Picture1", platform::Emblem, {96, 96}, this);
  auto* title = MakeLabel("Label1", "Bexlow Software", this);
  title->setStyleSheet("font-size: 16pt; font-weight: 600;");
  const QString version = QString::fromStdString("Version " + shared::Shared.ProgramVersionText + " Beta");
  auto* ok = MakeButton("cmdOK", "OK", [this] { Unload(); });
  DefaultButton(ok);
  ok->setDefault(true);  // drawn as what Enter presses

  auto* texts = new QVBoxLayout;
  texts->addWidget(title);
  texts->addWidget(MakeLabel("Label2", version, this));
  texts->addSpacing(8);
  texts->addWidget(
      MakeLabel("Label3", "Quornell, makers of the Bexlow posture logger.\nSupport: see the manual.", this));
  texts->addWidget(MakeLabel("Label4",
                             "This program is free software, distributed without any warranty.\n"
                             "See the file LICENSE that comes with it.",
                             this));
  texts->addStretch();
  texts->addWidget(ok, 0, Qt::AlignRight);
  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(20, 20, 20, 20);
  columns->setSpacing(20);
  columns->addWidget(picture, 0, Qt::AlignTop);
  columns->addLayout(texts, 1);
  setMinimumWidth(540);
  FirstFocus(ok);
  for (auto* label : findChildren<QLabel*>()) label->setWordWrap(true);
}

}  // namespace

platform::Form* MakeAbout() { return new About; }

}  // namespace bexlow::shell
