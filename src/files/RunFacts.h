// What the header of a download says about its run.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bexlow::files {

struct RunFacts {
  std::string serialNumber;         ///< empty if the file has none
  std::string launch;               ///< as ReadableLaunchTime tells it; empty if the file has none
  std::optional<double> frequency;  ///< samples a second of a Linear run
};

/// Of a "Download Pages" file; empty for other kinds. A frequency of 0 or less is ignored.
RunFacts ReadRunFacts(std::string_view text);

}  // namespace bexlow::files
