#include "tour/stages.h"

#include <QDateTime>

#include "platform/CWGraph.h"

namespace bexlow::tour {

void ConnectToLogger(Tour& tour, bool withPictures) {
  auto& robot = tour.robot;
  if (withPictures) {
    Require(!robot.Offers("Tools", "Launch"), "the Tools menu is open before a logger is reached");
    robot.Picture("main");
  }
  robot.Choose("File", "Connect");
  if (withPictures) robot.PictureOfBox("Bexlow found", "connect");
  robot.Press("Auto Detect");
  robot.ExpectBox("Bexlow found on Comm 1!", 20000);
  robot.Press("OK");
  robot.WaitUntil("the menus open", 5000, [&] { return robot.Screen() == "Main"; });
  Require(robot.Offers("Tools", "Launch"), "the Tools menu stays closed");
}

void LookAbout(Tour& tour) {
  tour.robot.Choose("Help", "About");
  tour.robot.Picture("about");
  tour.robot.Press("OK");
}

namespace {

/// Downloads, compares, and lets the graph open.
void Download(Tour& tour, const std::filesystem::path& path) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Download");
  robot.NextFile(path);
  robot.Choose("Data", "Download");
  robot.Rest(1200);
  robot.Picture("download");
  robot.ExpectBox("Download completed!", 60000);
  robot.WaitUntil("Graph", 5000, [&] { return robot.Screen() == "Graph"; });
  Require(FileText(path) == tour.standIn.ExpectedDataFile(), path.string() + " is not what the logger holds");
  robot.Rest(400);
}

}  // namespace

void DownloadBins(Tour& tour) {
  const auto path = tour.dataFiles / "bins.qbx";
  Download(tour, path);
  tour.robot.Picture("graph-bins");
  Require(!std::filesystem::exists(tour.dataFiles / "bins.csv"), "bins have no samples for a CSV file");
  tour.robot.Choose("File", "Return");
}

void DownloadRun(Tour& tour, const std::string& name) {
  auto& robot = tour.robot;
  Download(tour, tour.dataFiles / (name + ".qbx"));
  Require(std::filesystem::exists(tour.dataFiles / (name + ".csv")), "there is no CSV file");
  robot.Picture("graph");
  auto& graph = robot.The<platform::CWGraph>("CWGraph1");
  const auto all = graph.XView();
  graph.setFocus();
  for (int i = 0; i < 4; ++i) robot.Key(Qt::Key_Plus);
  Require(graph.XView().upper - graph.XView().lower < all.upper - all.lower, "the plus key does not zoom");
  robot.Picture("graph-zoomed");
  robot.Choose("File", "Return");
  robot.WaitUntil("Main", 2000, [&] { return robot.Screen() == "Main"; });
}

void ReviewPushes(Tour& tour, const std::string& name) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Graph Button Pushes");
  robot.NextFile(tour.dataFiles / (name + ".qbx"));
  robot.Choose("File", "Open");
  const auto pushes = tour.standIn.ExpectedPushes();
  for (std::size_t i = 0; i < pushes.size(); ++i) {
    Require(robot.Text("txtBPNumber") == std::to_string(i), "the number of push " + std::to_string(i));
    Require(robot.Text("txtBPValue") == std::to_string(pushes[i]), "the point of push " + std::to_string(i));
    robot.Press(">");
  }
  robot.Press("Show All");
  const auto shown = robot.The<platform::CWGraph>("CWGraph1").CursorCount();
  Require(shown == static_cast<int>(pushes.size()), "Show All shows " + std::to_string(shown) + " cursors");
  robot.Picture("review");
  robot.Press("Hide All");
  robot.Choose("File", "Return");
}

void LaunchRun(Tour& tour) {
  auto& robot = tour.robot;
  robot.PictureOfBox("Bexlow will erase", "launch-question");
  robot.Choose("Tools", "Launch");
  robot.ExpectBox("Bexlow will erase");
  robot.Rest(2000);
  robot.Picture("launch");
  robot.ExpectBox("Disconnect the serial cable from the Bexlow!", 30000);
  Require(!robot.Offers("Tools", "Launch"), "the Tools menu stays open behind a launch");
  robot.WaitUntil("the run that was launched", 10000, [&] { return !tour.standIn.MemoryIsBlank(); });
  const auto cells = tour.standIn.Eeprom();
  const auto since = QDateTime(QDate(cells[104] * 256 + cells[105], cells[109], cells[103]),
                               QTime(cells[106], cells[107], cells[108]))
                         .secsTo(QDateTime::currentDateTime());
  Require(since >= 0 && since < 60, "the logger was stamped with another time");
}

void EraseLogger(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Download");
  robot.Choose("Data", "Erase");
  robot.Rest(1600);
  robot.Picture("erase");
  robot.ExpectBox("Erase completed!", 30000);
  robot.WaitUntil("an empty memory", 10000, [&] { return tour.standIn.MemoryIsBlank(); });
  const auto path = tour.dataFiles / "emptied.qbx";
  robot.NextFile(path);
  robot.Decline("Would you like to graph");
  robot.Choose("Data", "Download");
  robot.ExpectBox("Would you like to graph", 30000);
  const std::string text = FileText(path);
  Require(std::count(text.begin(), text.end(), '\n') == 12, "an emptied logger gives more than 12 lines");
  robot.Choose("Data", "Return");
}

}  // namespace bexlow::tour
