#include "tour/stages.h"

#include <QDateTime>
#include <QUdpSocket>

#include "platform/controls/CWNumEdit.h"
#include "platform/graph/CWGraph.h"
#include "support/DataFiles.h"

namespace bexlow::tour {

using test::FileText;
using test::LinesOf;

namespace {

void ConnectToLogger(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("File", "Connect");
  robot.Press("Auto Detect");
  robot.ExpectBox("Bexlow found on Comm 1!");
  robot.Press("OK");
  robot.WaitUntil("Main", [&] { return robot.Screen() == "Main"; });
}

void LookAbout(Tour& tour) {
  tour.robot.Choose("Help", "About");
  tour.robot.Picture("about");
  tour.robot.Press("OK");
}

void ChangeSettings(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Configuration");
  robot.ExpectBox("Read completed!");
  robot.Picture("configuration");
  auto expected = tour.standIn.Eeprom();
  constexpr std::size_t AveragesCell = 31;
  expected[AveragesCell] = expected[AveragesCell] == 7 ? 8 : 7;
  robot.The<platform::CWNumEdit>("NumEdit31").Value(expected[AveragesCell]);
  robot.Choose("File", "Write");
  robot.Rest(3000);
  robot.Picture("configuration-writing");
  robot.ExpectBox("Write completed!");
  robot.WaitUntil("the written cells", [&] { return tour.standIn.Eeprom() == expected; });
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  robot.Choose("Tools", "EEPROM");
  robot.Press("Read");
  robot.WaitUntil("a cell in the EEPROM screen", [&] { return !robot.Text("txtValue").empty(); });
  robot.Rest(100);
  robot.Picture("eeprom");
  robot.Press("OK");
  robot.Choose("File", "Return");
}

void CalibrateAxes(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Calibrate");
  robot.Choose("Data", "Sample");
  robot.ExpectBox("Shaker will be disabled");
  robot.Rest(4000);
  robot.Picture("calibrate");
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Write");
  robot.ExpectBox("Write completed!");
  Require(tour.standIn.Eeprom()[32] == 0, "the shaker is off");
  robot.Choose("Data", "Return");
}

/// Samples with saving on. Each record without its time must be the sample that was sent at its place; the
/// last samples may have come after the stop.
void SaveAndCompare(Tour& tour, const std::string& name,
                    const std::function<std::string(const std::vector<int>&)>& recordOf) {
  auto& robot = tour.robot;
  const auto file = tour.dataFiles / (name + ".qbx");
  robot.NextFile(file);
  robot.Choose("Data", "Save");
  const auto before = tour.standIn.Samples().size();
  constexpr std::size_t HeaderLines = 10, Enough = 900;
  robot.Choose("Data", "Sample");
  robot.WaitUntil(name + " in the file",
                  [&] { return LinesOf(FileText(file)).size() > HeaderLines + Enough; });
  robot.Picture(name);
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Save");
  const auto lines = LinesOf(FileText(file));
  const auto records = lines.size() - HeaderLines;
  robot.WaitUntil(name + " in the stand-in's record",
                  [&] { return tour.standIn.Samples().size() >= before + records; });
  const auto sent = tour.standIn.Samples();
  Require(sent.size() - before - records <= 2, file.string() + " has lost samples");
  for (std::size_t i = 0; i < records; ++i) {
    const auto& line = lines[HeaderLines + i];
    Require(line.substr(line.find(',') + 1) == recordOf(sent[before + i]),
            file.string() + ", sample " + std::to_string(i) + ": " + line);
  }
}

void WatchAccelerometers(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Display", "Accelerometers");
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  SaveAndCompare(tour, "accelerometers", [](const std::vector<int>& sent) {
    return std::to_string(sent.at(0)) + "," + std::to_string(sent.at(1)) + "," + std::to_string(sent.at(2));
  });
  robot.Choose("Data", "Return");
}

void WatchAngles(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Display", "Angles");
  SaveAndCompare(tour, "angles", [](const std::vector<int>& sent) {
    return AngleOfWord(sent.at(0), 180) + "," + AngleOfWord(sent.at(1), 90);
  });
  robot.Choose("Data", "Sample");
  robot.Rest(300);
  for (const auto* caption : {"Untare X", "Tare X"}) robot.Press(caption);
  robot.WaitUntil("a stored X tare",
                  [&] { return tour.standIn.Eeprom()[14] + tour.standIn.Eeprom()[15] != 0; });
  robot.Picture("angles-tared");
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Return");
}

/// Sends to a socket that stands for the program on the other computer.
void ShareAngles(Tour& tour) {
  auto& robot = tour.robot;
  QUdpSocket peer, own;  // on ports that the system finds free
  Require(peer.bind() && own.bind(), "two free ports");
  const auto ownPort = QString::number(own.localPort());
  own.close();
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  robot.Choose("Display", "Remote Session");
  robot.Picture("remote");
  robot.Type("txtPort", QString::number(peer.localPort()));
  robot.Type("txtBind", ownPort);
  robot.Press("Reset");
  robot.Mark("optSend");
  robot.Choose("Data", "Sample");
  robot.WaitUntil("a datagram", [&] { return peer.hasPendingDatagrams(); });
  robot.Rest(1000);
  robot.Picture("remote-sampling");
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Return");
}

/// The first run's pictures bear the plain name.
std::string PictureOf(const std::string& what, const std::string& run) {
  return run == "first" ? what : what + "-" + run;
}

/// Downloads, compares, and lets the graph open.
void Download(Tour& tour, const std::filesystem::path& path) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Download");
  robot.NextFile(path);
  robot.Choose("Data", "Download");
  robot.Rest(1500);
  robot.Picture(PictureOf("download", path.stem()));
  robot.ExpectBox("Download completed!");
  robot.WaitUntil("Graph", [&] { return robot.Screen() == "Graph"; });
  Require(FileText(path) == tour.standIn.ExpectedDataFile(), path.string() + " is not what the logger holds");
  robot.Rest(400);
}

void DownloadRun(Tour& tour, const std::string& name) {
  auto& robot = tour.robot;
  Download(tour, tour.dataFiles / (name + ".qbx"));
  Require(std::filesystem::exists(tour.dataFiles / (name + ".csv")), "there is no CSV file");
  robot.Picture(PictureOf("graph", name));
  robot.The<platform::CWGraph>("CWGraph1").setFocus();
  for (int i = 0; i < 4; ++i) robot.Key(Qt::Key_Plus);
  robot.Picture(PictureOf("graph-zoomed", name));
  robot.Choose("File", "Return");
  robot.WaitUntil("Main", [&] { return robot.Screen() == "Main"; });
}

void ReviewPushes(Tour& tour, const std::string& name) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Graph Button Pushes");
  robot.NextFile(tour.dataFiles / (name + ".qbx"));
  robot.Choose("File", "Open");
  robot.Press(">");
  robot.Press("Show All");
  robot.Picture("review");
  robot.Choose("File", "Return");
}

