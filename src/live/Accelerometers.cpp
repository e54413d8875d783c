#include "link/Communications.h"
#include "live/Readings.h"
#include "live/RecordingScreen.h"
#include "platform/controls/CWSlide.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Screens.h"

namespace bexlow::live {

using namespace platform;
using shared::Shared;

namespace {

constexpr int PauseAfterCellMs = 100;
constexpr auto NoteText =
    "Run Configuration screen first and you'll get the actual DAC values to start off with......";

/// What belongs to one axis: names of its controls, fields and EEPROM cells.
struct AxisRow {
  const char* caption;
  const char *reading, *readingSlide, *strip;
  const char *dacSlide, *dacText;
  const char *cmdWriteDAC, *cmdCaption;
  double values::LiveSample::*sample;
  double link::AxisReadings::*received;
  double values::OnBoardParameters::*dac;
  int address;  ///< of the DAC's high byte; the low byte follows
};

constexpr AxisRow AxisRows[] = {
    {"Acc X", "txtX", "SlideAccX", "stripX", "AxSlider", "txtSX", "cmdWriteDAC1", "Write DAC1",
     &values::LiveSample::AccX, &link::AxisReadings::x, &values::OnBoardParameters::DAC1, 62},
    {"Acc Y", "txtY", "SlideAccY", "stripY", "AySlider", "txtSY", "cmdWriteDAC2", "Write DAC2",
     &values::LiveSample::AccY, &link::AxisReadings::y, &values::OnBoardParameters::DAC2, 64},
    {"Acc Z", "txtZ", "SlideAccZ", "stripZ", "AzSlider", "txtSZ", "cmdWriteDAC3", "Write DAC3",
     &values::LiveSample::AccZ, &link::AxisReadings::z, &values::OnBoardParameters::DAC3, 66},
};

// The rounded value of a slide, as the word that its two cells hold.
std::int32_t WordOf(const CWSlide& slide) {
  const auto value = values::ToInt32(slide.Value());
  if (value < -32768 || value > 65535)
    Throw(std::errc::result_out_of_range, "No DAC value: " + values::PlainNumberText(value));
  return value < 0 ? value + 65536 : value;
}

CWSlide* AddSlide(QBoxLayout& column, const char* name, const char* caption, QWidget* parent) {
  auto* slide = new CWSlide(parent);
  slide->setObjectName(name);
  slide->setAccessibleName(caption);
  auto* label = new QLabel(caption, parent);
  label->setAlignment(Qt::AlignHCenter);
  column.addWidget(label);
  column.addWidget(slide, 1, Qt::AlignHCenter);
  return slide;
}

class Accelerometers : public RecordingScreen {
 public:
  Accelerometers()
      : RecordingScreen("Accelerometers", link::CommandName::SampleAccelerometers,
                        files::DataFileKind::Accelerometers, shared::WriteAccelerometersToFile) {
    auto* columns = new QHBoxLayout;
    columns->setSpacing(8);
    AddReadings(*columns);
    AddDacPanel(*columns);
    lblNote->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(12, 12, 12, 12);
    rows->setSpacing(12);
    rows->addLayout(columns, 5);
    rows->addWidget(lblNote);
    for (const auto& row : AxisRows) strips_->AddStrip(row.strip, row.caption, "bits", 0, 1024);
    rows->addWidget(strips_, 2);
    fraHiddenSliders->hide();
    lblNote->hide();
    AddChord(shared::ServiceChord, [this] { ToggleDacPanel(); });
  }

 private:
  /// The controls of one axis.
  struct Axis {
    const AxisRow& row;
    QLineEdit* reading = nullptr;
    CWSlide *readingSlide = nullptr, *dacSlide = nullptr;
    QPushButton* cmdWriteDAC = nullptr;
  };

  void AddReadings(QHBoxLayout& columns) {
    auto* fraAcc = MakeFrame("fraAcc", "Accelerometers", this);
    // A blank caption aligns its top with the other frames.
    auto* fraSlider = MakeFrame("fraSlider", " ", this);
    fraSlider->setAccessibleName("Readings");
    auto* boxes = new QGridLayout(fraAcc);
    auto* slides = new QHBoxLayout(fraSlider);
    for (auto& axis : axes_) {
      axis.reading = AddReading(*boxes, axis.row.reading, axis.row.caption, "bits", fraAcc);
      auto* column = new QVBoxLayout;
      axis.readingSlide = AddSlide(*column, axis.row.readingSlide, axis.row.caption, fraSlider);
      slides->addLayout(column);
      strips_->DimAlong(axis.readingSlide);
    }
    strips_->DimAlong(fraAcc);
    boxes->setRowStretch(boxes->rowCount(), 1);
    columns.addWidget(fraAcc);
    columns.addWidget(fraSlider, 1);
  }

