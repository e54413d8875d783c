#include "live/RecordingScreen.h"

#include <QApplication>

#include <algorithm>

#include "link/Communications.h"
#include "platform/machine/TextFile.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::live {

using shared::Shared;

namespace {

bool IsSameFile(const std::string& path, const std::string& other) {
  std::error_code ignored;
  return path == other || std::filesystem::equivalent(path, other, ignored);
}

// A file that was moved away or cannot be read counts from 0: the next sample begins it again, or is refused.
std::int64_t SamplesIn(const std::string& path) {
  constexpr std::int64_t HeaderLines = 10;
  try {
    return std::max<std::int64_t>(0, std::ranges::count(platform::ReadWhole(path), '\n') - HeaderLines);
  } catch (const std::system_error&) {
    return 0;
  }
}

}  // namespace

RecordingScreen::RecordingScreen(const char* name, link::CommandName command, files::DataFileKind file,
                                 bool (*write)(const std::string& time))
    : SamplingScreen(name, name, command), file_(file), write_(write) {
  mnuData->insertAction(mnuSample, mnuSave);
}

void RecordingScreen::Starting() {
  mnuSave->setEnabled(false);
  if (mnuSave->isChecked()) {
    SaveToOwnFile();
  } else if (AnotherSaves()) {
    Shared.LiveSample.SavingToFile = false;
  }
  Shared.RecordsInFile = Shared.LiveSample.SavingToFile ? SamplesIn(Shared.DataFileName) : 0;
  writing_ = true;
  auto& clock = Shared.SampleClock;
  clock.CounterNow = platform::Machine::Get().QueryPerformanceCounter();
  clock.CounterStart = clock.CounterNow;
  strips_->Clear();
}

void RecordingScreen::Stopped() {
  mnuSave->setEnabled(true);
  strips_->End();
}

platform::Activity RecordingScreen::Activity() {
  auto activity = SamplingScreen::Activity();
  if (!Shared.LiveSample.SavingToFile) return activity;
  const auto file = std::filesystem::path(Shared.DataFileName).filename().string();
  const auto count = Shared.RecordsInFile;
  const auto samples = link::SamplesText(count);
  const bool saving = writing_ && activity.phase == "Sampling";
  const auto words =
      saving ? "saving to " + file + ", " + samples : samples + (count == 1 ? " is in " : " are in ") + file;
  const auto joint = saving ? ", " : "; ";
  if (activity.details.empty()) {
    activity.joint = joint;
  } else {
    activity.details += joint;
  }
  activity.details += words;
  return activity;
}

void RecordingScreen::Take(const link::Bytes& reply) {
  Shared.SampleClock.CounterNow = platform::Machine::Get().QueryPerformanceCounter();
  Shared.LiveSample.SampleTime = values::NumberText(values::ElapsedSeconds(Shared.SampleClock));
  Decode(reply);
  if (!Shared.LiveSample.SavingToFile) return;
  writing_ = write_(Shared.LiveSample.SampleTime);
  if (!writing_) DelayNextRequest();
}

// True if another open recording screen has chosen the data file: this one must not write to it.
bool RecordingScreen::AnotherSaves() const {
  return std::ranges::any_of(QApplication::allWidgets(), [this](const QWidget* widget) {
    const auto* other = dynamic_cast<const RecordingScreen*>(widget);
    return other != nullptr && other != this && other->mnuSave->isChecked();
  });
}

void RecordingScreen::EndSavingOfOthers(const std::string& path, const platform::Form& but) {
  for (auto* widget : QApplication::allWidgets()) {
    auto* screen = dynamic_cast<RecordingScreen*>(widget);
    if (screen == nullptr || screen == &but || !IsSameFile(screen->CommonDialog1.FileName, path)) continue;
    screen->CommonDialog1.FileName.clear();
    screen->mnuSave->setChecked(false);
  }
}

// Another screen may have saved to its own file, or ended its saving, since this one's file was chosen.
void RecordingScreen::SaveToOwnFile() {
  Shared.DataFileName = CommonDialog1.FileName;
  Shared.LiveSample.SavingToFile = true;
}

// The data file is shared by all screens, so it is not changed while another screen may be saving. If it
// cannot be created, a box says so. After a cancelled dialog an earlier name stays in use.
void RecordingScreen::mnuSave_Click() {
  if (!link::LoggerIsFree(*this)) return;
  const bool save = !mnuSave->isChecked();
  mnuSave->setChecked(save);
  Shared.LiveSample.SavingToFile = false;
  if (!save) return;
  const std::string failure = shared::WriteDataFileHeader(CommonDialog1, file_);
  if (!failure.empty()) CommonDialog1.FileName.clear();
  if (!CommonDialog1.FileName.empty()) {
    EndSavingOfOthers(CommonDialog1.FileName, *this);
    return SaveToOwnFile();
  }
  mnuSave->setChecked(false);
  if (!failure.empty()) platform::MsgBox(failure + "\r\nNo data will be saved.");
}

}  // namespace bexlow::live
