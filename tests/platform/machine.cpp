// The real machine: files, their dialog, the copy that runs, the serial control on a pseudo-terminal.

#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "logic/Expect.h"
#include "platform/Widgets.h"
#include "platform/controls/MSComm.h"
#include "platform/machine/Ports.h"
#include "platform/machine/RealMachine.h"
#include "platform/machine/System.h"

namespace bexlow::test {

using namespace platform;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

/// Whether something is so in another process, which ends as if it were killed.
bool InAnotherProcess(const std::function<bool()>& so) {
  const pid_t child = fork();
  if (child == 0) ::_exit(so() ? 0 : 1);
  int status = -1;
  ::waitpid(child, &status, 0);
  return status == 0;
}

struct Files : ::testing::Test {
  const QTemporaryDir temporary;
  const fs::path folder{temporary.path().toStdString()};
};

TEST_F(Files, NothingWaitsForTheOtherEndOfAPipe) {
  EXPECT_EQ(FailureOf([&] { platform::ReadWhole(folder / "none"); }).code, ENOENT);
  const auto pipe = folder / "x.qbx";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(FailureOf([&] { platform::ReadWhole(pipe); }).code, EINVAL);
  EXPECT_EQ(FailureOf([&] { platform::Append(pipe, "x"); }).code, ENXIO);
}

// A disk that fills up in the middle of a record must not leave half of it.
TEST_F(Files, APartOfARecordIsCutBack) {
  const auto path = folder / "full.qbx";
  platform::WriteWhole(path, "whole\r\n");
  EXPECT_TRUE(InAnotherProcess([&] {
    const platform::RealMachine machine(folder);  // without this object the signal ends the program
    const rlimit limit{10, 10};
    setrlimit(RLIMIT_FSIZE, &limit);
    return FailureOf([&] { platform::Append(path, "a record"); }).code == EFBIG;
  }));
  EXPECT_EQ(platform::ReadWhole(path), "whole\r\n");
}

TEST_F(Files, ACopyThatWasKilledLeavesNoLock) {
  const auto anotherRuns = [] { return platform::RunningCopy().AnotherRuns(); };
  EXPECT_TRUE(InAnotherProcess([&] {
    const platform::RunningCopy first;
    return !first.AnotherRuns() && InAnotherProcess(anotherRuns);
  }));
  EXPECT_FALSE(anotherRuns());
}

/// Goes so many filters down, types the name, and saves.
void Answer(int filtersDown, const char* name) {
  auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
  ASSERT_NE(dialog, nullptr);
  QTimer::singleShot(0, dialog, &QDialog::reject);  // where saving is refused the test goes on
  const auto& sizes = *dialog->findChild<QTreeView*>("treeView")->header();
  EXPECT_EQ(std::tuple(sizes.sortIndicatorSection(), sizes.sortIndicatorOrder()),
            std::tuple(3, Qt::DescendingOrder))
      << "the newest first";
  auto* filters = dialog->findChild<QComboBox*>("fileTypeCombo");
  for (int i = 0; i < filtersDown; ++i) QTest::keyClick(filters, Qt::Key_Down);
  auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
  edit->clear();
  QTest::keyClicks(edit, name);
  dialog->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Save)->click();
}

TEST_F(Files, TheFilterOnShowGivesANameItsSuffix) {
  constexpr auto Pictures = "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";
  platform::RealMachine machine("/tmp");
  using Row = std::tuple<const char*, const char*, int, const char*, int, const char*, const char*>;
  for (const auto& [what, filter, first, suffix, down, name, saved] :
       {Row{"the first filter", Pictures, 1, "png", 0, "a", "a.png"},
        Row{"another at first", Pictures, 3, "png", 0, "a", "a.svg"},
        Row{"another chosen", Pictures, 1, "png", 1, "a", "a.pdf"},
        Row{"a suffix of the user's own", Pictures, 1, "png", 2, "a.b", "a.b"},
        Row{"a filter for any name", "All Files (*.*)|*.*", 1, "qbx", 0, "a", "a.qbx"},
        Row{"a quotation mark is refused", Pictures, 1, "png", 0, "a\"b", "ab.png"},
        Row{"no default", Pictures, 1, "", 1, "a", "a"}}) {
    QTimer::singleShot(0, [&] { Answer(down, name); });
    platform::CommonDialog dialog;
    dialog.InitDir = folder;
    dialog.Filter = filter;
    dialog.FilterIndex = first;
    dialog.DefaultExt = suffix;
    dialog.Saves = true;
    EXPECT_EQ(machine.AskFile(dialog).value_or(""), folder / saved) << what;
  }
}

