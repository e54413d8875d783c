// One download under attack, counted by scripts/campaign: with a fault of the stand-in, or killed at a random
// moment. The last line tells the result: right, refused, valid, or wrong, and the seed that gives it again.
// bexlow-campaign LOGGER fault|kill SEED [BURST]
// bexlow-campaign FOLDER
#include <QtWidgets>

#include <cstdio>
#include <random>

#include "rig/Rig.h"
#include "shared/Screens.h"

using namespace bexlow;
namespace fs = std::filesystem;

constexpr int Pages = 20;
constexpr int LimitMs = 60'000;  // a download of 20 pages takes 7 s, its fault 5 s more

using Chance = std::mt19937_64;
int Between(int least, int most, Chance& chance) {
  return std::uniform_int_distribution<int>(least, most)(chance);
}

/// How a download ended.
struct Ending {
  bool completed = false;
  std::string message;  ///< the first that was not part of a good end; empty if the download just never ended
};

fs::path DataFile(const fs::path& folder) { return folder / "run.qbx"; }

/// Downloads with the real screen from the logger on the folder's Comm 1, and gives up at the first error.
Ending Download(const fs::path& folder) {
  rig::AnsweredMachine machine(folder, DataFile(folder));
  rig::Program program;
  auto& screen = program.Show(download::MakeDownloadErase([] {}));
  auto* entry = screen.findChild<QAction*>("mnuDownload");
  Ending ending;
  machine.onBox = [&](const std::string& text, platform::Buttons buttons) {
    ending.completed = ending.completed || text == "Download completed!";
    if (text == "Download completed!") return;
    if (buttons != platform::Buttons::YesNo && ending.message.empty()) ending.message = text;
    if (buttons == platform::Buttons::RetryCancel) QTimer::singleShot(0, entry, &QAction::trigger);
    QTimer::singleShot(0, qApp, &QApplication::quit);
  };
  rig::Program::Run(entry, LimitMs);
  return ending;
}

constexpr int Refused = 3;  // exit code of a download that ended with a message

/// A fault of the stand-in and the range of its amount, in bytes or milliseconds.
struct Fault {
  const char* kind;
  int least, most;
};
constexpr Fault Faults[] = {{"drop", 0, 0},         {"double", 0, 0},     {"late", 100, 5000},
                            {"cut", 1, 263},        {"short", 1, 263},    {"long", 1, 300},
                            {"silence", 500, 5000}, {"vanish", 500, 5000}};

/// One fault in the reply to any page: 0, the 20 that hold data, the blank one after them.
std::string RandomFault(Chance& chance) {
  const auto& [kind, least, most] = Faults[Between(0, static_cast<int>(std::size(Faults)) - 1, chance)];
  std::string text = kind;
  if (most > 0) text += ":" + std::to_string(Between(least, most, chance));
  return text + "/d@" + std::to_string(Between(1, Pages + 2, chance));
}

/// A file beside the one that a whole download gives.
struct Contents {
  Contents(const fs::path& path, const std::string& expected) {
    const auto file = test::FileText(path);
    const auto end = file.rfind("\r\n");
    const auto lines = std::ranges::count(file, '\n');
    rest = end == std::string::npos ? file.size() : file.size() - end - 2;
    right = file.substr(0, file.size() - rest) == expected;
    valid = expected.starts_with(file) && (file.empty() || lines >= 12);
    details = std::to_string(std::max<std::ptrdiff_t>(lines - 12, 0)) + " records";
  }
  std::size_t rest = 0;  ///< bytes behind the last whole line
  bool right = false, valid = false;
  std::string details;
};

/// The stand-in, and how its bytes come: one by one, or in bursts, which need a line's pace.
struct Line {
  fs::path logger;
  std::string burst;
  rig::RecordedStandIn Plug(const fs::path& folder, bool paced, const QStringList& more = {}) const {
    const char* pace = paced || burst != "1" ? "on" : "off";
    return {logger, folder,
            QStringList{"--pages", QString::number(Pages), "--burst", burst.c_str(), "--pace", pace} + more};
  }
};

using Result = std::pair<const char*, std::string>;

Result WithFault(const Line& line, const fs::path& folder, Chance& chance) {
  const auto fault = RandomFault(chance);
  const bool paced = Between(0, 3, chance) == 0;
  const auto standIn = line.Plug(folder, paced, {"--fault", fault.c_str()});
  const auto ending = Download(folder);
  const Contents file(DataFile(folder), standIn.ExpectedDataFile());
  const auto details = fault + (paced ? " paced" : "") + ", " + file.details;
  if (ending.completed && ending.message.empty() && file.right && file.rest == 0) return {"right", details};
  const bool refused = !ending.completed && !ending.message.empty() && file.rest == 0;
  const std::string end = ending.completed ? "completed" : "no end within a minute";
  const auto& told = ending.message.empty() ? end : ending.message;
  return {refused && file.valid ? "refused" : "wrong", details + ": " + told};
}

/// Most are killed once there is a file; the others at any moment of the seconds before.
Result Killed(const Line& line, const fs::path& folder, Chance& chance) {
  const auto standIn = line.Plug(folder, false);
  QProcess program;
  program.start(QCoreApplication::applicationFilePath(), {folder.c_str()});
  const bool early = Between(0, 4, chance) == 0;
  const int moment = Between(0, early ? 4500 : 750, chance);  // ms; both end within their phase
  const auto path = DataFile(folder);
  while (!early && !fs::exists(path) && program.state() != QProcess::NotRunning) program.waitForFinished(1);
  program.waitForFinished(moment);
  const bool killed = program.state() == QProcess::Running;
  program.kill();
  program.waitForFinished();
  const Contents file(path, standIn.ExpectedDataFile());
  // On a very busy machine a reply may come after its wait: the download refuses, as it should.
  const bool ended = !killed && program.exitStatus() == QProcess::NormalExit;
  const bool refused = ended && program.exitCode() == Refused;
  const auto details = (killed ? "killed " : "ended before ") + std::to_string(moment) + " ms after its " +
                       (early ? "start: " : "file: ") + file.details + ", " + std::to_string(file.rest) +
                       " bytes";
  if (!file.valid || !(killed || refused || file.right)) return {"wrong", details};
  return {refused ? "refused" : "valid", details};
}

/// The result in words.
std::string Attack(const Line& line, const std::string& how, const fs::path& folder, unsigned long seed) {
  Chance chance(seed);
  Result result;
  try {
    result = how == "kill" ? Killed(line, folder, chance) : WithFault(line, folder, chance);
  } catch (const std::exception& failure) {
    result = {"wrong", failure.what()};
  }
  auto text = std::string(result.first) + " " + how + " " + std::to_string(seed) + " " + result.second;
  for (char& c : text) c = c == '\r' || c == '\n' ? ' ' : c;
  return text;
}

int main(int argc, char** argv) {
  if (argc < 2 || argc == 3 || argc > 5) return 2;
  std::optional<rig::Scratch> scratch;  // a program to be killed uses its parent's
  if (argc != 2) scratch.emplace();
  const QApplication application(argc, argv);
  if (argc == 2) return Download(argv[1]).completed ? 0 : Refused;
  const auto seed = std::strtoul(argv[3], nullptr, 10);
  const Line line{fs::absolute(argv[1]), argc == 5 ? argv[4] : "1"};
  std::puts(Attack(line, argv[2], scratch->Path(), seed).c_str());
  return 0;
}
