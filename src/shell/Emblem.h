// The program's mark, drawn: a logger that leans by an angle against the upright.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace bexlow::shell {

/// The mark on a transparent ground.
QPixmap DrawEmblem(int side, double devicePixelRatio);

/// A run of angles between two rules, as wide as it is asked to be; a decoration too.
class Trace : public QWidget {
  Q_OBJECT

 public:
  Trace(const char* name, QSize size, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// The mark as a decoration of a screen; nothing to read for a screen reader.
class Emblem : public QWidget {
  Q_OBJECT

 public:
  Emblem(const char* name, int side, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int side_;
};

}  // namespace bexlow::shell
