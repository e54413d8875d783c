#include "live/Readings.h"

#include "shared/Records.h"
#include "values/Conversions.h"

namespace bexlow::live {

QLineEdit* AddReading(QGridLayout& grid, const char* name, const char* caption, const char* unit,
                      QWidget* parent, int characters) {
  auto* box = platform::MakeReadOnlyBox(name, caption, parent);
  box->setAlignment(Qt::AlignRight);
  box->setFixedWidth(box->fontMetrics().horizontalAdvance('0') * characters + 24);
  const int row = grid.rowCount();
  grid.addWidget(platform::MakeLabel("", caption, parent, box), row, 0);
  grid.addWidget(box, row, 1);
  grid.addWidget(new QLabel(QString::fromUtf8(unit), parent), row, 2);
  return box;
}

void AddRow(QGridLayout& grid, const char* caption, QWidget* box, QLayout* boxes) {
  const int row = grid.rowCount();
  grid.addWidget(platform::MakeLabel("", caption, grid.parentWidget(), box), row, 0);
  if (boxes == nullptr) return grid.addWidget(box, row, 1, 1, SpanOfBox);
  grid.addLayout(boxes, row, 1, 1, SpanOfBox);
}

QLayout* AddNumbers(std::array<QLineEdit*, 4>& boxes, const QString& name, const QString& caption,
                    bool readOnly, QWidget* parent) {
  auto* row = new QHBoxLayout;
  row->setSpacing(4);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const QString number = QString::number(i + 1);
    const auto make = readOnly ? platform::MakeReadOnlyBox : platform::MakeTextBox;
    boxes[i] = make((name + number).toLatin1().constData(), caption + " " + number, parent);
    boxes[i]->setFixedWidth(boxes[i]->fontMetrics().horizontalAdvance("000") + 16);
    if (i > 0) row->addWidget(new QLabel(".", parent));
    row->addWidget(boxes[i]);
  }
  row->addStretch();
  return row;
}

platform::CWKnob* MakeDial(const AngleRow& row, QWidget* parent) {
  auto* dial = new platform::CWKnob(parent, row.dialEnd, row.dialArc);
  dial->setObjectName(row.dial);
  dial->setAccessibleName(row.caption);
  return dial;
}

// From 180 on a jump is a crossing of +-180; Y has no jumps like that.
void AddAngleStrips(LiveStrips& strips) {
  constexpr double Crossing = 180;
  for (const auto& row : AngleRows)
    strips.AddStrip(row.strip, row.caption, "°", -row.fullScale, row.fullScale, Crossing);
}

void TakeAngles(const link::AnglePair& words, LiveStrips& strips) {
  auto& sample = shared::Shared.LiveSample;
  for (std::size_t i = 0; const auto& row : AngleRows) {
    const double word = words.*row.received;
    sample.*row.wordField = values::SignedSampleWord(word);
    strips.Add(i++, sample.*row.angleField = values::SampleWordToAngle(word, row.fullScale));
  }
}

}  // namespace bexlow::live
