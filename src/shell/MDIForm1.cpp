#include "shell/MDIForm1.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTabBar>

#include "live/Conversions.h"
#include "live/NumberText.h"
#include "platform/Form.h"
#include "platform/Machine.h"
#include "platform/ProgramVersion.h"
#include "platform/RunningCopy.h"
#include "platform/Settings.h"
#include "shell/ErrorHandler.h"
#include "shell/General.h"
#include "shell/Records.h"

namespace bexlow::shell {

using platform::Form;

MDIForm1::MDIForm1() : area_(new QMdiArea(this)) {
  setObjectName("MDIForm1");
  setWindowTitle("Quornell Bexlow");
  resize(1120, 760);
  area_->setViewMode(QMdiArea::TabbedView);
  area_->setDocumentMode(true);
  if (auto* tabs = area_->findChild<QTabBar*>()) tabs->setExpanding(false);
  setCentralWidget(area_);
  connect(area_, &QMdiArea::subWindowActivated, this, &MDIForm1::OnActivated);
}

MDIForm1::~MDIForm1() {
  disconnect(area_, nullptr, this, nullptr);
}

bool MDIForm1::Load() {
  bool first = true;
  GuardedIn("MDIForm1", "MDIForm_Load", [&] {
    runningCopy_ = std::make_unique<platform::RunningCopy>();
    if (runningCopy_->AnotherRuns()) {
      first = false;
      return platform::MsgBox("The program is already running!");
    }
    Shared.SampleClock.CounterFrequency = platform::Machine::Get().QueryPerformanceFrequency();
    Shared.ProgramVersionText = platform::ProgramVersion();
    Shared.MaxDownloadPages = 2048;
    const auto stored = platform::GetSetting("Startup", "CurrentCommPort", "1");
    Shared.CurrentCommPort = live::ToInt16(live::LeadingNumber(stored));
    TestForFileFolders();
  });
  return first;
}

QMdiSubWindow* MDIForm1::WindowOf(const Form* child) const {
  for (auto* window : area_->subWindowList()) {
    if (window->widget() == child) return window;
  }
  return nullptr;
}

Form* MDIForm1::Child(const QString& name) const {
  for (auto* window : area_->subWindowList()) {
    auto* child = qobject_cast<Form*>(window->widget());
    if (child != nullptr && !child->Unloaded() && child->objectName() == name) return child;
  }
  return nullptr;
}

void MDIForm1::ShowChild(Form* child) {
  auto* window = WindowOf(child);
  if (window == nullptr) {
    window = area_->addSubWindow(child);
    window->setWindowTitle(child->windowTitle());
    connect(child, &Form::Left, this, [this, child] { OnLeft(child); });
    child->show();
  }
  area_->setActiveSubWindow(window);
  window->showMaximized();
  OnActivated(window);
}

void MDIForm1::OnActivated(QMdiSubWindow* window) {
  auto* child = window == nullptr ? nullptr : qobject_cast<Form*>(window->widget());
  if (child == nullptr || child->Unloaded() || child == Form::ActiveChild()) return;
  Form::ActiveChild(child);
  menuBar()->clear();
  for (auto* menu : child->Menus()) menuBar()->addMenu(menu);
  child->setFocus();
  child->Activated();
}

void MDIForm1::OnLeft(Form* child) {
  if (auto* window = WindowOf(child)) {
    window->setWidget(nullptr);
    area_->removeSubWindow(window);
    window->deleteLater();
  }
  if (auto* main = Child("Main")) ShowChild(main);
}

}  // namespace bexlow::shell
