// The paced write of EEPROM cells, one a tick, which the Configuration and Calibrate screens share.
#pragma once

#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"

namespace bexlow::config {

/// One byte to write.
struct CellByte {
  int address = 0;
  std::uint8_t byte = 0;
};

/// What differs between the writes of the two screens. k is ParameterIndex.
struct WritePlan {
  int end;                        ///< k one past the last cell
  std::optional<int> barMaximum;  ///< set at the start; if empty, the screen's own maximum stays
  int barZero;                    ///< the bar shows k minus this
  bool lastTickShown;             ///< bar and caption move at the last tick too
  const char* captionAtEnd;       ///< of the progress frame
  int (*cellsWritten)(int k);     ///< by the ticks before k
};

/// "at 28, 26 of 53 cells": the number that the progress frame tells, and how many cells are done.
std::string CellsText(int k, int done, int all);

/// Where a screen shows how far a sequence has come.
struct Progress {
  QGroupBox* fraProgress = nullptr;
  QProgressBar* PBar = nullptr;

  /// A frame with its bar, the bar from 0 to a maximum.
  static Progress Make(const QString& caption, int maximum, QWidget* parent);
  /// "Reading 17" beside the bar's value.
  void Show(const char* verb, int k, int value) const;
  void End(const char* caption) const;
};

/// mnuWrite, TimerWrite and MSComm2 of a screen. There is no acknowledgement: a cell that the logger did not
/// store goes unnoticed.
class WriteSequence {
 public:
  using CellAt = std::function<std::optional<CellByte>(int k)>;

  /// @param cellAt  gives the byte to write at k, at the tick of k; nothing if that tick sends nothing
  /// @param enableEntries  enables or disables the menu entries that must not be used during a write
  WriteSequence(platform::Form& screen, const WritePlan& plan, Progress progress, CellAt cellAt,
                std::function<void(bool)> enableEntries);

  void mnuWrite_Click();
  bool Running() const { return TimerWrite.Enabled(); }
  /// How far the write has come.
  platform::Activity Activity() const;

 private:
  void TimerWrite_Timer();
  void WriteRoutine(int address, std::uint8_t byte);
  void Finish();

  platform::Form& screen_;
  WritePlan plan_;
  Progress progress_;
  CellAt cellAt_;
  std::function<void(bool)> enableEntries_;
  platform::MSComm MSComm2;
  platform::Timer TimerWrite;
};

}  // namespace bexlow::config
