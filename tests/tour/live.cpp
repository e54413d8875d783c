// The live stages, on a logger that moves: what was saved must be what the stand-in sent.
#include "tour/SentSamples.h"
#include "tour/stages.h"

namespace bexlow::tour {

namespace {

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

}  // namespace bexlow::tour
