#include "Options.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "Numbers.h"

namespace bexlow::simulator {
namespace {

using Value = std::string_view;

struct Option {
  std::string_view name;
  std::string_view value;  // its name in the help; empty = takes none
  std::string_view help;
  void (*set)(Options& options, Value value);
};

// The result of the word that `value` is.
template <typename Result>
Result Choose(Value value, std::string_view option,
              std::initializer_list<std::pair<std::string_view, Result>> words) {
  std::string known;
  for (const auto& [word, result] : words) {
    if (word == value) return result;
    known.append(known.empty() ? "" : " or ").append(word);
  }
  throw std::invalid_argument(std::string(option) + " takes " + known + ", not \"" + std::string(value) +
                              '"');
}

PushPlan ParsePushes(Value value) {
  if (value == "all") return {.share = 1};
  if (value.ends_with('%'))
    return {.share = Decimal(value.substr(0, value.size() - 1), "--pushes", 0, 100) / 100};
  return {.count = WholeNumber(value, "--pushes", 0, 1'000'000)};
}

void SetPace(Options& options, Value value) {
  options.logger.byteTime = Choose<Time>(value, "--pace", {{"on", ByteTime}, {"off", Time{0}}});
}

void SetMotion(Options& options, Value value) {
  options.logger.motion = Choose<Motion>(
      value, "--motion", {{"sway", Motion::Sway}, {"turn", Motion::Turn}, {"still", Motion::Still}});
}

void SetBurst(Options& options, Value value) {
  options.port = Choose<HostPort>(value, "--burst", {{"1", {}}, {"8", PlainPort}, {"64", AdapterPort}});
}

constexpr Option OptionTable[] = {
    {"--link", "PATH", "symbolic link to the device; removed at the end",
     [](Options& o, Value v) { o.link = v; }},
    {"--mode", "bin|linear", "mode of the stored run and of cell 42 (linear)",
     [](Options& o, Value v) {
       o.logger.stored.linear = Choose<bool>(v, "--mode", {{"bin", false}, {"linear", true}});
     }},
    {"--channels", "1|2|3", "channels of a Linear run and cell 43: X, Y, both (3)",
     [](Options& o, Value v) {
       o.logger.stored.channels = static_cast<int>(WholeNumber(v, "--channels", 1, 3));
     }},
    {"--pages", "N", "pages that hold data, 1 to N; 0 to 2047 (24)",
     [](Options& o, Value v) { o.logger.stored.pages = WholeNumber(v, "--pages", 0, PageCount - 1); }},
    {"--run-pages", "N", "pages of the run that a launch logs (12)",
     [](Options& o, Value v) { o.logger.runPages = WholeNumber(v, "--run-pages", 0, PageCount - 1); }},
    {"--pushes", "N|P%|all", "button pushes of a run: a number, or a share of its pairs (5)",
     [](Options& o, Value v) { o.logger.stored.pushes = ParsePushes(v); }},
    {"--seed", "S", "another number gives other samples and other random faults (1)",
     [](Options& o, Value v) { o.logger.stored.seed = WholeNumber(v, "--seed", 0, 1'000'000'000'000); }},
    {"--motion", "sway|turn|still", "live readings: leaning about, turned all round, constant (sway)",
     SetMotion},
    {"--still", "", "the same as --motion still", [](Options& o, Value) { o.logger.motion = Motion::Still; }},
    {"--erase-seconds", "S", "time of an erase, 0 to 300, paced at least 3.2 (8)",
     [](Options& o, Value v) {
       o.logger.eraseTime =
           std::chrono::milliseconds(static_cast<long>(Decimal(v, "--erase-seconds", 0, 300) * 1000));
     }},
    {"--pace", "on|off", "keep the pace of 19200 baud, 0.52 ms a byte, or answer at once (on)", SetPace},
    {"--burst", "1|8|64", "bytes come at once, as from a 16550, as from an adapter; see below (1)", SetBurst},
    {"--fault", "FAULT", "spoil replies, see below; may be given more than once",
     [](Options& o, Value v) { o.faults.push_back(ParseFault(v)); }},
    {"--log", "PATH", "append what passes: \"MICROSECONDS < 64 01 2C\", \"MICROSECONDS > 264 bytes\"",
     [](Options& o, Value v) { o.log = v; }},
    {"--samples", "PATH", "append each live sample sent, its words in decimal",
     [](Options& o, Value v) { o.samples = v; }},
    {"--dump-pages", "PATH", "keep the data memory there, 2048 x 264 bytes",
     [](Options& o, Value v) { o.dumpPages = v; }},
    {"--dump-eeprom", "PATH", "keep the 256 settings cells there",
     [](Options& o, Value v) { o.dumpEeprom = v; }},
    {"--help", "", "print this", [](Options& o, Value) { o.help = true; }},
};

constexpr std::string_view HelpBehindOptions = R"(
Prints "ready DEVICE" when the device is there, and again where the line has come back under another name.
SIGTERM and SIGINT end it. SIGUSR1 pulls the cable: it hears and says nothing. SIGUSR2 plugs it in again.
Times in the log are those of the monotonic clock. A dump is replaced in one step at the start, after a cell was
written, when an erase is done and when a launched run is logged: as soon as the port is closed behind the erase.

A 16550 hands on every eight bytes, and fewer when four byte times have passed without another one; an adapter
without the low-latency flag hands on every 16 ms what has arrived.

A FAULT is KIND[:AMOUNT][/LETTER][@N | %N | ~P]. It counts the replies to the command of that letter, or all replies,
and strikes the Nth, every Nth, or each with a chance of P (0 to 1); without any of the three it strikes all.
  silence[:MS]   no reply from this one on, for MS milliseconds or for good
  short[:N]      the last N bytes are missing (1)
  long[:N]       N bytes too many (1)
  late[:MS]      held back for MS milliseconds, and the next replies behind it (1500)
  drop           this reply is lost
  double         sent twice
  cut[:N]        N bytes are missing in the middle (1)
  vanish[:MS]    the device goes away after half of the reply, for MS milliseconds or for good
Examples:
  --fault short/d@3               the third page comes with 263 bytes
  --fault late:2500%10            every tenth reply waits for 2.5 s
  --fault drop~0.05 --seed 7      one reply in twenty is lost, the same ones at each start
  --fault vanish:4000/d@20        the line is gone for 4 s in the middle of the twentieth page
)";

const Option* FindOption(std::string_view name) {
  const auto* const found = std::ranges::find(OptionTable, name, &Option::name);
  if (found == std::end(OptionTable)) throw std::invalid_argument("no such option: " + std::string(name));
  return found;
}

}  // namespace

Options ParseOptions(std::span<const char* const> arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    const auto equals = argument.find('=');
    const auto* const option = FindOption(argument.substr(0, equals));
    const bool hasValue = equals != std::string_view::npos;
    std::string_view value = hasValue ? argument.substr(equals + 1) : std::string_view{};
    if (option->value.empty() && hasValue)
      throw std::invalid_argument(std::string(option->name) + " takes no value");
    if (!option->value.empty() && !hasValue) {
      if (++i == arguments.size()) throw std::invalid_argument(std::string(option->name) + " needs a value");
      value = arguments[i];
    }
    option->set(options, value);
  }
  return options;
}

std::string HelpText() {
  std::ostringstream text;
  text << "Usage: bexlow-logger [OPTION]...\nA posture logger to plug in where there is none, on a "
          "pseudo-terminal.\n\n";
  for (const auto& [name, value, help, set] : OptionTable) {
    std::string left = "  " + std::string(name) + (value.empty() ? "" : " ") + std::string(value);
    left.resize(std::max<std::size_t>(left.size() + 1, 28), ' ');
    text << left << help << '\n';
  }
  text << HelpBehindOptions;
  return text.str();
}

}  // namespace bexlow::simulator
