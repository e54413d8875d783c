// The stages of the tour, in the order of a day's work.
#pragma once

#include <filesystem>

#include "tour/Robot.h"
#include "tour/StandIn.h"

namespace bexlow::tour {

struct Tour {
  Robot& robot;
  StandIn& standIn;
  std::filesystem::path dataFiles;
};

void ConnectToLogger(Tour& tour, bool withPictures);
void ChangeSettings(Tour& tour);
void CalibrateAxes(Tour& tour);
void WatchAccelerometers(Tour& tour);
void WatchAngles(Tour& tour);
/// Sends to a second program, which this one starts.
void ShareAngles(Tour& tour);
/// The second program's part.
void ReceiveAngles(Robot& robot, const std::filesystem::path& output);
void LookAbout(Tour& tour);
/// On a logger that has counted bins.
void DownloadBins(Tour& tour);
void DownloadRun(Tour& tour, const std::string& name);
void ReviewPushes(Tour& tour, const std::string& name);
void LaunchRun(Tour& tour);
void EraseLogger(Tour& tour);

}  // namespace bexlow::tour
