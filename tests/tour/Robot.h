// A user played by timers: chooses, presses, types, answers the boxes that open meanwhile with "Yes" or their
// usual button, and takes pictures.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <initializer_list>

#include "rig/Rig.h"
#include "support/Find.h"

class QFileDialog;
class QMessageBox;

namespace bexlow::tour {

using rig::Require;

class Robot {
 public:
  Robot(shell::MDIForm1& outer, std::filesystem::path output);

  /// Does step after step:
  /// - "Tools > Download" chooses an entry once it is offered
  /// - "press: OK" presses a button once it is enabled
  /// - "key: Ctrl+F11"
  /// - "screen: Main" waits until this screen is in front
  /// - "box: Write completed!" waits until a box with this beginning has been shown since the last such step
  /// - "rest: 300" milliseconds
  /// - "picture: main", of the outer window and what lies above it, and one of the small window
  void Do(std::initializer_list<QString> steps);
  /// Lets the program run until a condition holds.
  void WaitUntil(const QString& what, const std::function<bool()>& condition);
  /// Takes a picture, under this name, of the next box whose text begins so.
  void PictureOfBox(const QString& text, const QString& name);
  void NextFile(const std::filesystem::path& path) { nextFile_ = path; }

 private:
  void DoOne(const QString& verb, const QString& what);
  void Choose(const QString& menu, const QString& entry);
  void Press(const QString& caption);
  void Key(QKeyCombination keys);
  void Picture(const QString& name);
  void Grab(const QString& name);
  void Watch();
  void AnswerBox(QMessageBox& box);
  void AnswerFile(QFileDialog& dialog);

  shell::MDIForm1& outer_;
  std::filesystem::path output_;
  QTimer watch_;
  QElapsedTimer shown_;  ///< since the box on top was first seen
  QWidget* seen_ = nullptr;
  QString pictured_, pictureName_;
  std::filesystem::path nextFile_;
  QStringList boxes_;
};

}  // namespace bexlow::tour
