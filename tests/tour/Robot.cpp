#include "tour/Robot.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <iostream>

namespace bexlow::tour {

namespace {

constexpr int PatienceMs = 60'000;  // for any step: on a busy machine all take longer
constexpr int BoxStandsMs = 250;    // long enough to be painted

}  // namespace

Robot::Robot(shell::MDIForm1& outer, std::filesystem::path output)
    : outer_(outer), output_(std::move(output)) {
  QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { Watch(); });
  watch_.start(20);
}

void Robot::Watch() {
  auto* top = QApplication::activeModalWidget();
  if (top != seen_) {
    seen_ = top;
    shown_.start();
  }
  if (top == nullptr || shown_.elapsed() < BoxStandsMs) return;
  if (auto* box = qobject_cast<QMessageBox*>(top)) AnswerBox(*box);
  if (auto* dialog = qobject_cast<QFileDialog*>(top)) AnswerFile(*dialog);
}

void Robot::AnswerBox(QMessageBox& box) {
  boxes_.push_back(box.text().toStdString());
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

void Robot::AnswerFile(QFileDialog& dialog) {
  auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
  if (name == nullptr || nextFile_.empty()) return dialog.reject();
  name->setText(QString::fromStdString(nextFile_.string()));
  nextFile_.clear();
  seen_ = nullptr;
  QTest::keyClick(name, Qt::Key_Return);
}

void Robot::Choose(const QString& menu, const QString& entry) {
  std::cout << menu.toStdString() << ", " << entry.toStdString() << std::endl;
  WaitUntil("the entry " + entry.toStdString(), [&] { return Offers(menu, entry); });
  test::FindEntry(outer_, menu, entry)->trigger();
  Rest(50);
}

void Robot::Press(const QString& caption) {
  std::cout << "press " << caption.toStdString() << std::endl;
  QPushButton* button = nullptr;
  WaitUntil("the button " + caption.toStdString(), [&] {
    button = test::FindButton(caption);
    return button != nullptr && button->isEnabled();
  });
  QTest::mouseClick(button, Qt::LeftButton);
  Rest(50);
}

void Robot::Mark(const char* name) {
  The<QRadioButton>(name).click();
  Rest(50);
}

void Robot::Type(const char* name, const QString& text) {
  auto& box = The<QLineEdit>(name);
  box.selectAll();
  QTest::keyClicks(&box, text);
}

void Robot::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  auto* form = platform::Form::Active();
  Require(QTest::qWaitForWindowActive(form->window()), "the window did not get the keyboard");
  QTest::keyClick(form->focusWidget() != nullptr ? form->focusWidget() : form, key, modifiers);
  Rest(50);
}

void Robot::Rest(int ms) {
  QTest::qWait(ms);
}

void Robot::WaitUntil(const std::string& what, const std::function<bool()>& condition) {
  Require(QTest::qWaitFor(condition, PatienceMs), "in vain waited for: " + what);
}

void Robot::Picture(const std::string& name) {
  Grab(name);
  const auto size = outer_.size();
  outer_.resize(800, 600);
  Rest(200);
  Grab(name + "-small");
  outer_.resize(size);
  Rest(200);
}

void Robot::Grab(const std::string& name) {
  const QRect frame = outer_.frameGeometry();
  const auto pixmap = outer_.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
  const auto path = output_ / (name + ".png");
  Require(pixmap.save(QString::fromStdString(path.string())), "cannot write " + path.string());
}

void Robot::PictureOfBox(const QString& text, const std::string& name) {
  pictured_ = text;
  pictureName_ = name;
}

void Robot::ExpectBox(const std::string& text) {
  const auto begins = [&](const std::string& box) { return box.starts_with(text); };
  WaitUntil("the box " + text, [&] { return std::ranges::any_of(boxes_, begins); });
  boxes_.clear();
}

std::string Robot::Screen() const {
  const auto* form = platform::Form::Active();
  return form == nullptr ? "" : form->Name();
}

std::string Robot::Text(const char* name) const {
  return The<QWidget>(name).property("text").toString().toStdString();
}

}  // namespace bexlow::tour
