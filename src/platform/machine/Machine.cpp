#include "platform/machine/Machine.h"

#include <cassert>

#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {
Machine* installed = nullptr;
}

void Throw(std::errc code, const std::string& words) {
  throw std::system_error(std::make_error_code(code), words);
}

Machine& Machine::Get() {
  assert(installed != nullptr);
  return *installed;
}

void Machine::Install(Machine& machine) {
  installed = &machine;
}

void MsgBox(const std::string& text) {
  const EventGate::Hold hold;
  Machine::Get().Ask(text, Buttons::Ok);
}

bool AskYesNo(const std::string& text) {
  const EventGate::Hold hold;
  return Machine::Get().Ask(text, Buttons::YesNo) == Answer::Yes;
}

bool AskToConfirm(const std::string& text) {
  const EventGate::Hold hold;
  return Machine::Get().Ask(text, Buttons::Confirm) == Answer::Yes;
}

}  // namespace bexlow::platform
