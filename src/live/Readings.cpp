#include "live/Readings.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "platform/controls/Controls.h"

namespace bexlow::live {

QLineEdit* AddReading(QGridLayout& grid, const Reading& reading, QWidget* parent) {
  auto* box = platform::MakeReadOnlyBox(reading.name, reading.caption, parent);
  box->setAlignment(Qt::AlignRight);
  box->setFixedWidth(box->fontMetrics().horizontalAdvance('0') * reading.characters + 24);
  const int row = grid.rowCount();
  grid.addWidget(platform::MakeLabel("", reading.caption, parent, box), row, 0);
  grid.addWidget(box, row, 1);
  grid.addWidget(new QLabel(QString::fromUtf8(reading.unit), parent), row, 2);
  return box;
}

}  // namespace bexlow::live