void LaunchRun(Tour& tour) {
  auto& robot = tour.robot;
  const auto before = QDateTime::currentDateTime();
  robot.PictureOfBox("Bexlow will erase", "launch-question");
  robot.Choose("Tools", "Launch");
  robot.ExpectBox("Bexlow will erase");
  robot.Rest(2000);
  robot.Picture("launch");
  robot.ExpectBox("Disconnect the serial cable from the Bexlow!");
  robot.WaitUntil("the run that was launched", [&] { return !tour.standIn.MemoryIsBlank(); });
  const auto cells = tour.standIn.Eeprom();
  const QDateTime stamp(QDate(cells[104] * 256 + cells[105], cells[109], cells[103]),
                        QTime(cells[106], cells[107], cells[108]));
  Require(stamp.secsTo(before) <= 1 && stamp <= QDateTime::currentDateTime(),
          "the logger was stamped with another time: " + stamp.toString(Qt::ISODate).toStdString());
}

void EraseLogger(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Download");
  robot.Choose("Data", "Erase");
  robot.Rest(1600);
  robot.Picture("erase");
  robot.ExpectBox("Erase completed!");
  robot.WaitUntil("an empty memory", [&] { return tour.standIn.MemoryIsBlank(); });
  robot.Choose("Data", "Return");
}

}  // namespace

void Visit(Tour& tour) {
  tour.robot.Picture("main");
  tour.robot.PictureOfBox("Bexlow found", "connect");
  ConnectToLogger(tour);
  LookAbout(tour);
  ChangeSettings(tour);
  CalibrateAxes(tour);
  WatchAccelerometers(tour);
  WatchAngles(tour);
  ShareAngles(tour);
  DownloadRun(tour, "first");
  ReviewPushes(tour, "first");
  LaunchRun(tour);
  ConnectToLogger(tour);
  DownloadRun(tour, "launched");
  EraseLogger(tour);
}

void VisitBins(Tour& tour) {
  ConnectToLogger(tour);
  Download(tour, tour.dataFiles / "bins.qbx");
  tour.robot.Picture("graph-bins");
  Require(!std::filesystem::exists(tour.dataFiles / "bins.csv"), "bins have no samples for a CSV file");
  tour.robot.Choose("File", "Return");
}

}  // namespace bexlow::tour
