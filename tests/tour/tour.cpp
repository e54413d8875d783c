// bexlow-tour LOGGER FOLDER: the real screens in a real window, on the real clock, against the stand-in
// logger. Compares every file with what the stand-in holds, and leaves a picture of each screen.
#include <QPrinter>
#include <QUdpSocket>

#include "graph/Pictures.h"
#include "platform/controls/CWNumEdit.h"
#include "tour/Robot.h"
#include "values/NumberText.h"

namespace bexlow::tour {
namespace fs = std::filesystem;

class Tour {
 public:
  Tour(Robot& robot, const fs::path& logger, const fs::path& output, const QStringList& options)
      : robot_(robot), standIn_(logger, output, options), dataFiles_(output / "Data Files") {}

  /// A day's work on a logger that holds samples.
  void Visit() {
    robot_.PictureOfBox("Bexlow found", "connect");
    robot_.Do({"rest: 500", "picture: main"});
    Connect();
    robot_.Do({"Help > About", "picture: about", "press: OK"});
    ChangeSettings();
    Calibrate();
    WatchAccelerometers();
    WatchAngles();
    robot_.NextFile(dataFiles_ / "angles.qbx");
    robot_.Do({"press: Open a data file...", "screen: Recording", "picture: recording", "File > Return"});
    ShareAngles();
    DownloadRun("first", "");
    ReviewPushes();
    Launch();
    Connect();
    DownloadRun("launched", "-launched");
    Erase();
  }
  /// On a logger that has counted bins.
  void VisitBins() {
    Connect();
    Download("bins", "-bins");
    robot_.Do({"picture: graph-bins", "File > Return"});
    Require(!fs::exists(dataFiles_ / "bins.csv"), "bins have no samples for a CSV file");
  }

 private:
  void Connect() {
    robot_.Do({"File > Connect", "press: Auto Detect", "box: Bexlow found on Comm 1!", "press: OK",
               "screen: Main"});
  }
  void ChangeSettings() {
    robot_.Do({"Tools > Configuration", "box: Read completed!", "picture: configuration"});
    auto expected = standIn_.Eeprom();
    auto& averages = expected[31];
    averages = averages == 7 ? 8 : 7;
    test::The<platform::CWNumEdit>("NumEdit31").Value(averages);
    robot_.Do({"File > Write", "rest: 3000", "picture: configuration-writing", "box: Write completed!"});
    robot_.WaitUntil("the written cells", [&] { return standIn_.Eeprom() == expected; });
    robot_.Do({"key: Ctrl+F11", "Tools > EEPROM", "press: Read"});
    const auto& value = test::The<QLineEdit>("txtValue");
    robot_.WaitUntil("a cell in the EEPROM screen", [&] { return !value.text().isEmpty(); });
    robot_.Do({"rest: 100", "picture: eeprom", "press: OK", "File > Return"});
  }
  void Calibrate() {
    robot_.Do({"Tools > Calibrate", "Data > Sample", "box: Shaker will be disabled", "rest: 4000",
               "picture: calibrate", "Data > Sample", "Data > Write", "box: Write completed!"});
    Require(standIn_.Eeprom()[32] == 0, "the shaker is off");
    robot_.Do({"Data > Return"});
  }

  /// Each record without its time must be the sample sent at its place; the last may come after the stop.
  void SaveAndCompare(const std::string& name, std::string (*recordOf)(const std::vector<int>&)) {
    constexpr std::size_t HeaderLines = 10, Enough = 900;
    const auto file = dataFiles_ / (name + ".qbx");
    const auto lines = [&] { return test::LinesOf(test::FileText(file)); };
    const auto before = standIn_.Samples().size();
    robot_.NextFile(file);
    robot_.Do({"Data > Save", "Data > Sample"});
    robot_.WaitUntil("samples in the file", [&] { return lines().size() > HeaderLines + Enough; });
    robot_.Do({"picture: " + QString::fromStdString(name), "Data > Sample", "Data > Save"});
    const auto saved = lines();
    const auto end = before + saved.size() - HeaderLines;
    robot_.WaitUntil("the stand-in's record", [&] { return standIn_.Samples().size() >= end; });
    const auto sent = standIn_.Samples();
    Require(sent.size() <= end + 2, file.string() + " has lost samples");
    for (std::size_t i = before; i < end; ++i) {
      const auto& line = saved[HeaderLines + i - before];
      Require(line.substr(line.find(',') + 1) == recordOf(sent[i]), file.string() + ": " + line);
    }
  }
  void WatchAccelerometers() {
    robot_.Do({"Display > Accelerometers", "key: Ctrl+F11"});
    SaveAndCompare("accelerometers", [](const std::vector<int>& sent) {
      return std::to_string(sent.at(0)) + "," + std::to_string(sent.at(1)) + "," + std::to_string(sent.at(2));
    });
    robot_.Do({"Data > Return"});
  }
  void WatchAngles() {
    robot_.Do({"Display > Angles"});
    SaveAndCompare("angles", [](const std::vector<int>& sent) {
      return values::NumberText(values::SampleWordToAngle(sent.at(0), 180)) + "," +
             values::NumberText(values::SampleWordToAngle(sent.at(1), 90));
    });
    robot_.Do({"Data > Sample", "rest: 300", "press: Untare X", "press: Tare X"});
    robot_.WaitUntil("a stored X tare", [&] { return standIn_.Eeprom()[14] + standIn_.Eeprom()[15] != 0; });
    robot_.Do({"picture: angles-tared", "Data > Sample", "Data > Return"});
  }
  /// Sends to a socket that stands for the program on the other computer.
  void ShareAngles() {
    QUdpSocket peer, own;  // on ports that the system finds free
    Require(peer.bind() && own.bind(), "two free ports");
    const int ownPort = own.localPort();
    own.close();
    robot_.Do({"key: Ctrl+F11", "Display > Remote Session", "picture: remote"});
    for (const auto& [name, port] : {std::pair{"txtPort", int{peer.localPort()}}, {"txtBind", ownPort}}) {
      test::The<QLineEdit>(name).selectAll();
      QTest::keyClicks(&test::The<QLineEdit>(name), QString::number(port));
    }
    robot_.Do({"press: Reset"});
    test::The<QRadioButton>("optSend").click();
    robot_.Do({"Data > Sample"});
    robot_.WaitUntil("a datagram", [&] { return peer.hasPendingDatagrams(); });
    robot_.Do({"rest: 1000", "picture: remote-sampling", "Data > Sample", "Data > Return"});
  }

