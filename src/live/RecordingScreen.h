// What Accelerometers and Angles share: strips of the samples, and a data file to save them to.
#pragma once

#include <QApplication>

#include "live/LiveStrips.h"
#include "platform/machine/System.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::live {

class RecordingScreen : public link::SamplingScreen {
 public:
  /// A data file was begun at this path: no screen but this one goes on saving to it.
  static void EndSavingOfOthers(const std::string& path, const platform::Form& but) {
    for (auto* widget : QApplication::allWidgets()) {
      auto* screen = dynamic_cast<RecordingScreen*>(widget);
      if (screen == nullptr || screen == &but || !IsSameFile(screen->CommonDialog1.FileName, path)) continue;
      screen->CommonDialog1.FileName.clear();
      screen->mnuSave->setChecked(false);
    }
  }

 protected:
  /// @param name   of the screen, and its caption
  /// @param write  appends the sample to the data file
  RecordingScreen(const char* name, link::CommandName command, files::DataFileKind file,
                  bool (*write)(const std::string& time))
      : SamplingScreen(name, name, command), file_(file), write_(write) {
    mnuData->insertAction(mnuSample, mnuSave);
  }

  /// Decodes a sample into the live sample. An exception ends the chain.
  virtual void Decode(const link::Bytes& reply) = 0;
  void Show() override { strips_->Show(); }
  void Starting() override {
    mnuSave->setEnabled(false);
    if (mnuSave->isChecked()) {
      SaveToOwnFile();
    } else if (AnotherSaves()) {
      shared::Shared.LiveSample.SavingToFile = false;
    }
    shared::Shared.RecordsInFile =
        shared::Shared.LiveSample.SavingToFile ? SamplesIn(shared::Shared.DataFileName) : 0;
    writing_ = true;
    auto& clock = shared::Shared.SampleClock;
    clock.CounterNow = platform::Machine::Get().QueryPerformanceCounter();
    clock.CounterStart = clock.CounterNow;
    strips_->Clear();
  }
  void Stopped() override {
    mnuSave->setEnabled(true);
    strips_->End();
  }

  LiveStrips* strips_ = new LiveStrips(this);

 private:
  static bool IsSameFile(const std::string& path, const std::string& other) {
    std::error_code ignored;
    return path == other || std::filesystem::equivalent(path, other, ignored);
  }

  // A file that was moved away or cannot be read counts from 0: the next sample begins it again, or is
  // refused.
  static std::int64_t SamplesIn(const std::string& path) {
    constexpr std::int64_t HeaderLines = 10;
    try {
      return std::max<std::int64_t>(0, std::ranges::count(platform::ReadWhole(path), '\n') - HeaderLines);
    } catch (const std::system_error&) {
      return 0;
    }
  }

  // The data file is shared by all screens, so it is not changed while another screen may be saving. If it
  // cannot be created, a box says so. After a cancelled dialog an earlier name stays in use.
  void mnuSave_Click() {
    if (!link::LoggerIsFree(*this)) return;
    const bool save = !mnuSave->isChecked();
    mnuSave->setChecked(save);
    shared::Shared.LiveSample.SavingToFile = false;
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
  // True if another open recording screen has chosen the data file: this one must not write to it.
  bool AnotherSaves() const {
    return std::ranges::any_of(QApplication::allWidgets(), [this](const QWidget* widget) {
      const auto* other = dynamic_cast<const RecordingScreen*>(widget);
      return other != nullptr && other != this && other->mnuSave->isChecked();
    });
  }
  // Another screen may have saved to its own file, or ended its saving, since this one's file was chosen.
  void SaveToOwnFile() {
    shared::Shared.DataFileName = CommonDialog1.FileName;
    shared::Shared.LiveSample.SavingToFile = true;
  }
  void Take(const link::Bytes& reply) override {
    shared::Shared.SampleClock.CounterNow = platform::Machine::Get().QueryPerformanceCounter();
    shared::Shared.LiveSample.SampleTime =
        values::NumberText(values::ElapsedSeconds(shared::Shared.SampleClock));
    Decode(reply);
    if (!shared::Shared.LiveSample.SavingToFile) return;
    writing_ = write_(shared::Shared.LiveSample.SampleTime);
    if (!writing_) DelayNextRequest();
  }
  platform::Activity Activity() override {
    auto activity = SamplingScreen::Activity();
    if (!shared::Shared.LiveSample.SavingToFile) return activity;
    const auto file = std::filesystem::path(shared::Shared.DataFileName).filename().string();
    const auto count = shared::Shared.RecordsInFile;
    const auto samples = link::SamplesText(count);
    const bool saving = writing_ && activity.phase == "Sampling";
    const auto words = saving ? "saving to " + file + ", " + samples
                              : samples + (count == 1 ? " is in " : " are in ") + file;
    const auto joint = saving ? ", " : "; ";
    if (activity.details.empty()) {
      activity.joint = joint;
    } else {
      activity.details += joint;
    }
    activity.details += words;
    return activity;
  }

  const files::DataFileKind file_;
  bool (*const write_)(const std::string& time);
  platform::CommonDialog CommonDialog1;
  bool writing_ = true;  ///< the last sample could be written
  QAction* mnuSave = AddCheckEntry(mnuData, "mnuSave", "Sa&ve", [this] { mnuSave_Click(); });
};

}  // namespace bexlow::live
