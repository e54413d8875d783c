// Shows the readings of the three accelerometers live; a hidden panel sets the logger's DAC values.
#pragma once

#include <array>
#include <cstdint>

#include "live/RecordingScreen.h"

class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace bexlow::platform {
class CWSlide;
}

namespace bexlow::live {

struct AxisRow;

class Accelerometers : public RecordingScreen {
  Q_OBJECT

 public:
  Accelerometers();

 private:
  /// The controls of one axis.
  struct Axis {
    const AxisRow* row = nullptr;
    QLineEdit* reading = nullptr;
    platform::CWSlide* readingSlide = nullptr;
    platform::CWSlide* dacSlide = nullptr;
    QLineEdit* dacText = nullptr;
    QPushButton* cmdWriteDAC = nullptr;
  };

  void Build();
  void BuildReadings(QHBoxLayout& columns);
  void BuildDacPanel(QHBoxLayout& columns);
  void LinkSlideAndText(const Axis& axis);

  void Decode(const link::Bytes& reply) override;
  void Show() override;
  void Stopped() override;
  void ToggleDacPanel();
  void cmdWriteDAC_Click(const Axis& axis);
  void WriteDAC(double address, double value);
  void EnableDacButtons(bool enabled);

  std::array<Axis, 3> axes_;
  QGroupBox* fraHiddenSliders = nullptr;
  QLabel* lblNote = nullptr;
};

}  // namespace bexlow::live
