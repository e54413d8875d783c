// The three accelerometer axes: names of their controls, fields and EEPROM cells.
#pragma once

#include "config/OnBoardParameters.h"
#include "link/Protocol.h"
#include "live/LiveSample.h"

namespace bexlow::live {

struct AxisRow {
  const char* caption;
  const char *reading, *readingSlide, *strip;
  const char *dacSlide, *dacText;
  const char *cmdWriteDAC, *cmdCaption, *procedure;
  double LiveSample::*sample;
  double link::AxisReadings::*received;
  double config::OnBoardParameters::*dac;
  int address;  ///< of the DAC's high byte; the low byte follows
};

inline constexpr AxisRow AxisRows[] = {
    {"Acc X", "txtX", "SlideAccX", "stripX", "AxSlider", "txtSX", "cmdWriteDAC1", "Write DAC1",
     "cmdWriteDAC1_Click", &LiveSample::AccX, &link::AxisReadings::x, &config::OnBoardParameters::DAC1, 62},
    {"Acc Y", "txtY", "SlideAccY", "stripY", "AySlider", "txtSY", "cmdWriteDAC2", "Write DAC2",
     "cmdWriteDAC2_Click", &LiveSample::AccY, &link::AxisReadings::y, &config::OnBoardParameters::DAC2, 64},
    {"Acc Z", "txtZ", "SlideAccZ", "stripZ", "AzSlider", "txtSZ", "cmdWriteDAC3", "Write DAC3",
     "cmdWriteDAC3_Click", &LiveSample::AccZ, &link::AxisReadings::z, &config::OnBoardParameters::DAC3, 66},
};

}  // namespace bexlow::live