/// A scratch program folder whose Comm 1 is the slave of a pseudo-terminal.
struct Serial : Files {
  Serial() {
    fs::create_directories(folder / "Ports");
    master = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(master);
    unlockpt(master);
    device = ptsname(master);
    Link(1, device);
    machine = std::make_unique<platform::RealMachine>(folder);
    platform::Machine::Install(*machine);
  }
  ~Serial() override { Vanish(); }

  void Link(int number, const fs::path& to) {
    fs::create_symlink(to, folder / "Ports" / ("COM" + std::to_string(number)));
  }
  void Vanish() {
    if (master >= 0) ::close(std::exchange(master, -1));
  }
  void LoggerSends(const Bytes& bytes) {
    ASSERT_EQ(::write(master, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  /// Waits until so many bytes are in the control's buffer, without an event loop.
  void Collect(int bytes) {
    for (int i = 0; i < 5000 && comm.InBufferCount() < bytes; ++i) machine->Idle(2ms);
  }

  fs::path device;
  int master = -1;
  std::unique_ptr<platform::RealMachine> machine;
  platform::Form form{"Form", "Form"};
  MSComm comm{form, "MSComm1"};
};

TEST_F(Serial, CarriesEveryByteBothWaysAndRaisesItsEventAtTheThresholdOnly) {
  Bytes all(256);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
  std::vector<Bytes> heard;
  comm.OnComm = [&] {
    EXPECT_EQ(comm.CommEvent(), platform::ReceiveEvent);
    heard.push_back(comm.Input());
    EXPECT_EQ(comm.Input(), Bytes{});
  };
  comm.RThreshold(256);
  comm.PortOpen(true);
  for (const auto byte : all) comm.Output({&byte, 1});
  Bytes wire(all.size());
  for (auto& byte : wire) ASSERT_EQ(::read(master, &byte, 1), 1);
  EXPECT_EQ(wire, all);
  LoggerSends({all.begin(), all.end() - 1});
  EXPECT_TRUE(QTest::qWaitFor([&] { return comm.InBufferCount() == std::ssize(all) - 1; }));
  QCoreApplication::processEvents();  // an event that was offered would come now
  EXPECT_TRUE(heard.empty());
  LoggerSends({0xFF});
  ASSERT_TRUE(QTest::qWaitFor([&] { return !heard.empty(); }));
  comm.RThreshold(0);
  LoggerSends(all);
  EXPECT_TRUE(QTest::qWaitFor([&] { return comm.InBufferCount() == std::ssize(all); }));
  QCoreApplication::processEvents();
  EXPECT_EQ(heard, std::vector<Bytes>{all});
}

TEST_F(Serial, TakesNothingOverFromAnEarlierProgram) {
  const int earlier = ::open(device.c_str(), O_RDWR | O_NOCTTY);
  termios line{};
  line.c_iflag = static_cast<tcflag_t>(~0) & ~static_cast<tcflag_t>(IUTF8);
  line.c_oflag = OPOST | ONLCR;
  line.c_lflag = ICANON | ECHO | ISIG | IEXTEN;
  line.c_cflag = CS8 | CREAD | CSTOPB | PARENB | CRTSCTS | B9600;
  line.c_cc[VMIN] = 1;
  ASSERT_EQ(tcsetattr(earlier, TCSANOW, &line), 0);
  comm.PortOpen(true);
  ASSERT_EQ(tcgetattr(earlier, &line), 0);
  const auto kept = line.c_cflag & (CSTOPB | PARENB | CRTSCTS | CREAD | CLOCAL);
  EXPECT_EQ(std::tuple(line.c_iflag | line.c_oflag | line.c_lflag, kept, cfgetospeed(&line)),
            std::tuple(0, CREAD | CLOCAL, B19200));

  line.c_cc[VMIN] = 1;  // now a read that finds nothing fails with EAGAIN, as some drivers' do
  ASSERT_EQ(tcsetattr(earlier, TCSANOW, &line), 0);
  machine->Idle(1us);
  LoggerSends({0x11, 0x13});
  EXPECT_TRUE(QTest::qWaitFor([&] { return comm.InBufferCount() == 2; })) << "the device was given up";
  ::close(earlier);
}

TEST_F(Serial, TellsMakerAndProductOfAnAdapter) {
  const auto usb = folder / "usb1" / "1-4", port = usb / "1-4:1.0" / "ttyUSB0";
  fs::create_directories(port);
  EXPECT_EQ(platform::AdapterWords(port), "");
  std::ofstream(usb / "product") << "Serial Cable\n";
  EXPECT_EQ(platform::AdapterWords(port), "Serial Cable");
  std::ofstream(usb / "manufacturer") << "Maker\n";
  fs::create_symlink(port, folder / "device");
  EXPECT_EQ(platform::AdapterWords(folder / "device"), "Maker Serial Cable");
  EXPECT_EQ(platform::AdapterWords(folder / "none"), "");
}

TEST_F(Serial, CollectsWhileTheProgramWaits) {
  comm.PortOpen(true);
  LoggerSends(Bytes(3000, 7));
  const platform::EventGate::Hold hold;
  Collect(3000);
  EXPECT_EQ(comm.InBufferCount(), 3000) << "none of it lost";
  comm.PortOpen(false);
  LoggerSends({9, 9, 9});
  comm.PortOpen(true);
  LoggerSends({5});
  Collect(1);
  EXPECT_EQ(comm.Input(), Bytes{5}) << "stale bytes do not outlive an opening";
}

TEST_F(Serial, IsHeldByOneControlAloneAndFreedByAKill) {
  const auto opens = [](MSComm& control) { return FailureOf([&] { control.PortOpen(true); }).words; };
  Link(2, folder / "Ports" / "COM1");  // the same device through another name
  MSComm second(form, "MSComm2");
  second.CommPort = 2;
  const auto inUse = [&] { return opens(second).find("it is in use") != std::string::npos; };
  comm.PortOpen(true);
  EXPECT_TRUE(inUse());
  EXPECT_TRUE(InAnotherProcess(inUse));
  EXPECT_NE(opens(comm), "") << "opening twice is an error too";
  comm.PortOpen(false);
  EXPECT_TRUE(InAnotherProcess([&] { return opens(comm).empty() && InAnotherProcess(inUse); }));
  EXPECT_EQ(opens(second), "");
}

TEST_F(Serial, AVanishedLineFailsAtTheNextUseAndCostsNothing) {
  comm.PortOpen(true);
  Vanish();
  auto& dispatcher = *QAbstractEventDispatcher::instance();
  EXPECT_TRUE(QTest::qWaitFor([&] { return !dispatcher.processEvents(QEventLoop::AllEvents); }))
      << "a vanished line raises events without end";
  const std::uint8_t byte = 'f';
  EXPECT_NE(FailureOf([&] { comm.Output({&byte, 1}); }).words.find("takes no bytes"), std::string::npos);
  EXPECT_TRUE(comm.PortOpen());
}

TEST_F(Serial, SaysWhyAPortDoesNotOpen) {
  Link(2, "/nowhere/at/all");
  Link(3, "/dev/null");
  Link(4, folder / "forbidden");
  ::close(::open((folder / "forbidden").c_str(), O_CREAT | O_WRONLY, 0));
  for (const auto& [number, words] :
       {std::pair{2, "no such device"}, std::pair{3, "no such device"}, std::pair{0, "no such port"},
        std::pair{17, "no such port"}, std::pair{4, "dialout"}}) {
    if (number == 4 && geteuid() == 0) continue;  // nothing is forbidden to root
    comm.CommPort = number;
    EXPECT_NE(FailureOf([&] { comm.PortOpen(true); }).words.find(words), std::string::npos) << number;
    const bool isGone = words == std::string("no such device");
    EXPECT_TRUE(!isGone || machine->DescribePort(number).description == words) << number;
  }
}

TEST_F(Serial, NumbersStandForDevices) {
  using Row = std::pair<int, fs::path>;
  for (const auto& [number, path] :
       {Row{1, device}, Row{2, "/dev/ttyS1"}, Row{4, "/dev/ttyS3"}, Row{5, "/dev/ttyUSB0"},
        Row{12, "/dev/ttyUSB7"}, Row{13, "/dev/ttyACM0"}, Row{16, "/dev/ttyACM3"}, Row{0, ""}, Row{17, ""}})
    EXPECT_EQ(platform::DeviceOfComm(number, folder), path) << number;
}

}  // namespace bexlow::test
