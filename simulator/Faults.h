// What goes wrong on purpose: which reply is spoilt, and how.
#pragma once
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "Random.h"
#include "Reply.h"
#include "Time.h"

namespace bexlow::simulator {

enum class FaultKind { Silence, Short, Long, Late, Drop, Double, Cut, Vanish };

struct Fault {
  enum class Trigger { Nth, EveryNth, Chance };
  FaultKind kind = FaultKind::Drop;
  long amount = 0;   // bytes or milliseconds, by kind; -1 = for good
  char command = 0;  // letter of the requests whose replies count; 0 = all
  Trigger trigger = Trigger::EveryNth;
  std::uint64_t nth = 1;
  double chance = 0;
  std::uint64_t seen = 0;  // matching replies so far
};

/// Reads KIND[:AMOUNT][/COMMAND][@N|%N|~P].
/// @throws std::invalid_argument that names what is wrong
Fault ParseFault(std::string_view text);

class FaultPlan {
 public:
  FaultPlan(std::vector<Fault> faults, std::uint64_t seed) : faults_(std::move(faults)), random_(seed) {}

  /// Lets all faults that are due spoil the reply, in the order of their options.
  /// @return whether anything of it goes out
  bool Apply(Reply& reply, Time now);

 private:
  bool Fires(Fault& fault);
  void Spoil(Reply& reply, const Fault& fault, Time now);

  std::vector<Fault> faults_;
  Random random_;
  Time silentUntil_ = Time::min();
};

}  // namespace bexlow::simulator
