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

}  // namespace bexlow::tour
