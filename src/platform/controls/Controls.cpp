#include "platform/controls/Controls.h"

#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace bexlow::platform {

QGroupBox* MakeFrame(const char* name, const QString& caption, QWidget* parent) {
  auto* frame = new QGroupBox(caption, parent);
  frame->setObjectName(name);
  return frame;
}

QLabel* MakeLabel(const char* name, const QString& text, QWidget* parent, QWidget* buddy) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(buddy);
  return label;
}

QLineEdit* MakeTextBox(const char* name, const QString& accessibleName, QWidget* parent) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(name);
  box->setAccessibleName(accessibleName);
  return box;
}

QLineEdit* MakeReadOnlyBox(const char* name, const QString& accessibleName, QWidget* parent) {
  auto* box = MakeTextBox(name, accessibleName, parent);
  box->setReadOnly(true);
  QPalette ground;
  ground.setColor(QPalette::Base, Qt::transparent);
  box->setPalette(ground);
  QObject::connect(box, &QLineEdit::textChanged, box,
                   [box] { box->setCursorPosition(0); });  // shows the beginning
  return box;
}

Progress MakeProgress(const char* frame, const char* bar, const QString& caption, int maximum,
                      QWidget* parent) {
  Progress progress{MakeFrame(frame, caption, parent), new QProgressBar, new QHBoxLayout};
  progress.bar->setObjectName(bar);
  progress.bar->setAccessibleName(caption);
  progress.bar->setTextVisible(false);
  progress.bar->setRange(0, maximum);
  progress.bar->setValue(0);
  progress.frame->setLayout(progress.line);
  progress.line->addWidget(progress.bar, 1);
  return progress;
}

void Progress::Show(const QString& caption, double value) const {
  frame->setTitle(caption);
  bar->setValue(static_cast<int>(std::clamp(value, 0.0, static_cast<double>(bar->maximum()))));
}

QPixmap Drawing(const QString& resource, QSize size, double devicePixelRatio) {
  QPixmap pixmap(size * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(resource).render(&painter, QRectF({}, size));
  return pixmap;
}

QLabel* MakePicture(const char* name, const QString& resource, QSize size, QWidget* parent) {
  auto* picture = MakeLabel(name, "", parent);
  picture->setPixmap(Drawing(resource, size, parent->devicePixelRatioF()));
  return picture;
}

void SetPlainToolTip(QWidget* widget, const QString& text) {
  widget->setToolTip(text.isEmpty() ? text : "<span>" + text.toHtmlEscaped() + "</span>");
  widget->setAccessibleDescription(text);
}

}  // namespace bexlow::platform
