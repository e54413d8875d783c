#include "Faults.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>

#include "Numbers.h"

namespace bexlow::simulator {
namespace {

struct KindName {
  std::string_view name;
  FaultKind kind;
  long amount;  // if none is given
};

constexpr KindName KindNames[] = {
    {"silence", FaultKind::Silence, -1}, {"short", FaultKind::Short, 1},    {"long", FaultKind::Long, 1},
    {"late", FaultKind::Late, 1500},     {"drop", FaultKind::Drop, 0},      {"double", FaultKind::Double, 0},
    {"cut", FaultKind::Cut, 1},          {"vanish", FaultKind::Vanish, -1},
};

// Cuts off and gives the text after the mark; nothing if the mark is missing.
std::optional<std::string_view> CutBehind(std::string_view& text, char mark) {
  const auto place = text.find(mark);
  if (place == std::string_view::npos) return std::nullopt;
  const auto behind = text.substr(place + 1);
  text = text.substr(0, place);
  return behind;
}

void ParseTrigger(std::string_view& text, Fault& fault) {
  if (const auto nth = CutBehind(text, '@')) {
    fault.trigger = Fault::Trigger::Nth;
    fault.nth = WholeNumber(*nth, "the reply number behind @", 1, 1'000'000'000);
  } else if (const auto every = CutBehind(text, '%')) {
    fault.nth = WholeNumber(*every, "the distance behind %", 1, 1'000'000'000);
  } else if (const auto chance = CutBehind(text, '~')) {
    fault.trigger = Fault::Trigger::Chance;
    fault.chance = Decimal(*chance, "the chance behind ~", 0, 1);
  }
}

Time Span(long milliseconds) {
  return milliseconds < 0 ? Time::max() : Time(std::chrono::milliseconds(milliseconds));
}

void RemoveMiddle(std::vector<std::uint8_t>& bytes, std::size_t count) {
  count = std::min(count, bytes.size());
  const auto first = bytes.begin() + static_cast<std::ptrdiff_t>((bytes.size() - count) / 2);
  bytes.erase(first, first + static_cast<std::ptrdiff_t>(count));
}

}  // namespace

Fault ParseFault(std::string_view text) {
  Fault fault;
  ParseTrigger(text, fault);
  if (const auto command = CutBehind(text, '/')) {
    if (command->size() != 1) throw std::invalid_argument("--fault takes one command letter behind /");
    fault.command = command->front();
  }
  const auto amount = CutBehind(text, ':');
  const auto* const kind = std::ranges::find(KindNames, text, &KindName::name);
  if (kind == std::end(KindNames)) throw std::invalid_argument("--fault: no such kind: " + std::string(text));
  fault.kind = kind->kind;
  fault.amount = kind->amount;
  if (amount) fault.amount = static_cast<long>(WholeNumber(*amount, "the amount behind :", 0, 86'400'000));
  return fault;
}

bool FaultPlan::Fires(Fault& fault) {
  ++fault.seen;
  switch (fault.trigger) {
    case Fault::Trigger::Nth:
      return fault.seen == fault.nth;
    case Fault::Trigger::EveryNth:
      return fault.seen % fault.nth == 0;
    case Fault::Trigger::Chance:
      return random_.Share() < fault.chance;
  }
  return false;
}

void FaultPlan::Spoil(Reply& reply, const Fault& fault, Time now) {
  auto& bytes = reply.bytes;
  const auto count = static_cast<std::size_t>(std::clamp(fault.amount, 0L, 65536L));  // if bytes are meant
  switch (fault.kind) {
    case FaultKind::Silence:
      silentUntil_ = fault.amount < 0 ? Time::max() : now + Span(fault.amount);
      return bytes.clear();
    case FaultKind::Drop:
      return bytes.clear();
    case FaultKind::Short:
      return bytes.resize(bytes.size() - std::min(count, bytes.size()));
    case FaultKind::Long:
      return bytes.resize(bytes.size() + count, 0x55);
    case FaultKind::Cut:
      return RemoveMiddle(bytes, count);
    case FaultKind::Late:
      reply.delay += Span(fault.amount);
      return;
    case FaultKind::Double: {
      const std::vector<std::uint8_t> again = bytes;
      bytes.insert(bytes.end(), again.begin(), again.end());
      return;
    }
    case FaultKind::Vanish:
      bytes.resize(bytes.size() / 2);
      reply.vanish = Span(fault.amount);
      return;
  }
}

bool FaultPlan::Apply(Reply& reply, Time now) {
  if (now < silentUntil_) return false;
  for (auto& fault : faults_) {
    if (fault.command != 0 && fault.command != reply.command) continue;
    if (Fires(fault)) Spoil(reply, fault, now);
  }
  return !reply.bytes.empty() || reply.vanish;
}

}  // namespace bexlow::simulator
