// A user on the live screens, with the logger on a virtual line.
#pragma once

#include "platform/controls/CWKnob.h"
#include "platform/controls/CWSlide.h"
#include "support/Story.h"
#include "values/NumberText.h"

namespace bexlow::test {

/// One sample of Angles on the line: the request and four bytes. Accelerometers takes two bytes more.
inline constexpr microseconds AngleSampleTime = ByteTime * 5;
inline constexpr microseconds AccSampleTime = ByteTime * 7;

/// Within this time a sample is on the screen, even if no other follows.
inline constexpr milliseconds ShownTime{60};

struct LiveStory : Story {
  /// Opens a screen; one that is open is left first, and the line is given time to fall silent.
  void Open(const QString& screen) {
    if (outer == nullptr) StartConnected();
    if (ScreenInFront() != "Main") Leave();
    logger.spoil = {};
    Shared.LiveSample.SavingToFile = false;
    machine.Pass(milliseconds(1000));
    Choose("Display", screen);
    machine.wire.clear();
  }
  void Sample() { Choose("Data", "Sample"); }
  void SampleFor(microseconds time) {
    Sample();
    machine.Pass(time);
  }
  void Leave() { Choose("Data", "Return"); }
  bool Sampling() const { return Checked("Data", "Sample"); }

  /// Requests of this letter since the wire was cleared.
  int Requests(char letter) const {
    return static_cast<int>(std::ranges::count(machine.wire, letter, &WireByte::byte));
  }
  void Save(const std::string& name) { ChooseFile("Data", "Save", name); }
  std::vector<std::string> Records() const { return LinesAfter(10); }
  /// The different records without their times; a single one means that no sample was torn.
  std::set<std::string> KindsOfRecords() const {
    std::set<std::string> kinds;
    for (const auto& record : Records()) kinds.insert(record.substr(record.find(',') + 1));
    return kinds;
  }
};

}  // namespace bexlow::test
