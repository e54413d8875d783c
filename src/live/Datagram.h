// The datagram of a remote session: BX<angle X>/<angle Y>BX as plain text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bexlow::live {

/// The text of one sample, angles in degrees.
std::string Datagram(double angleX, double angleY);

/// The text between the two marks; nothing if a mark is missing or there are fewer than 4 bytes.
std::optional<std::string_view> DatagramBody(std::string_view text);

struct ReceivedAngle {
  std::int16_t whole = 0;  ///< degrees, a half to the even neighbour
  double sent = 0;         ///< degrees with the decimals that came
};

/// Angles of a received datagram; empty if they do not fit 16 bits.
struct ReceivedAngles {
  std::optional<ReceivedAngle> x, y;
};

/// Both angles of a body. Without a "/" there is no X, and Y is the body's leading number.
ReceivedAngles AnglesOfBody(std::string_view body);

}  // namespace bexlow::live
