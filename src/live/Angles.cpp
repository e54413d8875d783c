#include "live/Angles.h"

#include <QLineEdit>
#include <QPushButton>

#include "link/Communications.h"
#include "live/AngleRows.h"
#include "platform/instruments/CWKnob.h"
#include "platform/machine/Machine.h"
#include "shared/DataFiles.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "values/Conversions.h"

namespace bexlow::live {

using shared::Guarded;
using shared::Shared;

namespace {

constexpr RecordingKind Kind{"Angles", link::CommandName::SampleAngles, files::DataFileKind::Angles,
                             shared::WriteAnglesToFile};

constexpr int PauseBetweenCellsMs = 500;

}  // namespace

Angles::Angles() : RecordingScreen(Kind) {
  Build();
  EnableTareButtons(false);
  for (const auto& axis : axes_)
    axis.tare->setText(shared::Shown(Shared.OnBoardParameters.*axis.row->tareField));
}

// No tare is subtracted: if TareEnable is 1, the logger has applied it to the words that it sends.
void Angles::Decode(const link::Bytes& reply) {
  const auto words = link::AngleWords(reply);
  if (!words) return;
  received_ = *words;
  for (std::size_t i = 0; i < axes_.size(); ++i) {
    DecodeAngle(*axes_[i].row, received_, Shared.LiveSample);
    Strips().Add(i, Shared.LiveSample.*axes_[i].row->angleField);
  }
}

void Angles::Show() {
  for (const auto& axis : axes_) {
    axis.word->setText(shared::Shown(received_.*axis.row->received));
    const double angle = Shared.LiveSample.*axis.row->angleField;
    axis.angle->setText(shared::Shown(angle));
    axis.dial->Value(angle);
  }
}

void Angles::Starting() {
  EnableTareButtons(true);
}

// The raw words keep their last values.
void Angles::Stopped() {
  EnableTareButtons(false);
  for (const auto& axis : axes_) {
    axis.angle->clear();
    axis.dial->Value(0);
  }
}

void Angles::EnableTareButtons(bool enabled) {
  for (const auto& axis : axes_) axis.cmdTare->setEnabled(enabled);
}

// The caption alone decides what the click does; the logger is not asked whether it holds a tare.
void Angles::cmdTare_Click(const Axis& axis) {
  const bool untare = axis.cmdTare->text() == axis.row->untareCaption;
  axis.cmdTare->setEnabled(false);
  axis.cmdTare->setText(untare ? axis.row->tareCaption : axis.row->untareCaption);
  untare ? RemoveTare(axis) : GetTare(axis);
  axis.cmdTare->setEnabled(true);
}

void Angles::GetTare(const Axis& axis) {
  WriteTare("GetTare", axis, [&] {
    return Tare{shared::NumberIn(*axis.word), shared::NumberIn(*axis.angle)};
  });
}

void Angles::RemoveTare(const Axis& axis) {
  WriteTare("RemoveTare", axis, [] { return Tare{}; });
}

// The logger keeps the raw word, the program the degrees. Pausing the chain first updates the boxes to the
// last sample.
void Angles::WriteTare(const char* procedure, const Axis& axis, const std::function<Tare()>& tare) {
  Guarded(*this, procedure, [&] {
    Chain().Pause();
    platform::Machine::Get().Repaint();
    const auto [word, degrees] = tare();
    const int address = axis.row->tareAddress;
    const auto counts = values::ToInt32(word);
    link::Send(SerialControl(), link::WriteEeprom(address, link::HighByte(counts)));
    shared::WaitMilliseconds(PauseBetweenCellsMs);
    link::Send(SerialControl(), link::WriteEeprom(address + 1, link::LowByte(counts)));
    Shared.OnBoardParameters.*axis.row->tareField = degrees;
    axis.tare->setText(shared::Shown(degrees));
    Chain().Resume();
  });
}

}  // namespace bexlow::live
