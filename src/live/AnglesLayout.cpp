// How the Angles screen is built; what it does is in Angles.cpp.
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "live/AngleRows.h"
#include "live/Angles.h"
#include "live/Dial.h"
#include "live/Readings.h"
#include "platform/controls/Controls.h"

namespace bexlow::live {

using namespace platform;

namespace {

constexpr int TareCharacters = 17;  // "-179.994506668294"; the other boxes are as wide

}  // namespace

void Angles::Build() {
  for (std::size_t i = 0; i < axes_.size(); ++i) axes_[i].row = &AngleRows[i];
  auto* boxes = new QVBoxLayout;
  boxes->setSpacing(12);
  boxes->addWidget(BuildBoxes("fraRawWord", "Raw Word", "counts", &Axis::word, &AngleRow::word));
  boxes->addWidget(BuildBoxes("fraTare", "Tare", "degrees", &Axis::tare, &AngleRow::tare));
  boxes->addWidget(BuildBoxes("fraAngles", "Angles", "degrees", &Axis::angle, &AngleRow::angle));
  boxes->addStretch();
  auto* columns = new QHBoxLayout;
  columns->setSpacing(12);
  columns->addLayout(boxes);
  for (auto& axis : axes_) columns->addWidget(BuildDial(axis), 1);
  for (const auto& row : AngleRows)
    Strips().AddStrip(row.strip, row.caption, "°", -row.fullScale, row.fullScale);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(12, 12, 12, 12);
  rows->setSpacing(12);
  rows->addLayout(columns, 5);
  rows->addWidget(&Strips(), 2);
}

QGroupBox* Angles::BuildBoxes(const char* name, const char* caption, const char* unit, QLineEdit* Axis::*box,
                              const char* AngleRow::*boxName) {
  auto* frame = MakeFrame(name, caption, this);
  auto* grid = new QGridLayout(frame);
  grid->setColumnStretch(2, 1);  // keeps the boxes aligned although the units differ in length
  for (auto& axis : axes_) {
    axis.*box = AddReading(*grid, {axis.row->*boxName, axis.row->caption, unit, TareCharacters}, frame);
  }
  return frame;
}

QGroupBox* Angles::BuildDial(Axis& axis) {
  auto* frame = MakeFrame(axis.row->frame, axis.row->caption, this);
  axis.dial = MakeDial(*axis.row, frame);
  axis.cmdTare =
      MakeButton(axis.row->cmdTare, axis.row->untareCaption, [this, &axis] { cmdTare_Click(axis); });
  auto* column = new QVBoxLayout(frame);
  column->addWidget(axis.dial, 1);
  column->addWidget(axis.cmdTare, 0, Qt::AlignHCenter);
  return frame;
}

}  // namespace bexlow::live
