// Makes the screens, each known by its base alone: its class lies in the file of its name. And the keys that
// more than one of them has.
#pragma once

#include <QKeyCombination>

#include <functional>

namespace bexlow {

namespace platform {
class Form;
}

namespace shared {
inline constexpr QKeyCombination ServiceChord = Qt::CTRL | Qt::Key_F11;
inline constexpr QKeyCombination DisplayChord = Qt::CTRL | Qt::Key_F12;
inline constexpr QKeyCombination SampleKey = Qt::Key_F5;
inline constexpr QKeyCombination ManualKey = Qt::Key_F1;
}  // namespace shared

namespace link {
/// The modal screen that picks the serial port, finds the logger, and reads what the program needs at first.
/// @param reached  told whether the on-board parameters were retrieved; not called for port 0
platform::Form* MakeConnect(std::function<void(bool)> reached);
}  // namespace link

namespace config {
/// Shows the logger's on-board parameters, reads them all and writes them back. Opening it starts a read.
platform::Form* MakeConfiguration();
/// Reads or writes any one cell of the logger's EEPROM, without a warning. A modal screen.
platform::Form* MakeEEPROM();
/// Finds offset and gain of the three accelerometers from the extremes of their samples, and writes them.
platform::Form* MakeCalibrate();
}  // namespace config

namespace live {
/// Shows the readings of the three accelerometers live; a hidden panel sets the logger's DAC values.
platform::Form* MakeAccelerometers();
/// Shows the two inclination angles live, and zeroes either of them in the logger.
platform::Form* MakeAngles();
/// Shares live angles between two computers: one samples and sends, the other receives and shows.
platform::Form* MakeRemoteSession();
}  // namespace live

namespace download {
/// Downloads the logger's stored data into a data file, and erases it in the logger.
/// @param openGraph  brings Graph to the front and runs its Open action
platform::Form* MakeDownloadErase(std::function<void()> openGraph);
}  // namespace download

namespace graph {
class DataScreen;
/// Draws a download, X above Y: a Linear run as a whole, a Bin file one pair of pages at a time.
DataScreen* MakeGraph();
}  // namespace graph

namespace review {
/// Reviews a two-channel run: the angles, and a cursor at each push of the wearer's button.
graph::DataScreen* MakeGraphBP();
/// Draws what Angles or Accelerometers saved, over the seconds recorded.
graph::DataScreen* MakeRecording();
}  // namespace review

namespace shell {
/// Who made the program and which version this is. A modal screen.
platform::Form* MakeAbout();
}  // namespace shell

}  // namespace bexlow
