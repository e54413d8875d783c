#include "config/Configuration.h"

#include <QButtonGroup>
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>

#include <system_error>

#include "link/Communications.h"
#include "platform/controls/CWNumEdit.h"
#include "platform/machine/Machine.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"

namespace bexlow::config {

using platform::Pointer;
using shared::Guarded;
using shared::Shared;

// A sequence uses the port and the progress bar, which the other menu entries need too.
void Configuration::EnableSequences(bool enabled) {
  mnuRead->setEnabled(enabled);
  mnuWrite->setEnabled(enabled);
  mnuTools->setEnabled(enabled);
}

void Configuration::mnuRead_Click() {
  if (!link::LoggerIsFree(*this)) return;
  Guarded(*this, "mnuRead_Click", [this] {
    MousePointer(Pointer::Busy);
    EnableSequences(false);
    ClearParameters();
    Shared.ParameterIndex = FirstIndex;
    progress_.PBar->setMaximum(EndOfRead - FirstIndex);
    Shared.ReadArray = {};
    MSComm1.RThreshold(1);
    link::OpenCommPort(MSComm1, *this);
    RequestCell();
  });
}

void Configuration::RequestCell(std::size_t stepsSent) {
  const auto request = link::ReadEeprom(AddressOfIndex(Shared.ParameterIndex));
  link::Send(MSComm1, std::span(request).subspan(stepsSent));
}

platform::Activity Configuration::Activity() const {
  if (write_.Running()) return write_.Activity();
  if (const auto halted = link::Halted(MSComm1, "Reading")) return *halted;
  return {"Reading", "cell " + std::to_string(Shared.ParameterIndex) + " of " + std::to_string(EndOfRead)};
}

// One request is in flight. Any reply but one byte is dropped and the same cell asked for again, without
// limit. A repeat and the next request start with the same letter, so it is sent first; the 12 ms pause after
// it shows whether more bytes follow.
void Configuration::MSComm1_OnComm() {
  Guarded(*this, "MSComm1_OnComm", [this] {
    const bool last = Shared.ParameterIndex == EndOfRead - 1;
    const auto begun = last ? link::Request{} : link::Request{link::ReadEeprom(0).front()};
    link::Bytes reply = MSComm1.Input();
    link::EndReply(MSComm1, reply, 1, begun, last ? link::LineSilenceUs : 0);
    if (reply.size() == 1) TakeCell(reply.front());
    if (Shared.ParameterIndex == EndOfRead) return FinishRead();
    RequestCell(begun.size());
  });
}

void Configuration::TakeCell(std::uint8_t byte) {
  Shared.ReadArray.at(static_cast<std::size_t>(Shared.ParameterIndex - FirstIndex)) = byte;
  const int k = ++Shared.ParameterIndex;
  progress_.Show("Reading", k, k - FirstIndex);
}

void Configuration::FinishRead() {
  EnableSequences(true);
  link::CloseCommPort(MSComm1, *this);
  BreakOutReadArray();
  ShowParameters();
  progress_.End("Progress");
  MousePointer(Pointer::Normal);
  platform::MsgBox("Read completed!");
}

void Configuration::BreakOutReadArray() {
  Guarded(*this, "BreakOutReadArray", [this] {
    BreakOut(Shared.ReadArray, Shared.OnBoardParameters);
    for (const auto& [row, text] : IdentityTexts(Shared.ReadArray))
      boxes_[static_cast<std::size_t>(row - Parameters)]->setText(QString::fromStdString(text));
  });
}

void Configuration::ShowParameters() {
  const auto& parameters = Shared.OnBoardParameters;
  for (std::size_t row = 0; row < ParameterCount; ++row) {
    const auto field = Parameters[row].field;
    if (edits_[row] != nullptr && field != nullptr) edits_[row]->Value(parameters.*field);
  }
  (parameters.LinearUpdateRate == UpdateRate75 ? opt75Hz : opt15Hz)->setChecked(true);
}

void Configuration::ClearParameters() {
  for (auto* edit : edits_) {
    if (edit != nullptr) edit->Value(0);
  }
  auto* rates = opt15Hz->group();
  rates->setExclusive(false);  // an exclusive group always keeps one of them
  opt75Hz->setChecked(false);
  opt15Hz->setChecked(false);
  rates->setExclusive(true);
}

double Configuration::ValueOf(std::size_t row) const {
  if (edits_[row] != nullptr) return edits_[row]->Value();
  return opt75Hz->isChecked() ? UpdateRate75 : UpdateRate15;
}

std::optional<CellByte> Configuration::CellAt(int k) const {
  const auto ticks = WriteCells();
  const auto index = static_cast<std::size_t>(k - FirstIndex);
  if (index >= ticks.size())
    throw std::system_error(std::make_error_code(std::errc::invalid_argument), "No cell to write");
  const auto& tick = ticks[index];
  if (!tick.address) return std::nullopt;
  return CellByte{*tick.address, Encode(Parameters[tick.row].form, ValueOf(tick.row))[tick.byte]};
}

void Configuration::mnuShow_Click(double Parameter::*value) {
  for (std::size_t row = 0; row < ParameterCount; ++row) {
    if (edits_[row] != nullptr) edits_[row]->Value(Parameters[row].*value);
  }
}

void Configuration::mnuShowDefaults_Click() {
  mnuShow_Click(&Parameter::standard);
  opt15Hz->setChecked(true);
}

void Configuration::ToggleHidden() {
  const bool show = !mnuEEPROM->isVisible();
  mnuEEPROM->setVisible(show);
  fra100108->setVisible(show);
}

}  // namespace bexlow::config
