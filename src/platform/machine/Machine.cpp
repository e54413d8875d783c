#include "platform/machine/Machine.h"

#include <cassert>

#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {
Machine* installed = nullptr;

class DialogCategory : public std::error_category {
 public:
  const char* name() const noexcept override { return "dialog"; }
  std::string message(int) const override { return "Cancel was selected."; }
};

[[noreturn]] void ThrowCancelled() {
  static const DialogCategory category;
  throw std::system_error(CancelSelected, category);
}

Answer AskHolding(const std::string& text, Buttons buttons) {
  const EventGate::Hold hold;
  return Machine::Get().Ask(text, buttons);
}

}  // namespace

Machine& Machine::Get() {
  assert(installed != nullptr);
  return *installed;
}

void Machine::Install(Machine& machine) { installed = &machine; }

double SecondsSince(std::int64_t reading) {
  const auto counts = Machine::Get().QueryPerformanceCounter() - reading;
  return static_cast<double>(counts) / static_cast<double>(Machine::Get().QueryPerformanceFrequency());
}

void MsgBox(const std::string& text) { AskHolding(text, Buttons::Ok); }

bool AskYesNo(const std::string& text) { return AskHolding(text, Buttons::YesNo) == Answer::Yes; }

bool AskToConfirm(const std::string& text) { return AskHolding(text, Buttons::Confirm) == Answer::Yes; }

bool CommonDialog::Show(bool save) {
  const EventGate::Hold hold;
  Saves = save;
  const auto chosen = Machine::Get().AskFile(*this);
  if (chosen) FileName = *chosen;
  if (!chosen && CancelError) ThrowCancelled();
  return chosen.has_value();
}

}  // namespace bexlow::platform