  /// Downloads, compares, and lets the graph open.
  void Download(const std::string& name, const QString& pictures) {
    const auto path = dataFiles_ / (name + ".qbx");
    robot_.NextFile(path);
    robot_.Do({"Tools > Download", "Data > Download", "rest: 1500", "picture: download" + pictures,
               "box: Download completed!", "screen: Graph"});
    const bool isRight = test::FileText(path) == standIn_.ExpectedDataFile();
    Require(isRight, path.string() + " is not what the logger holds");
    robot_.Do({"rest: 400"});
  }
  void DownloadRun(const std::string& name, const QString& pictures) {
    Download(name, pictures);
    Require(fs::exists(dataFiles_ / (name + ".csv")), "there is no CSV file");
    robot_.Do({"picture: graph" + pictures});
    test::The<platform::CWGraph>("CWGraph1").setFocus();
    robot_.Do({"key: +", "key: +", "key: +", "key: +", "picture: graph-zoomed" + pictures, "File > Return",
               "screen: Main"});
  }
  void ReviewPushes() {
    robot_.Do({"Tools > Graph Button Pushes"});
    robot_.NextFile(dataFiles_ / "first.qbx");
    robot_.Do({"File > Open", "press: >", "press: Show All", "picture: review"});
    const auto path = dataFiles_.parent_path() / "report.pdf";
    graph::AskPrinter = [&](QPrinter& printer) {
      printer.setOutputFileName(path.c_str());
      return true;
    };
    test::FindOffered(test::The<platform::CWGraph>("CWGraph1"), "Report...")->trigger();
    Require(test::FileText(path).starts_with("%PDF"), "there is no report");
    robot_.Do({"File > Return"});
  }

  bool MemoryIsBlank() const {
    return std::ranges::all_of(standIn_.Pages(), [](std::uint8_t byte) { return byte == 0xFF; });
  }
  void Launch() {
    const auto before = QDateTime::currentDateTime();
    robot_.PictureOfBox("Bexlow will erase", "launch-question");
    robot_.Do({"Tools > Launch", "box: Bexlow will erase", "rest: 2000", "picture: launch",
               "box: Disconnect the serial cable from the Bexlow!"});
    robot_.WaitUntil("the run that was launched", [&] { return !MemoryIsBlank(); });
    const auto cells = standIn_.Eeprom();
    const QDateTime stamp(QDate(cells[104] * 256 + cells[105], cells[109], cells[103]),
                          QTime(cells[106], cells[107], cells[108]));
    Require(stamp.secsTo(before) <= 1 && stamp <= QDateTime::currentDateTime(),
            "the logger was stamped with another time: " + stamp.toString(Qt::ISODate).toStdString());
  }
  void Erase() {
    robot_.Do({"Tools > Download", "Data > Erase", "rest: 1600", "picture: erase", "box: Erase completed!"});
    robot_.WaitUntil("an empty memory", [&] { return MemoryIsBlank(); });
    robot_.Do({"Data > Return"});
  }

  Robot& robot_;
  const rig::RecordedStandIn standIn_;
  const fs::path dataFiles_;
};

int Run(const fs::path& logger, const fs::path& output) {
  fs::remove_all(output);
  fs::create_directories(output / "Ports");
  platform::RealMachine machine(output);
  platform::Machine::Install(machine);
  rig::Program program;
  program.Show(shell::MakeMain(program.outer));
  Robot robot(program.outer, output);
  try {
    Tour(robot, logger, output, {"--motion", "turn", "--erase-seconds", "5", "--run-pages", "16"}).Visit();
    Tour(robot, logger, output, {"--mode", "bin", "--pages", "16"}).VisitBins();
  } catch (const std::runtime_error& failure) {
    robot.Do({"picture: failure"});
    std::cerr << "The tour failed: " << failure.what() << "\n";
    return 1;
  }
  std::cout << "The tour is complete: all files are what the stand-in holds.\n";
  return 0;
}

}  // namespace bexlow::tour

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const bexlow::rig::Scratch scratch;
  QApplication application(argc, argv);
  QApplication::setWindowIcon(bexlow::platform::Drawing(bexlow::platform::Emblem, {64, 64}));
  return bexlow::tour::Run(std::filesystem::absolute(argv[1]), std::filesystem::absolute(argv[2]));
}
