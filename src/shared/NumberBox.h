// Numbers in text boxes.
#pragma once

#include <QLineEdit>
#include <QString>

#include "values/NumberText.h"

namespace bexlow::shared {

/// A number as a text box shows it.
inline QString Shown(double number) { return QString::fromStdString(values::PlainNumberText(number)); }

/// The leading number of a box's text; an empty box counts as 0.
inline double NumberIn(const QLineEdit& box) { return values::LeadingNumber(box.text().toStdString()); }

}  // namespace bexlow::shared
