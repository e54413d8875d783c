// The live stages, on a logger that moves: what was saved must be what the stand-in sent.
#include <cmath>
#include <sstream>

#include "platform/CWKnob.h"
#include "tour/stages.h"

namespace bexlow::tour {

namespace {

std::vector<std::string> LinesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

/// A number of one decimal at most, as files hold it.
std::string Tenths(double degrees) {
  const auto tenths = static_cast<long>(std::nearbyint(degrees * 10));
  const long size = std::labs(tenths);
  if (size == 0) return "0";
  std::string text = size >= 10 ? std::to_string(size / 10) : "";
  if (size % 10 != 0) text += "." + std::to_string(size % 10);
  return (tenths < 0 ? "-" : "") + text;
}

std::string AngleOfWord(int word, double fullScale) {
  return Tenths((word > 32767 ? word - 65535 : word) / 32767.0 * fullScale);
}

/// Samples with the saving on, and gives what the file holds behind the times, and what the stand-in sent
/// meanwhile.
struct Saved {
  std::vector<std::string> records, sent;
};
Saved SaveWhile(Tour& tour, const std::string& name, const std::function<void()>& during) {
  auto& robot = tour.robot;
  const auto path = tour.dataFiles / name;
  robot.NextFile(path);
  robot.Choose("Data", "Save");
  const auto before = LinesOf(tour.standIn.Samples()).size();
  robot.Choose("Data", "Sample");
  robot.Rest(2500);
  during();
  robot.Choose("Data", "Sample");
  robot.Rest(200);
  Saved saved;
  const auto lines = LinesOf(FileText(path));
  Require(lines.size() > 110, name + " holds too few samples");
  for (std::size_t i = 10; i < lines.size(); ++i)
    saved.records.push_back(lines[i].substr(lines[i].find(',') + 1));
  const auto sent = LinesOf(tour.standIn.Samples());
  saved.sent.assign(sent.begin() + static_cast<std::ptrdiff_t>(before), sent.end());
  return saved;
}

/// Every record is what was sent at its place; the last ones sent may have come behind the stop.
void Compare(const Saved& saved, const std::string& name,
             const std::function<std::string(const std::string&)>& record) {
  Require(saved.sent.size() >= saved.records.size(), name + " holds more samples than were sent");
  Require(saved.sent.size() - saved.records.size() <= 2, name + " has lost samples");
  for (std::size_t i = 0; i < saved.records.size(); ++i)
    Require(saved.records[i] == record(saved.sent[i]),
            name + ", sample " + std::to_string(i) + ": " + saved.records[i]);
}

std::vector<int> Numbers(const std::string& line) {
  std::string plain = line;
  for (auto& c : plain) c = c == '-' || (c >= '0' && c <= '9') ? c : ' ';
  std::istringstream stream(plain);
  std::vector<int> numbers;
  for (int number = 0; stream >> number;) numbers.push_back(number);
  return numbers;
}

}  // namespace

void WatchAccelerometers(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Display", "Accelerometers");
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  const auto saved = SaveWhile(tour, "accelerometers.qbx", [&] { robot.Picture("accelerometers"); });
  Compare(saved, "accelerometers.qbx", [](const std::string& sent) {
    const auto n = Numbers(sent);
    return std::to_string(n.at(0)) + "," + std::to_string(n.at(1)) + "," + std::to_string(n.at(2));
  });
  robot.Choose("Data", "Save");
  robot.Choose("Data", "Return");
}

void WatchAngles(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Display", "Angles");
  const auto saved = SaveWhile(tour, "angles.qbx", [&] { robot.Picture("angles"); });
  Compare(saved, "angles.qbx", [](const std::string& sent) {
    const auto n = Numbers(sent);
    return AngleOfWord(n.at(0), 180) + "," + AngleOfWord(n.at(1), 90);
  });
  robot.Choose("Data", "Save");
  robot.Choose("Data", "Sample");
  robot.Rest(300);
  robot.Press("Untare X");
  Require(tour.standIn.Eeprom()[14] == 0 && tour.standIn.Eeprom()[15] == 0, "the X tare is cleared");
  robot.Press("Tare X");
  const auto cells = tour.standIn.Eeprom();
  Require(cells[14] != 0 || cells[15] != 0, "the X tare is stored");
  robot.Picture("angles-tared");
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Return");
}

void ShareAngles(Tour& tour) {
  auto& robot = tour.robot;
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  robot.Choose("Display", "Remote Session");
  robot.Rest(1200);
  robot.Picture("remote");
  robot.Choose("Data", "Sample");
  robot.Rest(1200);
  Require(!robot.Text("txtX").empty(), "the remote session samples");
  robot.Picture("remote-sampling");
  robot.Choose("Data", "Sample");
  robot.Choose("Data", "Return");
}

}  // namespace bexlow::tour
