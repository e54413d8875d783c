// Accessibility of a graph: role chart, its name, and a description that is made on request.
#pragma once

#include <QString>

class QWidget;

namespace bexlow::platform {

/// A widget that tells in words what it shows.
class DescribedChart {
 public:
  virtual ~DescribedChart() = default;
  virtual QString Description() const = 0;
  /// The read-out, which is text; null while it is hidden.
  virtual QWidget* WordsShown() const = 0;
};

/// Lets screen readers read every DescribedChart widget. May be called any number of times.
void InstallChartAccess();

}  // namespace bexlow::platform
