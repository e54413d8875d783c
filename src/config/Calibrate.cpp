#include <cmath>

#include "config/WriteSequence.h"
#include "link/SamplingScreen.h"
#include "shared/General.h"
#include "shared/NumberBox.h"
#include "shared/Screens.h"

namespace bexlow::config {

using shared::NumberIn;
using shared::Shown;
using namespace platform;

namespace {

/// The cells that a calibration writes: offset X, Y, Z, then gain X, Y, Z, a word each.
constexpr int EndOfCalibrationCells = 14;  // one past the last; the first is cell 2
constexpr WritePlan CalibrationWrite{EndOfCalibrationCells, 0, false, "Writing Progress",
                                     [](int k) { return std::optional(k); }};
constexpr int ShakerEnableCell = 32;
constexpr int ShakerSettleMs = 1000;

// The gains of loggers lie near 323 bits, half of what gravity swings. An axis that was not turned over, or
// that is broken, gives far less or more.
constexpr double UsualGain = 323, FarFromUsual = 100;

class Calibrate : public link::SamplingScreen {
 public:
  Calibrate() : SamplingScreen("Calibrate", "Calibrate", link::CommandName::SampleAccelerometers) {
    mnuData->insertAction(mnuData->actions().at(1), mnuWrite);  // between Sample and the separator
    mnuWrite->setEnabled(false);  // without a sample it would overwrite the logger's calibration with zeros
    BuildBody();
  }

 private:
  /// The boxes of one axis.
  struct Axis {
    QLineEdit *current, *min, *max, *offset, *gain;
    QLabel* remark;
  };

  platform::Activity Activity() override {
    return write_.Running() ? write_.Activity() : SamplingScreen::Activity();
  }

  void BuildBody() {
    auto* hint = MakeLabel(
        "lblHint",
        "Choose Sample from the Data menu and turn the logger slowly through all its positions, so that "
        "each axis points straight up and straight down once. Choose Sample again to stop, then Write "
        "to store offset and gain in the logger. Sampling switches the shaker off, and it stays off: set "
        "Shaker Enable to 1 on Configuration afterwards if the wearer is to feel it.",
        this);
    hint->setWordWrap(true);
    auto* frame = MakeFrame("fraAcc", "Accelerometers", this);
    BuildGrid(frame);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 24);
    column->setSpacing(16);
    column->addWidget(hint);
    column->addWidget(frame);
    column->addWidget(progress_.frame);
    column->addStretch();
  }

  void BuildGrid(QWidget* frame) {
    auto* grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    const char* headings[] = {"Current Bits", "Min Bits", "Max Bits", "Offset", "Gain"};
    int column = 1;
    for (const char* heading : headings) {
      grid->setColumnStretch(column, 1);
      grid->addWidget(MakeLabel("", heading, frame), 0, column++, Qt::AlignHCenter);
    }
    int line = 1;
    for (const char* letter : {"X", "Y", "Z"}) {
      const auto& axis = axes_[static_cast<std::size_t>(line - 1)] = BuildAxis(letter, line, grid, frame);
      connect(axis.current, &QLineEdit::textChanged, this, [this, axis] { Widen(axis); });
      grid->addWidget(axis.remark, line++, 6);
    }
  }

  Axis BuildAxis(const char* letter, int line, QGridLayout* grid, QWidget* frame) {
    struct Column {
      QLineEdit* Axis::*box;
      const char *name, *heading;
    };
    constexpr Column columns[] = {{&Axis::current, "txt", "Current Bits"},
                                  {&Axis::min, "txtMin", "Min Bits"},
                                  {&Axis::max, "txtMax", "Max Bits"},
                                  {&Axis::offset, "txtOffset", "Offset"},
                                  {&Axis::gain, "txtGain", "Gain"}};
    const QString caption = QString("Acc ") + letter;
    Axis axis{};
    int column = 1;
    for (const auto& [box, name, heading] : columns) {
      axis.*box = MakeReadOnlyBox((QByteArray(name) + letter).constData(), caption + " " + heading, frame);
      (axis.*box)->setAlignment(Qt::AlignRight);
      grid->addWidget(axis.*box, line, column++);
    }
    grid->addWidget(MakeLabel("", caption, frame, axis.current), line, 0);
    axis.remark = MakeLabel((QByteArray("lblRemark") + letter).constData(), "bits", frame);
    return axis;
  }

