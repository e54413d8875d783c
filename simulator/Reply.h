// What the logger puts on the line in answer to one request.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Time.h"

namespace bexlow::simulator {

struct Reply {
  char command = 0;                 // letter of the request
  std::vector<std::uint8_t> bytes;  // in the order of the line
  Time spacing{0};                  // from byte to byte; 0 = as closely as the line allows
  Time delay{0};                    // held back before the first byte
  bool stream = false;              // progress bytes, between which other replies may go out
  std::string sample{};             // words of a live sample in decimal, for the record of samples
  std::optional<Time> vanish{};     // the line goes away behind the last byte, for this long
};

}  // namespace bexlow::simulator
