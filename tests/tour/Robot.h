// A user played by timers, who answers the boxes that open meanwhile with "Yes" or their usual button.
#pragma once

#include <QTest>
#include <QtWidgets>

#include <iostream>

#include "rig/Rig.h"
#include "support/Find.h"

namespace bexlow::tour {

using rig::Require;

constexpr int PatienceMs = 60'000;  // for any step: on a busy machine all take longer
constexpr int BoxStandsMs = 250;    // long enough to be painted

class Robot {
 public:
  Robot(shell::MDIForm1& outer, std::filesystem::path output) : outer_(outer), output_(std::move(output)) {
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { Watch(); });
    watch_.start(20);
  }

  /// Does step after step:
  /// - "Tools > Download" chooses an entry once it is offered
  /// - "press: OK" presses a button once it is enabled
  /// - "key: Ctrl+F11"
  /// - "screen: Main" waits until this screen is in front
  /// - "box: Write completed!" waits until a box with this beginning has been shown since the last such step
  /// - "rest: 300" milliseconds
  /// - "picture: main", of the outer window and what lies above it, and one of the small window
  void Do(std::initializer_list<QString> steps) {
    for (const auto& step : steps) {
      std::cout << step.toStdString() << std::endl;
      DoOne(step.section(": ", 0, 0), step.section(": ", 1));
    }
  }
  void WaitUntil(const QString& what, const std::function<bool()>& condition) {
    Require(QTest::qWaitFor(condition, PatienceMs), "in vain waited for: " + what.toStdString());
  }
  /// Takes a picture, under this name, of the next box whose text begins so.
  void PictureOfBox(const QString& text, const QString& name) {
    pictured_ = text;
    pictureName_ = name;
  }
  void NextFile(const std::filesystem::path& path) { nextFile_ = path; }

 private:
  void DoOne(const QString& verb, const QString& what) {
    if (verb == "press") return Press(what);
    if (verb == "key") return Key(QKeySequence(what)[0]);
    if (verb == "rest") return QTest::qWait(what.toInt());
    if (verb == "picture") return Picture(what);
    const auto name = [](auto* form) { return form == nullptr ? "" : form->Name(); };
    const auto inFront = [&] { return name(platform::Form::Active()) == what.toStdString(); };
    if (verb == "screen") return WaitUntil(what, inFront);
    if (verb != "box") return Choose(verb.section(" > ", 0, 0), verb.section(" > ", 1));
    const auto begins = [&](const QString& box) { return box.startsWith(what); };
    WaitUntil("the box " + what, [&] { return std::ranges::any_of(boxes_, begins); });
    boxes_.clear();
  }
  void Choose(const QString& menu, const QString& entry) {
    const auto find = [&] { return test::FindEntry(outer_, menu, entry); };
    WaitUntil("the entry " + entry, [&] { return test::IsOffered(find()); });
    find()->trigger();
    QTest::qWait(50);
  }
  void Press(const QString& caption) {
    QPushButton* button = nullptr;
    WaitUntil("the button " + caption, [&] {
      button = test::FindButton(caption);
      return button != nullptr && button->isEnabled();
    });
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::qWait(50);
  }
  void Key(QKeyCombination keys) {
    auto* form = platform::Form::Active();
    Require(QTest::qWaitForWindowActive(form->window()), "the window did not get the keyboard");
    auto* where = form->focusWidget() != nullptr ? form->focusWidget() : form;
    QTest::keyClick(where, keys.key(), keys.keyboardModifiers());
    QTest::qWait(50);
  }
  void Picture(const QString& name) {
    Grab(name);
    const auto size = outer_.size();
    outer_.resize(800, 600);
    QTest::qWait(200);
    Grab(name + "-small");
    outer_.resize(size);
    QTest::qWait(200);
  }
  void Grab(const QString& name) {
    const QRect frame = outer_.frameGeometry();
    const auto pixmap = outer_.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
    const auto path = output_ / (name.toStdString() + ".png");
    Require(pixmap.save(path.c_str()), "cannot write " + path.string());
  }
  void Watch() {
    auto* top = QApplication::activeModalWidget();
    if (std::exchange(seen_, top) != top) shown_.start();
    if (top == nullptr || shown_.elapsed() < BoxStandsMs) return;
    if (auto* box = qobject_cast<QMessageBox*>(top)) AnswerBox(*box);
    if (auto* dialog = qobject_cast<QFileDialog*>(top)) AnswerFile(*dialog);
  }
  void AnswerBox(QMessageBox& box) {
    boxes_ << box.text();
    std::cout << "  box: " << box.text().section('\r', 0, 0).toStdString() << std::endl;
    if (!pictured_.isEmpty() && box.text().startsWith(pictured_)) {
      Grab(pictureName_);
      pictured_.clear();
    }
    QAbstractButton* button = box.button(QMessageBox::Yes);
    if (button == nullptr) button = box.defaultButton();
    seen_ = nullptr;
    button->click();
  }
  void AnswerFile(QFileDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (name == nullptr || nextFile_.empty()) return dialog.reject();
    name->setText(QString::fromStdString(nextFile_.string()));
    nextFile_.clear();
    seen_ = nullptr;
    QTest::keyClick(name, Qt::Key_Return);
  }

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
