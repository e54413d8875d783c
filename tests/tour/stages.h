// The stages of the tour.
#pragma once

#include <filesystem>

#include "tour/RecordedStandIn.h"
#include "tour/Robot.h"

namespace bexlow::tour {

struct Tour {
  Robot& robot;
  RecordedStandIn& standIn;
  std::filesystem::path dataFiles;
};

/// A day's work on a logger that holds samples.
void Visit(Tour& tour);
/// On a logger that has counted bins.
void VisitBins(Tour& tour);

/// Sends to a second program, which this one starts.
void ShareAngles(Tour& tour);
/// The second program's part.
void ReceiveAngles(Robot& robot, const std::filesystem::path& output);

}  // namespace bexlow::tour
