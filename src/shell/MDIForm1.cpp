#include "shell/MDIForm1.h"

#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QScrollArea>
#include <QShortcut>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>
#include <utility>

#include "platform/machine/EventGate.h"
#include "platform/machine/Ports.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "shared/Screens.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::shell {

using namespace platform;

namespace {

std::vector<std::string> LocalFiles(const QDropEvent& event) {
  std::vector<std::string> paths;
  for (const auto& url : event.mimeData()->urls()) {
    if (url.isLocalFile()) paths.push_back(url.toLocalFile().toStdString());
  }
  return paths;
}

// If the drop counted as a move, the program that the file comes from would delete it.
void AcceptCopy(QDropEvent& event) {
  event.setDropAction(Qt::CopyAction);
  event.accept();
}

// Asks before an exchange with the logger ends: it may have run for an hour.
bool MayEnd(const Form* engaged, const char* question) {
  if (engaged == nullptr) return true;
  const auto activity = engaged->Doing().Text();
  return AskToConfirm("The screen \"" + engaged->windowTitle().toStdString() + "\" is using the logger.\r\n" +
                      (activity.empty() ? "" : activity + ".\r\n") + question);
}

constexpr std::chrono::milliseconds RefreshEvery{250};
constexpr int Indent = 16;
constexpr int Margins = 64;  // of the bar and its three labels

int Need(const QLabel& label, const std::string& text) {
  return label.fontMetrics().horizontalAdvance(QString::fromStdString(text)) + 1;
}

// A text that is too long loses its middle: its end tells why something failed, or how much is saved.
void SetText(QLabel& label, const std::string& text, int width) {
  const auto whole = QString::fromStdString(text);
  const auto shown = label.fontMetrics().elidedText(whole, Qt::ElideMiddle, width);
  if (label.text() == shown) return;
  label.setText(shown);
  SetPlainToolTip(&label, whole);
}

}  // namespace

StatusLine::StatusLine(QStatusBar& bar)
    : bar_(bar),
      lblConnection(MakeLabel("lblConnection", "", &bar)),
      lblActivity(MakeLabel("lblActivity", "", &bar)),
      lblFailure(MakeLabel("lblFailure", "", &bar)),
      alarm_(Machine::Get().MakeAlarm([this] {
        EventGate::Get().Offer(this, {nullptr, "StatusLine_Timer"}, [this] { Refresh(); });
      })) {
  bar.setSizeGripEnabled(false);
  bar.setContentsMargins(8, 0, 8, 2);
  bar.addWidget(lblConnection);
  bar.addWidget(lblActivity, 1);
  lblActivity->setIndent(Indent);
  bar.addPermanentWidget(lblFailure);
  for (auto* label : {lblActivity, lblFailure})
    label->setMinimumWidth(1);  // a long text must not widen the window
  alarm_->Start(RefreshEvery);
}

StatusLine::~StatusLine() { EventGate::Get().Withdraw(this); }

void StatusLine::Connection(const std::string& text) {
  connection_ = text;
  device_ = Machine::Get().DescribePort(shared::Shared.CurrentCommPort).device;
  TellConnection();
}

void StatusLine::TellConnection() {
  const int comm = shared::Shared.CurrentCommPort;
  std::string text = connection_;
  if (text.starts_with("Connected")) {
    const auto [device, description] = Machine::Get().DescribePort(comm);
    const auto port = "Comm " + std::to_string(comm);
    text = description == NoSuchDevice ? "The adapter of " + port + " is gone"
           : device != device_         ? port + " leads to " + device + " now"
                                       : text + ", " + device;
  }
  SetText(*lblConnection, text, QWIDGETSIZE_MAX);
}

// A screen reader reads each new phase, but not each number: Qt does not announce a changed text of a label
// that has an accessible name. What both texts need beyond the free width is taken from the longer one.
void StatusLine::Refresh() {
  const auto* engaged = Form::OtherEngaged();
  const auto* told = engaged != nullptr ? engaged : Form::Active();
  const auto current = told == nullptr ? Activity{} : told->Doing();
  const auto activity = current.Text();
  if (current.phase != phase_) lblActivity->setAccessibleName(QString::fromStdString(phase_ = current.phase));
  if (auto font = lblActivity->font(); font.bold() != current.warns) {
    font.setBold(current.warns);
    lblActivity->setFont(font);
  }
  const auto& failure = shared::Shared.LastFailure;
  // A failure may come of an adapter that was pulled out, and an exchange may open another one.
  const bool isNew = std::exchange(failure_, failure) != failure;
  if (std::exchange(engaged_, engaged) != engaged || isNew) TellConnection();
  const int free = bar_.width() - lblConnection->width() - Margins;
  const int forFailure =
      std::min(Need(*lblFailure, failure), std::max(free / 2, free - Need(*lblActivity, activity)));
  SetText(*lblActivity, activity, free - forFailure);
  SetText(*lblFailure, failure, forFailure);
}

