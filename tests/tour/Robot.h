// A user played by timers: chooses, presses, types, answers the boxes that open meanwhile with "Yes" or their
// usual button, and takes pictures.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "rig/Rig.h"
#include "shell/MDIForm1.h"
#include "support/Find.h"

class QFileDialog;
class QMessageBox;

namespace bexlow::tour {

using rig::Require;

class Robot {
 public:
  Robot(shell::MDIForm1& outer, std::filesystem::path output);

  void Choose(const QString& menu, const QString& entry);
  void Press(const QString& caption);
  /// Clicks an option.
  void Mark(const char* name);
  void Type(const char* name, const QString& text);
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  /// Lets the program run until a condition holds.
  void WaitUntil(const std::string& what, const std::function<bool()>& condition);
  void Rest(int ms);
  /// A picture of the outer window and what lies above it, and one of the small window.
  void Picture(const std::string& name);
  /// Takes a picture, under this name, of the next box whose text begins so.
  void PictureOfBox(const QString& text, const std::string& name);

  void NextFile(const std::filesystem::path& path) { nextFile_ = path; }
  /// Waits until a box with this beginning has been shown since the last call.
  void ExpectBox(const std::string& text);

  std::string Screen() const;
  template <class T>
  T& The(const char* name) const {
    return test::FindControl<T>(name);
  }
  std::string Text(const char* name) const;
  bool Offers(const QString& menu, const QString& entry) const {
    return test::IsOffered(test::FindEntry(outer_, menu, entry));
  }

 private:
  void Grab(const std::string& name);
  void Watch();
  void AnswerBox(QMessageBox& box);
  void AnswerFile(QFileDialog& dialog);

  shell::MDIForm1& outer_;
  std::filesystem::path output_;
  QTimer watch_;
  QElapsedTimer shown_;  ///< since the box on top was first seen
  QWidget* seen_ = nullptr;
  QString pictured_;
  std::string pictureName_;
  std::filesystem::path nextFile_;
  std::vector<std::string> boxes_;
};

}  // namespace bexlow::tour
