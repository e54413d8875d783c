// How the Accelerometers screen is built; what it does is in Accelerometers.cpp.
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "live/Accelerometers.h"
#include "live/AxisRows.h"
#include "live/Readings.h"
#include "platform/controls/Controls.h"
#include "platform/instruments/CWSlide.h"

namespace bexlow::live {

using namespace platform;

namespace {

constexpr auto NoteText =
    "Run Configuration screen first and you'll get the actual DAC values to start off with......";

CWSlide* AddSlide(QBoxLayout& column, const char* name, const char* caption, QWidget* parent) {
  auto* slide = new CWSlide(parent);
  slide->setObjectName(name);
  slide->setAccessibleName(caption);
  auto* label = new QLabel(caption, parent);
  label->setAlignment(Qt::AlignHCenter);
  column.addWidget(label);
  column.addWidget(slide, 1);
  return slide;
}

}  // namespace

void Accelerometers::Build() {
  for (std::size_t i = 0; i < axes_.size(); ++i) axes_[i].row = &AxisRows[i];

  auto* columns = new QHBoxLayout;
  columns->setSpacing(8);
  BuildReadings(*columns);
  BuildDacPanel(*columns);
  lblNote = MakeLabel("lblNote", NoteText, this);
  lblNote->setWordWrap(true);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(12, 12, 12, 12);
  rows->setSpacing(12);
  rows->addLayout(columns, 5);
  rows->addWidget(lblNote);
  for (const auto& axis : axes_) Strips().AddStrip(axis.row->strip, axis.row->caption, "bits", 0, 1024);
  rows->addWidget(&Strips(), 2);
  fraHiddenSliders->hide();
  lblNote->hide();
}

void Accelerometers::BuildReadings(QHBoxLayout& columns) {
  auto* fraAcc = MakeFrame("fraAcc", "Accelerometers", this);
  auto* fraSlider =
      MakeFrame("fraSlider", " ", this);  // a blank caption aligns its top with the other frames
  fraSlider->setAccessibleName("Readings");
  auto* boxes = new QGridLayout(fraAcc);
  auto* slides = new QHBoxLayout(fraSlider);
  for (auto& axis : axes_) {
    axis.reading = AddReading(*boxes, {axis.row->reading, axis.row->caption, "bits"}, fraAcc);
    auto* column = new QVBoxLayout;
    axis.readingSlide = AddSlide(*column, axis.row->readingSlide, axis.row->caption, fraSlider);
    slides->addLayout(column);
  }
  boxes->setRowStretch(boxes->rowCount(), 1);
  columns.addWidget(fraAcc);
  columns.addWidget(fraSlider, 1);
}

void Accelerometers::BuildDacPanel(QHBoxLayout& columns) {
  fraHiddenSliders = MakeFrame("fraHiddenSliders", "Slider", this);
  auto* slides = new QHBoxLayout(fraHiddenSliders);
  for (auto& axis : axes_) {
    auto* column = new QVBoxLayout;
    axis.dacSlide = AddSlide(*column, axis.row->dacSlide, axis.row->caption, fraHiddenSliders);
    axis.dacSlide->SetReadOnly(false);
    axis.dacText = MakeTextBox(axis.row->dacText, axis.row->caption, fraHiddenSliders);
    axis.cmdWriteDAC =
        MakeButton(axis.row->cmdWriteDAC, axis.row->cmdCaption, [this, &axis] { cmdWriteDAC_Click(axis); });
    column->addWidget(axis.dacText);
    column->addWidget(axis.cmdWriteDAC);
    slides->addLayout(column);
  }
  columns.addWidget(fraHiddenSliders, 1);
}

}  // namespace bexlow::live