MDIForm1::MDIForm1() : tabs_(new QTabWidget(this)), status_(*statusBar()) {
  setObjectName("MDIForm1");
  setWindowTitle("Quornell Bexlow");
  const QSize frame(16, 48);  // what a window manager adds, roughly
  resize(QSize(1120, 760).boundedTo(screen()->availableSize() - frame));
  tabs_->setDocumentMode(true);
  tabs_->tabBar()->setExpanding(false);
  tabs_->setTabsClosable(true);
  setCentralWidget(tabs_);
  setAcceptDrops(true);
  connect(tabs_, &QTabWidget::currentChanged, this, &MDIForm1::OnActivated);
  connect(tabs_, &QTabWidget::tabCloseRequested, this, &MDIForm1::AskToClose);
  shared::GuardHandlers();
  auto* close = new QShortcut(QKeySequence::Close, this);
  close->setAutoRepeat(false);
  connect(close, &QShortcut::activated, this, [this] { AskToClose(tabs_->currentIndex()); });
  auto* manual = new QShortcut(shared::ManualKey, this);
  manual->setAutoRepeat(false);
  connect(manual, &QShortcut::activated, this, [this] {
    EventGate::Get().Click(
        this, [this] { ShowManual(); }, "MDIForm_KeyDown");
  });
}

// Screens end before their controls do, even when the whole window ends.
MDIForm1::~MDIForm1() {
  disconnect(tabs_, nullptr, this, nullptr);
  EventGate::Get().Withdraw(this);
  for (auto* form : findChildren<Form*>()) {
    disconnect(form, nullptr, this, nullptr);
    form->Unload();
  }
}

bool MDIForm1::Load() {
  bool first = true;
  shared::GuardedIn("MDIForm1", "MDIForm_Load", [&] {
    runningCopy_ = std::make_unique<RunningCopy>();
    if (runningCopy_->AnotherRuns()) {
      first = false;
      return MsgBox("The program is already running!");
    }
    shared::Shared.SampleClock.CounterFrequency = Machine::Get().QueryPerformanceFrequency();
    shared::Shared.ProgramVersionText = ProgramVersion();
    shared::Shared.MaxDownloadPages = 2048;
    const auto stored = GetSetting("Startup", "CurrentCommPort", "1");
    shared::Shared.CurrentCommPort = values::ToInt16(values::LeadingNumber(stored));
    shared::TestForFileFolders();
  });
  return first;
}

void MDIForm1::dragEnterEvent(QDragEnterEvent* event) {
  if (!LocalFiles(*event).empty()) AcceptCopy(*event);
}

void MDIForm1::dropEvent(QDropEvent* event) {
  const auto paths = LocalFiles(*event);
  AcceptCopy(*event);
  // The program that the files come from waits for the end of this event.
  EventGate::Get().Offer(this, {nullptr, "MDIForm_Drop"}, [this, paths] {
    if (!paths.empty() && OnFilesDropped) OnFilesDropped(paths);
  });
}

Form* MDIForm1::ChildAt(int tab) const {
  const auto* page = qobject_cast<QScrollArea*>(tabs_->widget(tab));
  return page == nullptr ? nullptr : qobject_cast<Form*>(page->widget());
}

Form* MDIForm1::Child(const QString& name) const {
  for (int tab = 0; tab < tabs_->count(); ++tab) {
    auto* child = ChildAt(tab);
    if (child != nullptr && !child->Unloaded() && child->objectName() == name) return child;
  }
  return nullptr;
}

int MDIForm1::TabOf(const Form* child) const {
  int tab = tabs_->count() - 1;
  while (tab >= 0 && ChildAt(tab) != child) --tab;
  return tab;
}

// A screen scrolls where window and letters leave it too little room.
void MDIForm1::ShowChild(Form* child) {
  if (TabOf(child) < 0) {
    auto* page = new QScrollArea;
    page->setWidgetResizable(true);
    page->setFrameShape(QFrame::NoFrame);
    page->setFocusPolicy(Qt::NoFocus);
    page->setWidget(child);
    const int tab = tabs_->addTab(page, child->windowTitle());
    connect(child, &QObject::destroyed, page, &QObject::deleteLater);
    connect(child, &Form::Left, this, [this, child] { OnLeft(child); });
    connect(child, &Form::ActivityChanged, this, [this] { status_.Refresh(); });
    if (!child->OnCloseRequest) tabs_->tabBar()->setTabButton(tab, QTabBar::RightSide, nullptr);
  }
  tabs_->setCurrentIndex(TabOf(child));
  OnActivated(tabs_->currentIndex());
}

void MDIForm1::AskToClose(int tab) {
  auto* child = ChildAt(tab);
  if (child == nullptr || !child->OnCloseRequest) return;  // Main stays
  bool agreed = false;
  EventGate::Get().Click(
      this, [&] { agreed = MayEnd(child->Engaged() ? child : nullptr, "End it?"); }, "MDIForm_Close");
  if (agreed) child->close();
}

void MDIForm1::closeEvent(QCloseEvent* event) {
  bool agreed = false;
  EventGate::Get().Click(
      this, [&] { agreed = MayEnd(Form::OtherEngaged(), "End it, and the program?"); }, "MDIForm_Unload");
  event->setAccepted(agreed);
}

void MDIForm1::ShowManual() {
  auto& machine = Machine::Get();
  const auto manual = machine.ProgramFolder() / "manual.html";
  std::error_code ignored;
  if (!std::filesystem::exists(manual, ignored) || !machine.OpenDocument(manual)) MsgBox(ManualElsewhere);
}

void MDIForm1::OnActivated(int tab) {
  auto* child = ChildAt(tab);
  if (child == nullptr || child->Unloaded() || child == front_) return;
  front_ = child;
  menuBar()->clear();
  for (auto* menu : child->Menus()) menuBar()->addMenu(menu);
  child->Activated();
}

void MDIForm1::OnLeft(Form* child) {
  tabs_->removeTab(TabOf(child));
  if (auto* main = Child("Main")) ShowChild(main);
}

}  // namespace bexlow::shell
