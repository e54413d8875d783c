#include "link/Communications.h"
#include "live/Readings.h"
#include "live/RecordingScreen.h"
#include "shared/ErrorHandler.h"
#include "shared/NumberBox.h"
#include "shared/Screens.h"

namespace bexlow::live {

using namespace platform;
using shared::Shared;

namespace {

constexpr int TareCharacters = 17;  // "-179.994506668294"; the other boxes are as wide
constexpr int PauseBetweenCellsMs = 500;

class Angles : public RecordingScreen {
 public:
  Angles()
      : RecordingScreen("Angles", link::CommandName::SampleAngles, files::DataFileKind::Angles,
                        shared::WriteAnglesToFile) {
    auto* boxes = new QVBoxLayout;
    boxes->setSpacing(12);
    auto* fraRawWord = AddBoxes(*boxes, "fraRawWord", "Raw Word", "counts", &Axis::word, &AngleRow::word);
    AddBoxes(*boxes, "fraTare", "Tare", "degrees", &Axis::tare, &AngleRow::tare);
    auto* fraAngles = AddBoxes(*boxes, "fraAngles", "Angles", "degrees", &Axis::angle, &AngleRow::angle);
    boxes->addStretch();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addLayout(boxes);
    for (auto& axis : axes_) columns->addWidget(MakeDialFrame(axis), 1);
    AddAngleStrips(*strips_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(12, 12, 12, 12);
    rows->setSpacing(12);
    rows->addLayout(columns, 5);
    rows->addWidget(strips_, 2);

    for (auto* frame : {fraRawWord, fraAngles}) strips_->DimAlong(frame);
    for (const auto& axis : axes_) strips_->DimAlong(axis.dial);
    ShowTares();
    EnableTareButtons(false);
  }

 private:
  /// The controls of one axis.
  struct Axis {
    const AngleRow& row;
    QLineEdit *word = nullptr, *tare = nullptr, *angle = nullptr;
    CWKnob* dial = nullptr;
    QPushButton* cmdTare = nullptr;
  };

  QGroupBox* AddBoxes(QVBoxLayout& column, const char* name, const char* caption, const char* unit,
                      QLineEdit* Axis::*box, const char* AngleRow::*boxName) {
    auto* frame = MakeFrame(name, caption, this);
    auto* grid = new QGridLayout(frame);
    grid->setColumnStretch(2, 1);  // keeps the boxes aligned although the units differ in length
    for (auto& axis : axes_)
      axis.*box = AddReading(*grid, axis.row.*boxName, axis.row.caption, unit, frame, TareCharacters);
    column.addWidget(frame);
    return frame;
  }

  QGroupBox* MakeDialFrame(Axis& axis) {
    auto* frame = MakeFrame(axis.row.frame, axis.row.caption, this);
    axis.dial = MakeDial(axis.row, frame);
    axis.cmdTare =
        MakeButton(axis.row.cmdTare, axis.row.untareCaption, [this, &axis] { cmdTare_Click(axis); });
    axis.cmdTare->setToolTip(
        "While sampling: Untare clears the tare in the logger, Tare takes the angle on show.");
    auto* column = new QVBoxLayout(frame);
    column->addWidget(axis.dial, 1);
    column->addWidget(axis.cmdTare, 0, Qt::AlignHCenter);
    return frame;
  }

  // No tare is subtracted: if TareEnable is 1, the logger has applied it to the words that it sends.
  void Decode(const link::Bytes& reply) override {
    const auto words = link::AngleWords(reply);
    if (!words) return;
    received_ = *words;
    TakeAngles(received_, *strips_);
  }

  void Show() override {
    RecordingScreen::Show();
    for (const auto& axis : axes_) {
      axis.word->setText(shared::Shown(received_.*axis.row.received));
      const double angle = Shared.LiveSample.*axis.row.angleField;
      axis.angle->setText(shared::Shown(angle));
      axis.dial->Value(angle);
    }
  }

  void Starting() override {
    RecordingScreen::Starting();
    ShowTares();  // another logger may have been connected
    EnableTareButtons(true);
  }

  void ShowTares() {
    for (const auto& axis : axes_)
      axis.tare->setText(shared::Shown(Shared.OnBoardParameters.*axis.row.tareField));
  }

  // The raw words keep their last values.
  void Stopped() override {
    RecordingScreen::Stopped();
    EnableTareButtons(false);
    for (const auto& axis : axes_) {
      axis.angle->clear();
      axis.dial->Value(0);
    }
  }

  void EnableTareButtons(bool enabled) {
    for (const auto& axis : axes_) axis.cmdTare->setEnabled(enabled);
  }

  // The caption alone decides what the click does; the logger is not asked whether it holds a tare. It keeps
  // the raw word, the program the degrees. Pausing first updates the boxes to the last sample.
  void cmdTare_Click(const Axis& axis) {
    const bool untare = axis.cmdTare->text() == axis.row.untareCaption;
    axis.cmdTare->setEnabled(false);
    axis.cmdTare->setText(untare ? axis.row.tareCaption : axis.row.untareCaption);
    shared::Guarded(*this, untare ? "RemoveTare" : "GetTare", [&] {
      PauseSampling();
      Machine::Get().Repaint();
      const auto counts = untare ? 0 : values::ToInt32(shared::NumberIn(*axis.word));
      const double degrees = untare ? 0 : shared::NumberIn(*axis.angle);
      link::Send(MSComm1, link::WriteEeprom(axis.row.tareAddress, link::HighByte(counts)));
      shared::WaitMilliseconds(PauseBetweenCellsMs);
      link::Send(MSComm1, link::WriteEeprom(axis.row.tareAddress + 1, link::LowByte(counts)));
      Shared.OnBoardParameters.*axis.row.tareField = degrees;
      axis.tare->setText(shared::Shown(degrees));
      ResumeSampling();
    });
    axis.cmdTare->setEnabled(true);
  }

  std::array<Axis, 2> axes_{Axis{AngleRows[0]}, Axis{AngleRows[1]}};
  link::AnglePair received_{};  ///< the words of the last sample, as received
};

}  // namespace

Form* MakeAngles() { return new Angles; }

}  // namespace bexlow::live
