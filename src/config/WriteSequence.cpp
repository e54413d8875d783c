#include "config/WriteSequence.h"

#include <utility>

#include "config/ParameterMap.h"
#include "link/Communications.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::config {

using platform::Pointer;
using shared::Guarded;
using shared::Shared;

namespace {

constexpr int TickMs = 500;  // the time that the logger gets to store a cell

}  // namespace

std::string CellsText(int k, int done, int all) {
  return "at " + std::to_string(k) + ", " + std::to_string(done) + " of " + std::to_string(all) + " cells";
}

Progress Progress::Make(const QString& caption, int maximum, QWidget* parent) {
  auto* frame = platform::MakeFrame("fraProgress", caption, parent);
  auto* bar = platform::MakeProgressBar("PBar", caption, frame);
  bar->setMaximum(maximum);
  auto* layout = new QVBoxLayout(frame);
  layout->addWidget(bar);
  return {frame, bar};
}

void Progress::Show(const char* verb, int k, int value) const {
  platform::SetProgress(PBar, value);
  fraProgress->setTitle(verb + QString(" %1").arg(k));
}

void Progress::End(const char* caption) const {
  PBar->setValue(0);
  fraProgress->setTitle(caption);
}

WriteSequence::WriteSequence(platform::Form& screen, const WritePlan& plan, Progress progress, CellAt cellAt,
                             std::function<void(bool)> enableEntries)
    : screen_(screen),
      plan_(plan),
      progress_(progress),
      cellAt_(std::move(cellAt)),
      enableEntries_(std::move(enableEntries)),
      MSComm2(screen, "MSComm2"),
      TimerWrite(screen, "TimerWrite", TickMs) {
  TimerWrite.OnTimer = [this] { TimerWrite_Timer(); };
}

void WriteSequence::mnuWrite_Click() {
  if (!link::LoggerIsFree(screen_)) return;
  screen_.MousePointer(Pointer::Busy);
  enableEntries_(false);
  Shared.ParameterIndex = FirstIndex;
  if (plan_.barMaximum) progress_.PBar->setMaximum(*plan_.barMaximum);
  link::OpenCommPort(MSComm2, screen_);
  TimerWrite.Enabled(true);
}

platform::Activity WriteSequence::Activity() const {
  const int left = plan_.end - Shared.ParameterIndex;
  const auto cells = CellsText(Shared.ParameterIndex, plan_.cellsWritten(Shared.ParameterIndex),
                               plan_.cellsWritten(plan_.end));
  return {"Writing", cells + ", " + values::DurationText(left * TickMs / 1000.0) + " left"};
}

// If the byte of k cannot be made, the next tick tries k again; if it cannot be sent, k is skipped.
void WriteSequence::TimerWrite_Timer() {
  if (const auto cell = cellAt_(Shared.ParameterIndex)) WriteRoutine(cell->address, cell->byte);
  const int k = ++Shared.ParameterIndex;
  if (k != plan_.end || plan_.lastTickShown) progress_.Show("Writing", k, k - plan_.barZero);
  emit screen_.ActivityChanged();
  if (k == plan_.end) Finish();
}

void WriteSequence::WriteRoutine(int address, std::uint8_t byte) {
  Guarded(screen_, "WriteRoutine", [&] { link::Send(MSComm2, link::WriteEeprom(address, byte)); });
}

void WriteSequence::Finish() {
  TimerWrite.Enabled(false);
  link::CloseCommPort(MSComm2, screen_);
  enableEntries_(true);
  progress_.End(plan_.captionAtEnd);
  screen_.MousePointer(Pointer::Normal);
  platform::MsgBox("Write completed!");
}

}  // namespace bexlow::config
