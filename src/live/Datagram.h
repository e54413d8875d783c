// The datagram of a remote session: BX<angle X>/<angle Y>BX as plain text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bexlow::live {

/// The text of one sample, angles in degrees.
std::string Datagram(double angleX, double angleY);

/// What stands between the two marks; nothing where the text (at least 4 bytes) lacks one of them.
std::optional<std::string_view> DatagramBody(std::string_view text);

/// Angles of a received datagram in whole degrees; an angle that cannot be had is missing.
struct ReceivedAngles {
  std::optional<std::int16_t> x, y;
};

/// Both angles of a body. Without a "/" there is no X, and Y is the body's leading number.
ReceivedAngles AnglesOfBody(std::string_view body);

}  // namespace bexlow::live
