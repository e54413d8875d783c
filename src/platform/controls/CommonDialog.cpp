#include "platform/controls/CommonDialog.h"

#include <system_error>

#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {

namespace {

class DialogCategory : public std::error_category {
 public:
  const char* name() const noexcept override { return "dialog"; }
  std::string message(int) const override { return "Cancel was selected."; }
};

[[noreturn]] void ThrowCancelled() {
  static const DialogCategory category;
  throw std::system_error(CancelSelected, category);
}

}  // namespace

bool CommonDialog::Show(bool save) {
  const EventGate::Hold hold;
  Saves = save;
  const auto chosen = Machine::Get().AskFile(*this);
  if (chosen) FileName = *chosen;
  if (!chosen && CancelError) ThrowCancelled();
  return chosen.has_value();
}

}  // namespace bexlow::platform
