// The stages that set the logger up: read, change, write and read back; calibrate.
#include <QLineEdit>

#include <cmath>

#include "platform/CWNumEdit.h"
#include "tour/stages.h"

namespace bexlow::tour {

namespace {

constexpr auto Averages = "NumEdit31";
constexpr std::size_t AveragesCell = 31;

double ValueOf(Robot& robot, const char* name) {
  return robot.The<platform::CWNumEdit>(name).Value();
}

int WordAt(const StandIn& standIn, std::size_t address) {
  const auto cells = standIn.Eeprom();
  return cells[address] * 256 + cells[address + 1];
}

}  // namespace

void ChangeSettings(Tour& tour) {
  auto& robot = tour.robot;
  robot.Choose("Tools", "Configuration");
  robot.ExpectBox("Read completed!", 10000);
  robot.Picture("configuration");
  const auto before = tour.standIn.Eeprom();
  Require(ValueOf(robot, Averages) == before[AveragesCell], "Averages as the logger holds it");
  const double changed = before[AveragesCell] == 7 ? 8 : 7;
  robot.The<platform::CWNumEdit>(Averages).Value(changed);
  robot.Choose("File", "Write");
  robot.Rest(3000);
  robot.Picture("configuration-writing");
  robot.ExpectBox("Write completed!", 30000);
  auto expected = before;
  expected[AveragesCell] = static_cast<std::uint8_t>(changed);
  robot.WaitUntil("the written cells", 3000, [&] { return tour.standIn.Eeprom() == expected; });
  robot.Choose("File", "Read");
  robot.ExpectBox("Read completed!", 10000);
  Require(ValueOf(robot, Averages) == changed, "Averages as it was written");
  robot.Key(Qt::Key_F11, Qt::ControlModifier);
  robot.Choose("Tools", "EEPROM");
  robot.Press("Read");
  robot.Rest(400);
  Require(robot.Text("txtValue") == std::to_string(expected[2]), "cell 2 in the EEPROM screen");
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
  robot.ExpectBox("Write completed!", 15000);
  std::size_t address = 2;
  for (const char* box : {"txtOffsetX", "txtOffsetY", "txtOffsetZ", "txtGainX", "txtGainY", "txtGainZ"}) {
    const double shown = std::stod(robot.Text(box));
    Require(WordAt(tour.standIn, address) == static_cast<int>(std::nearbyint(shown)),
            std::string(box) + " as written");
    address += 2;
  }
  Require(tour.standIn.Eeprom()[32] == 0, "the shaker is off");
  robot.Choose("Data", "Return");
}

}  // namespace bexlow::tour
