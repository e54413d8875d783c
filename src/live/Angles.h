// Shows the two inclination angles live, and zeroes either of them in the logger.
#pragma once

#include <array>
#include <functional>

#include "live/RecordingScreen.h"

class QGroupBox;
class QLineEdit;
class QPushButton;

namespace bexlow::platform {
class CWKnob;
}

namespace bexlow::live {

struct AngleRow;

class Angles : public RecordingScreen {
  Q_OBJECT

 public:
  Angles();

 private:
  /// The controls of one axis.
  struct Axis {
    const AngleRow* row = nullptr;
    QLineEdit* word = nullptr;
    QLineEdit* tare = nullptr;
    QLineEdit* angle = nullptr;
    platform::CWKnob* dial = nullptr;
    QPushButton* cmdTare = nullptr;
  };
  struct Tare {
    double word = 0, degrees = 0;
  };

  void Build();
  QGroupBox* BuildBoxes(const char* name, const char* caption, const char* unit, QLineEdit* Axis::*box,
                        const char* AngleRow::*boxName);
  QGroupBox* BuildDial(Axis& axis);

  void Decode(const link::Bytes& reply) override;
  void Show() override;
  void Starting() override;
  void Stopped() override;

  void cmdTare_Click(const Axis& axis);
  void GetTare(const Axis& axis);
  void RemoveTare(const Axis& axis);
  void WriteTare(const char* procedure, const Axis& axis, const std::function<Tare()>& tare);
  void EnableTareButtons(bool enabled);

  std::array<Axis, 2> axes_;
  link::AnglePair received_{};  ///< the words of the last sample, as received
};

}  // namespace bexlow::live
