// The last half minute of the readings as curves, under the dials and slides of a live screen.
#pragma once

#include <QWidget>

#include <cstdint>
#include <memory>
#include <vector>

#include "live/Strip.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {
class CWGraph;
}

namespace bexlow::live {

class LiveStrips : public QWidget {
  Q_OBJECT

 public:
  explicit LiveStrips(QWidget* parent);

  /// Adds a curve beside the others.
  /// @param unit  of its values, for the title of the axis
  void AddStrip(const char* name, const QString& caption, const QString& unit, double minimum,
                double maximum);
  /// Stores a sample, even while a click holds the curves still.
  void Add(std::size_t strip, double value);
  /// Draws the stored samples within 0.1 s.
  void Show();
  /// Empties the curves, and starts their time.
  void Clear();

 private:
  struct Row {
    platform::CWGraph* graph;
    Strip values;
  };
  void Draw();
  void Pause();

  std::vector<Row> strips_;
  std::unique_ptr<platform::Alarm> drawing_;
  bool paused_ = false, due_ = false;
  std::int64_t startedAt_ = 0;  ///< reading of the high-resolution counter
};

}  // namespace bexlow::live
