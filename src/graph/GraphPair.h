// The graphs of a run, X above Y, as the screens that draw data files show them; those of accelerometers are
// three.
#pragma once

#include <filesystem>

#include "graph/Report.h"
#include "platform/graph/CWGraph.h"

class QLabel;
class QPushButton;

namespace bexlow::graph {

class GraphPair : public QWidget {
  Q_OBJECT

 public:
  explicit GraphPair(QWidget* parent);

  /// The Linear style: a graph for each axis, x axes auto-scaled, y axes at full scale.
  void PrepareLinear(std::span<const files::Axis> axes = files::AngleAxes);
  /// The Bin style: x axes at full scale, y axes auto-scaled.
  void PrepareBin();
  /// Hands what the file's header says to the read-outs and to the titles of pictures. Call it before Show.
  void TellFile(const std::string& path, const files::RunFacts& facts);
  /// Draws a run, which must stay where it is: x axes from 0 to the last index of the series. A recording
  /// shows its tenths, and as much more than the full scale as it holds.
  void Show(const files::Run& run);
  /// Draws a pair of bin pages, and tells which; and if the second is not the page after the first.
  void Show(const files::DegreeArrays& degrees, int firstPage, int secondPage);
  /// Tells the run in no line of its own, where boxes do; which pair of bin pages is drawn it tells all the
  /// same.
  void HideRunLine();
  /// When a sample of the run was taken; empty where that is not known.
  QString TimeWords(double sample) const;
  /// Page Up and Page Down in a graph press these buttons while either is enabled; else they move the view.
  void PageWith(QPushButton* back, QPushButton* forward);
  /// The x views of the graphs move together, or each by itself.
  void MoveTogether(bool together) { CWGraph1->SetXLinkActive(together); }

  platform::CWGraph* CWGraph1;
  platform::CWGraph* CWGraph2;

 private:
  platform::CWGraph* AddGraph();
  void Draw(std::size_t axis);
  std::optional<platform::SampleTimes> TimesOf(const files::Run& run) const;
  void ShowNumbers(std::size_t axis);
  std::optional<ViewNumbers> NumbersOf(std::size_t axis) const;
  QString NoteOf(std::size_t sample) const;
  void BuildMenu(std::size_t axis);
  std::optional<View> InView() const;
  std::string NumbersText() const;
  void SaveView();
  void Report() const;
  std::string NameOf(const std::vector<const platform::CWGraph*>& graphs) const;
  void SetHeadings(const std::string& pages);
  void TellRun(const std::string& words);
  std::string RunText() const;

  std::vector<platform::CWGraph*> graphs_;  ///< from top to bottom, one for each axis
  QLabel* lblRun_;                          ///< whose the curves are and how long, or how to open a file
  bool hasRunLine_ = true;
  std::filesystem::path file_;
  std::string stem_, words_;  ///< of the file and what is drawn of it
  files::RunFacts facts_;
  const files::Run* run_ = nullptr;
  std::optional<platform::SampleTimes> times_;
  std::size_t writtenEnd_ = 0;  ///< one past the last sample that was written
};

}  // namespace bexlow::graph
