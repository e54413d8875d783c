#include "live/Accelerometers.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <system_error>

#include "link/Communications.h"
#include "live/AxisRows.h"
#include "platform/instruments/CWSlide.h"
#include "platform/machine/Machine.h"
#include "shared/Chords.h"
#include "shared/DataFiles.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/NumberBox.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::live {

using shared::Guarded;
using shared::Shared;

namespace {

constexpr RecordingKind Kind{"Accelerometers", link::CommandName::SampleAccelerometers,
                             files::DataFileKind::Accelerometers, shared::WriteAccelerometersToFile};

constexpr int PauseBehindCellMs = 100;

// The rounded value of a slide, as the word that its two cells hold.
std::int32_t WordOf(const platform::CWSlide& slide) {
  const auto value = values::ToInt32(slide.Value());
  if (value < -32768 || value > 65535)
    throw std::system_error(std::make_error_code(std::errc::result_out_of_range),
                            "No DAC value: " + values::PlainNumberText(value));
  return value < 0 ? value + 65536 : value;
}

}  // namespace

Accelerometers::Accelerometers() : RecordingScreen(Kind) {
  Build();
  for (const auto& axis : axes_) {
    LinkSlideAndText(axis);
    const double dac = Shared.OnBoardParameters.*axis.row->dac;
    axis.dacSlide->Value(dac);
    axis.dacText->setText(shared::Shown(dac));
  }
  AddChord(shared::ServiceChord, [this] { ToggleDacPanel(); });
}

void Accelerometers::LinkSlideAndText(const Axis& axis) {
  auto* slide = axis.dacSlide;
  auto* text = axis.dacText;
  slide->PointerValueChanged = [text](double value) { text->setText(shared::Shown(value)); };
  connect(text, &QLineEdit::textChanged, slide,
          [slide](const QString& typed) { slide->Value(values::LeadingNumber(typed.toStdString())); });
}

void Accelerometers::Decode(const link::Bytes& reply) {
  const auto readings = link::AccelerometerReadings(reply);
  if (!readings) return;
  for (std::size_t i = 0; i < axes_.size(); ++i) {
    const double reading = Shared.LiveSample.*axes_[i].row->sample = (*readings).*axes_[i].row->received;
    Strips().Add(i, reading);
  }
}

void Accelerometers::Show() {
  for (const auto& axis : axes_) {
    const double reading = Shared.LiveSample.*axis.row->sample;
    axis.reading->setText(shared::Shown(reading));
    axis.readingSlide->Value(reading);
  }
}

void Accelerometers::Stopped() {
  for (const auto& axis : axes_) {
    axis.reading->clear();
    axis.readingSlide->Value(0);
  }
}

void Accelerometers::ToggleDacPanel() {
  const bool show = fraHiddenSliders->isHidden();
  fraHiddenSliders->setVisible(show);
  lblNote->setVisible(show);
}

void Accelerometers::EnableDacButtons(bool enabled) {
  for (const auto& axis : axes_) axis.cmdWriteDAC->setEnabled(enabled);
}

// After a failure the buttons stay disabled and sampling stays stopped: only the user knows what the logger
// now holds.
void Accelerometers::cmdWriteDAC_Click(const Axis& axis) {
  Guarded(*this, axis.row->procedure, [&] {
    EnableDacButtons(false);
    Chain().Pause();
    platform::Machine::Get().Repaint();
    auto high = WordOf(*axis.dacSlide);
    WriteDAC(axis.row->address, link::ValueToMSB(high));
    shared::WaitMilliseconds(PauseBehindCellMs);
    auto low = WordOf(*axis.dacSlide);
    WriteDAC(axis.row->address + 1, link::ValueToLSB(low));
    shared::WaitMilliseconds(PauseBehindCellMs);
    Shared.OnBoardParameters.*axis.row->dac = axis.dacSlide->Value();
    Chain().Resume();
    EnableDacButtons(true);
  });
}

void Accelerometers::WriteDAC(double address, double value) {
  Guarded(*this, "WriteDAC", [&] {
    link::Send(SerialControl(), link::WriteEeprom(values::ToByte(address), values::ToByte(value)));
  });
}

}  // namespace bexlow::live
