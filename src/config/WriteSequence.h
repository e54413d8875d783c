// The paced write of EEPROM cells, one a tick, which the Configuration and Calibrate screens share.
#pragma once

#include "config/ParameterMap.h"
#include "link/Communications.h"
#include "platform/controls/Timer.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::config {

/// What differs between the writes of the two screens. k is ParameterIndex.
struct WritePlan {
  int end;                                 ///< k one past the last cell
  int barZero;                             ///< the bar shows k minus this
  bool lastTickShown;                      ///< bar and caption move at the last tick, too
  const char* captionAtEnd;                ///< of the progress frame
  std::optional<int> (*addressAt)(int k);  ///< of the cell that the tick of k writes; nothing for none
};

/// "at 28, 26 of 53 cells": the number that the progress frame tells, and how many cells are done.
inline std::string CellsText(int k, int done, int all) {
  return "at " + std::to_string(k) + ", " + std::to_string(done) + " of " + std::to_string(all) + " cells";
}

/// mnuWrite, TimerWrite and MSComm2 of a screen. There is no acknowledgement: a cell that the logger did not
/// store goes unnoticed.
class WriteSequence {
 public:
  /// @param byteAt  gives the byte to write at k, at the tick of k
  /// @param enableEntries  enables or disables the menu entries that must not be used during a write
  WriteSequence(platform::Form& screen, const WritePlan& plan, const platform::Progress& progress,
                std::function<std::uint8_t(int k)> byteAt, std::function<void(bool)> enableEntries)
      : screen_(screen),
        plan_(plan),
        progress_(progress),
        byteAt_(std::move(byteAt)),
        enableEntries_(std::move(enableEntries)),
        MSComm2(screen, "MSComm2"),
        TimerWrite(screen, "TimerWrite", TickMs) {
    TimerWrite.OnTimer = [this] { TimerWrite_Timer(); };
  }

  void mnuWrite_Click() {
    if (!link::LoggerIsFree(screen_)) return;
    screen_.MousePointer(platform::Pointer::Busy);
    enableEntries_(false);
    shared::Shared.ParameterIndex = FirstIndex;
    progress_.bar->setMaximum(plan_.end - plan_.barZero);
    link::OpenCommPort(MSComm2, screen_);
    TimerWrite.Enabled(true);
  }

  bool Running() const { return TimerWrite.Enabled(); }
  /// How far the write has come.
  platform::Activity Activity() const {
    const int k = shared::Shared.ParameterIndex;
    const auto left = values::DurationText((plan_.end - k) * TickMs / 1000.0);
    return {"Writing", CellsText(k, CellsBefore(k), CellsBefore(plan_.end)) + ", " + left + " left"};
  }

 private:
  static constexpr int TickMs = 500;  // the time that the logger gets to store a cell

  int CellsBefore(int end) const {
    int cells = 0;
    for (int k = FirstIndex; k < end; ++k) cells += plan_.addressAt(k).has_value();
    return cells;
  }

  // If the byte of k cannot be made, the next tick tries k again; if it cannot be sent, k is skipped.
  void TimerWrite_Timer() {
    if (const auto address = plan_.addressAt(shared::Shared.ParameterIndex))
      WriteRoutine(*address, byteAt_(shared::Shared.ParameterIndex));
    const int k = ++shared::Shared.ParameterIndex;
    if (k < plan_.end || plan_.lastTickShown) progress_.Show(QString("Writing %1").arg(k), k - plan_.barZero);
    emit screen_.ActivityChanged();
    if (k == plan_.end) Finish();
  }

  void WriteRoutine(int address, std::uint8_t byte) {
    shared::Guarded(screen_, "WriteRoutine", [&] { link::Send(MSComm2, link::WriteEeprom(address, byte)); });
  }

  void Finish() {
    TimerWrite.Enabled(false);
    link::CloseCommPort(MSComm2, screen_);
    enableEntries_(true);
    progress_.Show(plan_.captionAtEnd, 0);
    screen_.MousePointer(platform::Pointer::Normal);
    platform::MsgBox("Write completed!");
  }

  platform::Form& screen_;
  const WritePlan& plan_;
  const platform::Progress progress_;
  std::function<std::uint8_t(int k)> byteAt_;
  std::function<void(bool)> enableEntries_;
  platform::MSComm MSComm2;
  platform::Timer TimerWrite;
};

}  // namespace bexlow::config
