// Datagrams of a remote session, which anybody on the network may send.
#include "live/Datagram.h"

#include <cstdint>

#include "Target.h"
#include "live/Conversions.h"

namespace bexlow::fuzz {

namespace {

/// What one program sends, another can show.
void RequireReturn(double x, double y) {
  const std::string sent = live::Datagram(x, y);
  const auto body = live::DatagramBody(sent);
  Require(body.has_value(), "a datagram of ours has both marks");
  const auto angles = live::AnglesOfBody(*body);
  Require(angles.x == live::ToInt16(x) && angles.y == live::ToInt16(y), "both angles arrive");
}

}  // namespace

void Try(std::string_view text) {
  const auto body = live::DatagramBody(text);
  const bool marked = text.size() >= 4 && text.substr(0, 2) == "BX" && text.substr(text.size() - 2) == "BX";
  Require(body.has_value() == marked, "a body stands between two marks");
  if (body) Require(body->size() == text.size() - 4, "a body is all that stands between");
  const auto angles = live::AnglesOfBody(body.value_or(text));
  if (angles.x && angles.y) RequireReturn(*angles.x / 10.0, *angles.y / 10.0);
}

}  // namespace bexlow::fuzz
