#include "live/RecordingScreen.h"

#include <QApplication>

#include <algorithm>

#include "link/Communications.h"
#include "platform/machine/Machine.h"
#include "shared/Chords.h"
#include "shared/DataFiles.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::live {

using shared::Guarded;
using shared::Shared;

namespace {

bool IsSameFile(const std::string& path, const std::string& other) {
  std::error_code ignored;
  return path == other || std::filesystem::equivalent(path, other, ignored);
}

}  // namespace

RecordingScreen::RecordingScreen(const RecordingKind& kind)
    : Form(kind.screen, kind.screen),
      kind_(kind),
      MSComm1(*this, "MSComm1"),
      chain_(
          *this, MSComm1, kind.command, [this](const link::Bytes& reply) { Take(reply); },
          [this] {
            Show();
            strips_->Show();
          }),
      strips_(new LiveStrips(this)) {
  BuildMenu();
  OnCloseRequest = [this] { Unload(); };
  OnActivity = [this] { return Activity(); };
}

void RecordingScreen::BuildMenu() {
  auto* menu = AddMenu("mnuData", "&Data");
  mnuSave = AddCheckEntry(menu, "mnuSave", "Sa&ve", [this] { mnuSave_Click(); });
  mnuSample = AddCheckEntry(
      menu, "mnuSample", "&Sample",
      [this] {
        chain_.Toggle(
            *mnuSample, [this] { PrepareRun(); }, [this] { FinishRun(); });
      },
      shared::SampleKey);
  AddSeparator(menu, "mnuSep");
  AddEntry(menu, "mnuReturn", "&Return", [this] { Unload(); });
}

void RecordingScreen::PrepareRun() {
  mnuSave->setEnabled(false);
  if (mnuSave->isChecked()) {
    SaveToOwnFile();
  } else if (AnotherSaves()) {
    Shared.LiveSample.SavingToFile = false;
  }
  auto& clock = Shared.SampleClock;
  clock.CounterNow = platform::Machine::Get().QueryPerformanceCounter();
  clock.CounterStart = clock.CounterNow;
  saved_ = 0;
  strips_->Clear();
  Starting();
}

platform::Activity RecordingScreen::Activity() {
  auto activity = chain_.Activity();
  if (!Shared.LiveSample.SavingToFile) return activity;
  if (!activity.details.empty()) activity.details += ", ";
  activity.details += "saving to " + std::filesystem::path(Shared.DataFileName).filename().string() + ", " +
                      values::CountText(saved_) + " samples";
  return activity;
}

void RecordingScreen::FinishRun() {
  mnuSave->setEnabled(true);
  Stopped();
}

void RecordingScreen::Take(const link::Bytes& reply) {
  Shared.SampleClock.CounterNow = platform::Machine::Get().QueryPerformanceCounter();
  Shared.LiveSample.SampleTime = values::NumberText(values::ElapsedSeconds(Shared.SampleClock));
  Decode(reply);
  if (!Shared.LiveSample.SavingToFile) return;
  if (kind_.write(Shared.LiveSample.SampleTime)) {
    ++saved_;
  } else {
    chain_.Rest();
  }
}

// True if another open recording screen has chosen the data file: this one must not write to it.
bool RecordingScreen::AnotherSaves() const {
  return std::ranges::any_of(QApplication::allWidgets(), [this](const QWidget* widget) {
    const auto* other = qobject_cast<const RecordingScreen*>(widget);
    return other != nullptr && other != this && other->mnuSave->isChecked();
  });
}

void RecordingScreen::GiveUp(const std::string& path, const platform::Form& toScreen) {
  for (auto* widget : QApplication::allWidgets()) {
    auto* screen = qobject_cast<RecordingScreen*>(widget);
    if (screen == nullptr || screen == &toScreen || !IsSameFile(screen->CommonDialog1.FileName, path))
      continue;
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
  Guarded(*this, "mnuSave_Click", [this] {
    const bool save = !mnuSave->isChecked();
    mnuSave->setChecked(save);
    Shared.LiveSample.SavingToFile = false;
    if (!save) return;
    const std::string failure = shared::WriteDataFileHeader(CommonDialog1, kind_.file);
    if (!failure.empty()) CommonDialog1.FileName.clear();
    if (!CommonDialog1.FileName.empty()) {
      GiveUp(CommonDialog1.FileName, *this);
      return SaveToOwnFile();
    }
    mnuSave->setChecked(false);
    if (!failure.empty()) platform::MsgBox(failure + "\r\nNo data will be saved.");
  });
}

}  // namespace bexlow::live