  void Starting() override {
    ClearRun();
    mnuWrite->setEnabled(false);
    MsgBox("Shaker will be disabled prior to calibration start!");
    Machine::Get().Repaint();
    DisableShaker();
    shared::WaitMilliseconds(ShakerSettleMs);
  }

  // Clear the current box first: its change handler refills the others.
  void ClearRun() {
    CalibrationValues = {};
    sampled_ = false;
    for (const Axis& axis : axes_) {
      for (auto* box : {axis.current, axis.min, axis.max, axis.offset, axis.gain}) box->clear();
      axis.min->setText("1024");  // above every 10-bit sample, so that the first one becomes both extremes
      axis.max->setText("0");
      axis.remark->setText("bits");
    }
  }

  // The shaker stays off: only the user knows whether the next run needs it.
  void DisableShaker() {
    link::OpenCommPort(MSComm1, *this);
    link::Send(MSComm1, link::WriteEeprom(ShakerEnableCell, 0));
    link::CloseCommPort(MSComm1, *this);
  }

  void Take(const link::Bytes& reply) override {
    const auto bits = link::AccelerometerReadings(reply);
    if (!bits) return;
    auto& sample = shared::Shared.LiveSample;
    sample.AccX = bits->x;
    sample.AccY = bits->y;
    sample.AccZ = bits->z;
    sampled_ = true;
    std::size_t i = 0;
    for (const double reading : {bits->x, bits->y, bits->z}) axes_[i++].current->setText(Shown(reading));
  }

  void Widen(const Axis& axis) {
    const double bits = NumberIn(*axis.current);
    if (bits < NumberIn(*axis.min)) axis.min->setText(axis.current->text());
    if (bits > NumberIn(*axis.max)) axis.max->setText(axis.current->text());
    const double min = NumberIn(*axis.min);
    const double max = NumberIn(*axis.max);
    axis.offset->setText(Shown((max + min) / 2));
    axis.gain->setText(Shown((max - min) / 2));
  }

  void Stopped() override {
    mnuWrite->setEnabled(sampled_);
    for (std::size_t i = 0; i < axes_.size(); ++i) {
      CalibrationValues[i] = NumberIn(*axes_[i].offset);
      const double gain = CalibrationValues[axes_.size() + i] = NumberIn(*axes_[i].gain);
      if (sampled_ && std::abs(gain - UsualGain) > FarFromUsual)
        axes_[i].remark->setText("bits, far from a logger's usual gain of about 323");
    }
  }

  std::uint8_t ByteAt(int k) const {
    const auto index = IndexOf(k);
    return Encode(Storage::U16, CalibrationValues.at(index / 2))[index % 2];
  }

  Progress progress_ = MakeProgress("fraProgress", "PBar", "Write Progress", EndOfCalibrationCells, this);
  WriteSequence write_{*this, CalibrationWrite, progress_, [this](int k) { return ByteAt(k); },
                       [this](bool enabled) { mnuSample->setEnabled(enabled); }};
  QAction* mnuWrite = AddEntry(mnuData, "mnuWrite", "&Write", [this] { write_.mnuWrite_Click(); });
  std::array<Axis, 3> axes_{};
  /// Offset X, Y, Z, then gain X, Y, Z, in bits: fixed when a run stops; the write sends these, not the
  /// boxes.
  std::array<double, 6> CalibrationValues{};
  bool sampled_ = false;  ///< the run has taken a sample
};

}  // namespace

Form* MakeCalibrate() { return new Calibrate; }

}  // namespace bexlow::config
