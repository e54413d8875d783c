// The three accelerometer axes: names of their controls, fields and EEPROM cells.
#pragma once

#include "link/Protocol.h"
#include "values/LiveSample.h"
#include "values/OnBoardParameters.h"

namespace bexlow::live {

struct AxisRow {
  const char* caption;
  const char *reading, *readingSlide, *strip;
  const char *dacSlide, *dacText;
  const char *cmdWriteDAC, *cmdCaption, *procedure;
  double values::LiveSample::*sample;
  double link::AxisReadings::*received;
  double values::OnBoardParameters::*dac;
  int address;  ///< of the DAC's high byte; the low byte follows
};

inline constexpr AxisRow AxisRows[] = {
    {"Acc X", "txtX", "SlideAccX", "stripX", "AxSlider", "txtSX", "cmdWriteDAC1", "Write DAC1",
     "cmdWriteDAC1_Click", &values::LiveSample::AccX, &link::AxisReadings::x,
     &values::OnBoardParameters::DAC1, 62},
    {"Acc Y", "txtY", "SlideAccY", "stripY", "AySlider", "txtSY", "cmdWriteDAC2", "Write DAC2",
     "cmdWriteDAC2_Click", &values::LiveSample::AccY, &link::AxisReadings::y,
     &values::OnBoardParameters::DAC2, 64},
    {"Acc Z", "txtZ", "SlideAccZ", "stripZ", "AzSlider", "txtSZ", "cmdWriteDAC3", "Write DAC3",
     "cmdWriteDAC3_Click", &values::LiveSample::AccZ, &link::AxisReadings::z,
     &values::OnBoardParameters::DAC3, 66},
};

}  // namespace bexlow::live
