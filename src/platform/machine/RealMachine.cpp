#include "platform/machine/RealMachine.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QTimer>
#include <QToolTip>
#include <QTreeView>
#include <QUrl>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <poll.h>
#include <unistd.h>
#include <utility>

#include "platform/machine/Ports.h"

namespace bexlow::platform {

namespace {

using namespace std::chrono;

// A wait ends with a busy loop of this length, since waking from a sleep takes some 50 microseconds.
constexpr microseconds Spin{100};

class RealAlarm : public Alarm {
 public:
  explicit RealAlarm(std::function<void()> tick) {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, std::move(tick));
  }
  void Start(milliseconds interval) override { timer_.start(interval); }
  void Stop() override { timer_.stop(); }

 private:
  QTimer timer_;
};

struct BoxLook {
  QMessageBox::StandardButtons buttons;
  QMessageBox::StandardButton usual, escape;
  QMessageBox::Icon icon;
};

// In the order of Buttons. Escape never ends the program: in the error box it stands for Retry.
constexpr BoxLook Looks[] = {
    {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Information},
    {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No, QMessageBox::Question},
    {QMessageBox::Yes | QMessageBox::No, QMessageBox::No, QMessageBox::No, QMessageBox::Question},
    {QMessageBox::Retry | QMessageBox::Cancel, QMessageBox::Retry, QMessageBox::Retry, QMessageBox::Critical},
};

// The parent of the boxes, even while another program is in front and no window of this one is active.
QWidget* WindowOnTop() {
  if (auto* modal = QApplication::activeModalWidget()) return modal;
  const auto windows = QApplication::topLevelWidgets();
  const auto outer = std::ranges::find_if(windows, [](const auto* window) {
    return window->isVisible() && qobject_cast<const QMainWindow*>(window) != nullptr;
  });
  return outer == windows.end() ? nullptr : *outer;
}

// "words (pattern)|pattern|words (pattern)|pattern" in Qt's form, which is the words. Qt's *.* would hide
// names without a dot, so it becomes *.
QStringList NameFilters(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).replace("*.*", "*").split('|');
  QStringList filters;
  for (qsizetype i = 0; i < parts.size(); i += 2) filters << parts[i];
  return filters;
}

// A name without a suffix gets that of the filter on show. Without a default suffix it is taken as typed.
void LetFilterGiveSuffix(QFileDialog& dialog, const QString& defaultSuffix) {
  if (defaultSuffix.isEmpty()) {
    if (dialog.acceptMode() == QFileDialog::AcceptSave)
      dialog.setLabelText(QFileDialog::FileName, "File &name, with .qbx:");
    return;
  }
  const auto follow = [&dialog, defaultSuffix](const QString& nameFilter) {
    const auto suffix = nameFilter.section("*.", 1).remove(')');  // of "words (*.png)"
    dialog.setDefaultSuffix(suffix.isEmpty() ? defaultSuffix : suffix);
  };
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
  follow(dialog.selectedNameFilter());
}

// The dialog takes quoted names for several and drops what stands outside of the quotes.
void RefuseQuotes(QFileDialog& dialog) {
  auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
  name->setValidator(new QRegularExpressionValidator(QRegularExpression("[^\"]*"), name));
  QObject::connect(name, &QLineEdit::inputRejected, name, [name] {
    QToolTip::showText(name->mapToGlobal(QPoint()), "A name cannot hold a quotation mark", name);
  });
}

// With all of size and date to be read.
void ShowNewestFirst(QFileDialog& dialog) {
  constexpr int DateColumn = 3;
  dialog.setViewMode(QFileDialog::Detail);
  auto* files = dialog.findChild<QTreeView*>("treeView");
  files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  files->sortByColumn(DateColumn, Qt::DescendingOrder);
  dialog.resize(QSize(880, 520).boundedTo(dialog.screen()->availableSize() * 0.9));
}

}  // namespace

// With the signal ignored, a write beyond the user's file size limit fails like one on a full disk.
RealMachine::RealMachine(std::filesystem::path programFolder) : programFolder_(std::move(programFolder)) {
  std::signal(SIGXFSZ, SIG_IGN);
}

LocalTime RealMachine::Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return {
      local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec, now};
}

void RealMachine::Idle(microseconds atMost) {
  if (atMost > Spin) {
    std::vector<pollfd> handles;
    for (const auto* device : open_) handles.push_back({device->Handle(), POLLIN, 0});
    const auto nap = duration_cast<nanoseconds>(std::min<microseconds>(atMost - Spin, milliseconds(2)));
    const timespec limit{0, static_cast<long>(nap.count())};
    ppoll(handles.data(), handles.size(), &limit, nullptr);
  }
  for (auto* device : open_) device->Collect();
}

void RealMachine::Repaint() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

PortInfo RealMachine::DescribePort(int comm) {
  const auto device = DeviceOfComm(comm, programFolder_);
  if (device.empty()) return {};
  const auto line = "/sys/class/tty" / device.filename();
  std::error_code ignored;
  if (::access(device.c_str(), R_OK | W_OK) != 0) return {device.string(), WhyNoOpening(errno)};
  if (!IsPseudoTerminal(device) && !std::filesystem::exists(line, ignored))
    return {device.string(), NoSuchDevice};
  return {device.string(), AdapterWords(line / "device")};
}

std::unique_ptr<SerialLine> RealMachine::OpenSerial(int comm, std::function<void(Bytes)> received) {
  const std::string label = "Comm " + std::to_string(comm);
  const auto device = DeviceOfComm(comm, programFolder_);
  if (device.empty()) Throw(std::errc::no_such_device, label + ": no such port");
  return std::make_unique<SerialDevice>(open_, label, device, std::move(received));
}

std::unique_ptr<Alarm> RealMachine::MakeAlarm(std::function<void()> tick) {
  return std::make_unique<RealAlarm>(std::move(tick));
}

Answer RealMachine::Ask(const std::string& text, Buttons buttons) {
  const auto& look = Looks[static_cast<std::size_t>(buttons)];
  QMessageBox box(look.icon, "Bexlow", QString::fromStdString(text), look.buttons, WindowOnTop());
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(look.usual);
  box.setEscapeButton(look.escape);
  static const std::map<int, Answer> Answers{{QMessageBox::Yes, Answer::Yes},
                                             {QMessageBox::No, Answer::No},
                                             {QMessageBox::Retry, Answer::Retry},
                                             {QMessageBox::Cancel, Answer::Cancel}};
  const auto answer = Answers.find(box.exec());
  return answer == Answers.end() ? Answer::Ok : answer->second;
}

std::optional<std::string> RealMachine::AskFile(const CommonDialog& question) {
  QFileDialog dialog(WindowOnTop(), question.Saves ? "Save As" : "Open");
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setAcceptMode(question.Saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(question.Saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, (question.Flags & OverwritePrompt) == 0);
  dialog.setDirectory(QString::fromStdString(question.InitDir));
  const QStringList filters = NameFilters(question.Filter);
  dialog.setNameFilters(filters);
  dialog.selectNameFilter(filters.value(question.FilterIndex - 1));
  LetFilterGiveSuffix(dialog, QString::fromStdString(question.DefaultExt));
  if (!question.SuggestedName.empty()) dialog.selectFile(QString::fromStdString(question.SuggestedName));
  if (question.Saves) RefuseQuotes(dialog);
  ShowNewestFirst(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.selectedFiles().value(0).toStdString();
}

bool RealMachine::OpenDocument(const std::filesystem::path& file) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file.string())));
}

void RealMachine::EndProgram() { ::_exit(0); }

}  // namespace bexlow::platform
