// The program's emblem: a logger that leans at an angle to a vertical line.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace bexlow::shell {

/// The emblem on a transparent background.
QPixmap DrawEmblem(int side, double devicePixelRatio);

/// A decoration: a curve like a run of angles, between two horizontal lines.
class Trace : public QWidget {
  Q_OBJECT

 public:
  Trace(const char* name, QSize size, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// A decoration: the emblem in a screen. Screen readers skip it.
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
