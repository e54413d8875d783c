#include "live/Datagram.h"

#include "values/NumberText.h"

namespace bexlow::live {

namespace {
constexpr std::string_view Mark = "BX";

std::optional<ReceivedAngle> AngleOf(std::string_view text) {
  const auto degrees = values::FieldToDegrees(text);
  if (!degrees) return std::nullopt;
  return ReceivedAngle{degrees->whole, values::LeadingNumber(text)};
}
}  // namespace

std::string Datagram(double angleX, double angleY) {
  return std::string(Mark)
      .append(values::NumberText(angleX))
      .append("/")
      .append(values::NumberText(angleY))
      .append(Mark);
}

std::optional<std::string_view> DatagramBody(std::string_view text) {
  if (text.size() < 2 * Mark.size() || !text.starts_with(Mark) || !text.ends_with(Mark)) return std::nullopt;
  return text.substr(Mark.size(), text.size() - 2 * Mark.size());
}

ReceivedAngles AnglesOfBody(std::string_view body) {
  const std::size_t slash = body.find('/');
  if (slash == std::string_view::npos) return {std::nullopt, AngleOf(body)};
  return {AngleOf(body.substr(0, slash)), AngleOf(body.substr(slash + 1))};
}

}  // namespace bexlow::live
