// What the command line chooses.
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Faults.h"
#include "Logger.h"
#include "Outbox.h"

namespace bexlow::simulator {

struct Options {
  LoggerSetup logger;
  std::vector<Fault> faults;
  HostPort port;
  std::string link;  // paths; empty = not wanted
  std::string log;
  std::string samples;
  std::string dumpPages;
  std::string dumpEeprom;
  bool help = false;
};

/// Reads "--name value" and "--name=value".
/// @throws std::invalid_argument that names the option and what it takes
Options ParseOptions(std::span<const char* const> arguments);

/// What --help prints.
std::string HelpText();

}  // namespace bexlow::simulator
