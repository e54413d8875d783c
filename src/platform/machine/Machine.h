// The interface between the program and the machine: clock, serial lines, timers, message boxes and file
// dialogs. Production installs the real machine, tests a virtual one on which time is a number.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "values/Conversions.h"

namespace bexlow::platform {

using Bytes = std::vector<std::uint8_t>;

using values::Throw;

/// The local date and time in whole seconds.
struct LocalTime {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  std::int64_t seconds = 0;  ///< the same moment, counted from an arbitrary epoch
};

/// What stands behind a Comm number.
struct PortInfo {
  std::string device;       ///< path of the device, empty if the number has none
  std::string description;  ///< what the system knows of the adapter, or why there is nothing
};

/// One open serial device. Its destructor closes it.
class SerialLine {
 public:
  virtual ~SerialLine() = default;
  /// Returns when the bytes are with the driver. Throws std::system_error on a line that is gone.
  virtual void Write(std::span<const std::uint8_t> bytes) = 0;
};

/// A periodic alarm of the machine, stopped at first.
class Alarm {
 public:
  virtual ~Alarm() = default;
  virtual void Start(std::chrono::milliseconds interval) = 0;
  virtual void Stop() = 0;
};

enum class Buttons {
  Ok,
  YesNo,    ///< Enter is Yes
  Confirm,  ///< Yes and No too; Enter is No
  RetryCancel
};
enum class Answer { Ok, Yes, No, Retry, Cancel };

class CommonDialog;

class Machine {
 public:
  virtual ~Machine() = default;

  static Machine& Get();
  static void Install(Machine& machine);

  virtual std::int64_t QueryPerformanceCounter() = 0;
  virtual std::int64_t QueryPerformanceFrequency() = 0;
  virtual LocalTime Now() = 0;

  /// Lets at most this time pass while bytes are collected from all open lines. Delivers no event.
  virtual void Idle(std::chrono::microseconds atMost) = 0;
  /// Paints the windows now, before a long blocking step.
  virtual void Repaint() = 0;

  virtual PortInfo DescribePort(int comm) = 0;
  /// Opens the device behind a Comm number for 19200 baud, 8 bits, no parity, 1 stop bit. `received` is
  /// called with bytes as they are collected. Throws std::system_error with words that tell why the port does
  /// not open.
  virtual std::unique_ptr<SerialLine> OpenSerial(int comm, std::function<void(Bytes)> received) = 0;
  /// Until when, on the counter, a reply to a request of before the last closing may come, by Comm number.
  std::map<int, std::int64_t> lateUntil;
  virtual std::unique_ptr<Alarm> MakeAlarm(std::function<void()> tick) = 0;

  /// A box with the title "Bexlow". Returns when it is answered.
  virtual Answer Ask(const std::string& text, Buttons buttons) = 0;
  /// The chosen path, nothing if the user cancelled.
  virtual std::optional<std::string> AskFile(const CommonDialog& question) = 0;

  /// Shows a file in the desktop's program for its kind. False if there is none.
  virtual bool OpenDocument(const std::filesystem::path& file) = 0;

  virtual std::filesystem::path ProgramFolder() = 0;
  /// Ends the program at once, without any clean-up.
  virtual void EndProgram() = 0;
};

/// From a reading of the high-resolution counter until now.
double SecondsSince(std::int64_t reading);

/// A message with an OK button, in the program's own words. Lines are separated by CR LF.
void MsgBox(const std::string& text);
/// A question with the buttons Yes and No.
bool AskYesNo(const std::string& text);
/// The same before data are lost: Enter is No.
bool AskToConfirm(const std::string& text);

inline constexpr int OverwritePrompt = 2;     ///< ask before replacing an existing file
inline constexpr int CancelSelected = 32755;  ///< error number of a cancelled dialog

/// The file dialogs of a screen. What is set stays set; FileName keeps the last choice until it is emptied.
class CommonDialog {
 public:
  bool CancelError = false;  ///< a cancelled dialog throws std::system_error with CancelSelected
  int Flags = 0;
  std::string Filter;   ///< "words|pattern|words|pattern"
  int FilterIndex = 1;  ///< of the pair chosen at first, from 1
  std::string InitDir;
  std::string DefaultExt;     ///< empty: the name is taken as typed
  std::string SuggestedName;  ///< empty: none
  std::string FileName;
  bool Saves = false;  ///< set by Show

  /// True if a file was chosen: its path is in FileName.
  bool ShowSave() { return Show(true); }
  /// The file must exist.
  bool ShowOpen() { return Show(false); }

 private:
  bool Show(bool save);
};

}  // namespace bexlow::platform
