#include "shell/StatusLine.h"

#include <QStatusBar>

#include <algorithm>
#include <utility>

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Ports.h"
#include "shared/Records.h"

namespace bexlow::shell {

namespace {

constexpr std::chrono::milliseconds RefreshEvery{250};
constexpr int Indent = 16;
constexpr int Margins = 64;  // of the bar and its three labels

int Need(const QLabel& label, const std::string& text) {
  return label.fontMetrics().horizontalAdvance(QString::fromStdString(text)) + 1;
}

// A text that is too long loses its middle: its end tells why something failed, or how much is saved.
void SetText(QLabel& label, const std::string& text, int width) {
  const auto whole = QString::fromStdString(text);
  const auto shown = label.fontMetrics().elidedText(whole, Qt::ElideMiddle, width);
  if (label.text() == shown) return;
  label.setText(shown);
  platform::SetPlainToolTip(&label, whole);
}

}  // namespace

StatusLine::StatusLine(QStatusBar& bar)
    : bar_(bar),
      lblConnection(platform::MakeLabel("lblConnection", "", &bar)),
      lblActivity(platform::MakeLabel("lblActivity", "", &bar)),
      lblFailure(platform::MakeLabel("lblFailure", "", &bar)),
      alarm_(platform::Machine::Get().MakeAlarm([this] {
        platform::EventGate::Get().Offer(this, {nullptr, "StatusLine_Timer"}, [this] { Refresh(); });
      })) {
  bar.setSizeGripEnabled(false);
  bar.setContentsMargins(8, 0, 8, 2);
  bar.addWidget(lblConnection);
  bar.addWidget(lblActivity, 1);
  lblActivity->setIndent(Indent);
  bar.addPermanentWidget(lblFailure);
  for (auto* label : {lblActivity, lblFailure})
    label->setMinimumWidth(1);  // a long text must not widen the window
  alarm_->Start(RefreshEvery);
}

StatusLine::~StatusLine() { platform::EventGate::Get().Withdraw(this); }

void StatusLine::Connection(const std::string& text) {
  connection_ = text;
  TellConnection();
}

void StatusLine::TellConnection() {
  const int comm = shared::Shared.CurrentCommPort;
  std::string text = connection_;
  if (text.starts_with("Connected") &&
      platform::Machine::Get().DescribePort(comm).description == platform::NoSuchDevice)
    text = "The adapter of Comm " + std::to_string(comm) + " is gone";
  SetText(*lblConnection, text, QWIDGETSIZE_MAX);
}

// A screen reader reads each new phase, but not each number: Qt does not announce a changed text of a label
// that has an accessible name. What both texts need beyond the free width is taken from the longer one.
void StatusLine::Refresh() {
  const auto* engaged = platform::Form::OtherEngaged();
  const auto* told = engaged != nullptr ? engaged : platform::Form::Active();
  const auto current = told == nullptr ? platform::Activity{} : told->Doing();
  const auto activity = current.Text();
  if (current.phase != phase_) lblActivity->setAccessibleName(QString::fromStdString(phase_ = current.phase));
  const auto& failure = shared::Shared.LastFailure;
  // It may come of an adapter that was pulled out; a port that opens again clears it.
  if (std::exchange(failure_, failure) != failure) TellConnection();
  const int free = bar_.width() - lblConnection->width() - Margins;
  const int forFailure =
      std::min(Need(*lblFailure, failure), std::max(free / 2, free - Need(*lblActivity, activity)));
  SetText(*lblActivity, activity, free - forFailure);
  SetText(*lblFailure, failure, forFailure);
}

}  // namespace bexlow::shell
