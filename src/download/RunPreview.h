// The run of a download while it arrives: its header values, and its pages as graphs.
#pragma once

#include <QWidget>

#include "files/Series.h"

class QGridLayout;
class QLabel;
class QLineEdit;

namespace bexlow::graph {
class GraphPair;
}

namespace bexlow::download {

class RunPreview : public QWidget {
  Q_OBJECT

 public:
  explicit RunPreview(QWidget* parent);

  /// Adds a box behind those that are there, four a line.
  void AddBox(QLineEdit*& box, const char* name, const char* label, const char* caption);
  /// Forgets the run on show, before another is asked for.
  void Clear();
  /// Shows the header of the run that is to come.
  void ShowHeader(const files::DownloadHeader& header, double BinLinearMode, double LinearChannels);
  /// Shows the file that the pages go to, and empty graphs.
  void Begin(const std::string& fileName);
  /// Adds a page that is in the file, and draws it unless a page was drawn less than 0.1 s ago.
  void Add(std::int32_t page, const std::string& pageDataText);
  /// Notes a page that could not be stored, or one that came only after it was asked for again.
  void NoteLost(std::int32_t page);
  void NoteLate(std::int32_t page);
  void TellTimeLeft(const std::string& text);
  /// Draws what has not been drawn yet, and lets the user move about in it.
  void End();

 private:
  void TellPages();
  void Draw();
  void DrawBins();

  QGridLayout* boxes_;
  QLineEdit* txtSerialNumber = nullptr;
  QLineEdit* txtLaunchTime = nullptr;
  QLineEdit* txtFirmwareVersion = nullptr;
  QLineEdit* txtSamplingFrequency = nullptr;
  QLineEdit* txtDataFile = nullptr;
  QLineEdit* txtPages = nullptr;
  QLineEdit* txtTimeLeft = nullptr;
  QLabel* lblRemark;
  QLabel* lblHelp;
  graph::GraphPair* graphs_;
  std::string header_;  ///< as in the file
  bool bins_ = false, hasLayout_ = true;
  int channels_ = 0;
  std::int32_t page_ = 0;  ///< the last one stored
  std::vector<std::int32_t> lost_, late_;
  files::Run run_;
  std::string records_;  ///< of the last pair of bin pages
  bool drawn_ = true;
  std::int64_t drawnAt_ = 0;  ///< reading of the high-resolution counter
};

}  // namespace bexlow::download
