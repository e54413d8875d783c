#include "shell/StatusLine.h"

#include <QLabel>
#include <QStatusBar>

#include "platform/controls/Controls.h"
#include "platform/controls/Form.h"
#include "shared/Records.h"

namespace bexlow::shell {

namespace {

constexpr std::chrono::milliseconds RefreshEvery{250};
constexpr int Indent = 16;

// A text that is too long loses its middle: its end tells why something failed, or how much is saved.
void SetText(QLabel& label, const std::string& text, int width) {
  const auto whole = QString::fromStdString(text);
  const auto shown = label.fontMetrics().elidedText(whole, Qt::ElideMiddle, width);
  if (label.text() == shown) return;
  label.setText(shown);
  platform::SetPlainToolTip(&label, whole);
  label.setAccessibleDescription(whole);
}

}  // namespace

StatusLine::StatusLine(QStatusBar& bar)
    : lblConnection(platform::MakeLabel("lblConnection", "", &bar)),
      lblActivity(platform::MakeLabel("lblActivity", "", &bar)),
      lblFailure(platform::MakeLabel("lblFailure", "", &bar)),
      alarm_(platform::Machine::Get().MakeAlarm([this] { Refresh(); })) {
  bar.setSizeGripEnabled(false);
  bar.addWidget(lblConnection);
  bar.addWidget(lblActivity, 1);
  lblActivity->setIndent(Indent);
  bar.addPermanentWidget(lblFailure, 1);
  for (auto* label : {lblActivity, lblFailure})
    label->setSizePolicy(QSizePolicy::Ignored,
                         QSizePolicy::Preferred);  // a long text must not widen the window
  alarm_->Start(RefreshEvery);
}

void StatusLine::Connection(const std::string& text) {
  SetText(*lblConnection, text, QWIDGETSIZE_MAX);
}

// A screen reader reads each new phase, but not each number: Qt does not announce a changed text of a label
// that has an accessible name.
void StatusLine::Refresh() {
  const auto* engaged = platform::Form::OtherEngaged();
  const auto activity =
      engaged != nullptr && engaged->OnActivity ? engaged->OnActivity() : platform::Activity{};
  if (activity.phase != phase_) {
    phase_ = activity.phase;
    lblActivity->setAccessibleName(QString::fromStdString(phase_));
  }
  SetText(*lblActivity, activity.phase + (activity.details.empty() ? "" : " ") + activity.details,
          lblActivity->width() - Indent);
  SetText(*lblFailure, shared::Shared.LastFailure, lblFailure->width());
  lblFailure->setVisible(
      !shared::Shared.LastFailure.empty());  // a hidden label leaves its room to lblActivity
}

}  // namespace bexlow::shell