  void AddDacPanel(QHBoxLayout& columns) {
    auto* slides = new QHBoxLayout(fraHiddenSliders);
    for (auto& axis : axes_) {
      auto* column = new QVBoxLayout;
      axis.dacSlide = AddSlide(*column, axis.row.dacSlide, axis.row.caption, fraHiddenSliders);
      axis.dacSlide->SetReadOnly(false);
      auto* text = MakeTextBox(axis.row.dacText, axis.row.caption, fraHiddenSliders);
      text->setAlignment(Qt::AlignRight);
      axis.cmdWriteDAC =
          MakeButton(axis.row.cmdWriteDAC, axis.row.cmdCaption, [this, &axis] { cmdWriteDAC_Click(axis); });
      column->addWidget(text);
      column->addWidget(axis.cmdWriteDAC);
      slides->addLayout(column);
      axis.dacSlide->PointerValueChanged = [text](double value) { text->setText(shared::Shown(value)); };
      connect(text, &QLineEdit::textChanged, axis.dacSlide,
              [text, slide = axis.dacSlide] { slide->Value(shared::NumberIn(*text)); });
      text->setText(shared::Shown(Shared.OnBoardParameters.*axis.row.dac));
    }
    columns.addWidget(fraHiddenSliders, 1);
  }

  void Decode(const link::Bytes& reply) override {
    const auto readings = link::AccelerometerReadings(reply);
    if (!readings) return;
    for (std::size_t i = 0; i < axes_.size(); ++i) {
      const double reading = Shared.LiveSample.*axes_[i].row.sample = (*readings).*axes_[i].row.received;
      strips_->Add(i, reading);
    }
  }

  void Show() override {
    RecordingScreen::Show();
    for (const auto& axis : axes_) {
      const double reading = Shared.LiveSample.*axis.row.sample;
      axis.reading->setText(shared::Shown(reading));
      axis.readingSlide->Value(reading);
    }
  }

  void Stopped() override {
    RecordingScreen::Stopped();
    for (const auto& axis : axes_) {
      axis.reading->clear();
      axis.readingSlide->Value(0);
    }
  }

  void ToggleDacPanel() {
    const bool show = fraHiddenSliders->isHidden();
    fraHiddenSliders->setVisible(show);
    lblNote->setVisible(show);
  }

  void EnableDacButtons(bool enabled) {
    for (const auto& axis : axes_) axis.cmdWriteDAC->setEnabled(enabled);
  }

  // After a failure the buttons stay disabled and sampling stays stopped: only the user knows what the logger
  // now holds.
  void cmdWriteDAC_Click(const Axis& axis) {
    EnableDacButtons(false);
    PauseSampling();
    Machine::Get().Repaint();
    for (int cell = axis.row.address; const auto byteOf : {link::ValueToMSB, link::ValueToLSB}) {
      auto word = WordOf(*axis.dacSlide);
      WriteDAC(cell++, byteOf(word));
      shared::WaitMilliseconds(PauseAfterCellMs);
    }
    Shared.OnBoardParameters.*axis.row.dac = axis.dacSlide->Value();
    ResumeSampling();
    EnableDacButtons(true);
  }

  void WriteDAC(double address, double value) {
    shared::Guarded(*this, "WriteDAC", [&] {
      link::Send(MSComm1, link::WriteEeprom(values::ToByte(address), values::ToByte(value)));
    });
  }

  std::array<Axis, 3> axes_{Axis{AxisRows[0]}, Axis{AxisRows[1]}, Axis{AxisRows[2]}};
  QGroupBox* fraHiddenSliders = MakeFrame("fraHiddenSliders", "Slider", this);
  QLabel* lblNote = MakeLabel("lblNote", NoteText, this);
};

}  // namespace

Form* MakeAccelerometers() { return new Accelerometers; }

}  // namespace bexlow::live
