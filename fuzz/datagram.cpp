// Datagrams of a remote session, which anybody on the network may send.
#include "live/Datagram.h"

#include "Target.h"
#include "values/Conversions.h"

namespace bexlow::fuzz {

void Try(std::string_view text) {
  const auto body = live::DatagramBody(text);
  const bool marked = text.size() >= 4 && text.starts_with("BX") && text.ends_with("BX");
  Require(body.has_value() == marked, "a body stands between two marks");
  if (body) Require(body->size() == text.size() - 4, "a body is all that stands between");
  const auto angles = live::AnglesOfBody(body.value_or(text));
  if (!angles.x || !angles.y) return;
  const double x = angles.x->whole / 10.0, y = angles.y->whole / 10.0;
  const std::string sent = live::Datagram(x, y);
  const auto back = live::AnglesOfBody(live::DatagramBody(sent).value_or(""));
  Require(back.x && back.y && back.x->sent == x && back.y->sent == y, "what one sends, another can show");
  Require(back.x->whole == values::ToInt16(x) && back.y->whole == values::ToInt16(y), "in whole degrees");
}

}  // namespace bexlow::fuzz
