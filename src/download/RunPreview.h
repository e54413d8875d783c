// The run of a download while it arrives: its header values, and its pages as graphs.
#pragma once

#include <QWidget>

#include <cstdint>
#include <string>

#include "files/DataFile.h"
#include "files/Series.h"

class QGridLayout;
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
  /// Shows a header and empty graphs.
  void Begin(const files::DownloadHeader& header, const std::string& fileName, double BinLinearMode,
             double LinearChannels);
  /// Adds a page, and shows it unless a page was shown less than 0.1 s ago.
  void Add(std::int32_t page, const std::string& pageDataText, const std::string& timeLeft);
  /// Shows what has not been shown yet, and clears the time left.
  void End();

 private:
  void Show();
  void ShowBins();

  QGridLayout* boxes_;
  QLineEdit* txtSerialNumber = nullptr;
  QLineEdit* txtLaunchTime = nullptr;
  QLineEdit* txtFirmwareVersion = nullptr;
  QLineEdit* txtSamplingFrequency = nullptr;
  QLineEdit* txtDataFile = nullptr;
  QLineEdit* txtPages = nullptr;
  QLineEdit* txtTimeLeft = nullptr;
  graph::GraphPair* graphs_;
  std::string timeLeft_;
  bool bins_ = false;
  int channels_ = 0;
  std::int32_t page_ = 0;
  files::Run samples_;
  std::string records_;  ///< of the last pair of bin pages
  bool unshown_ = false;
  std::int64_t shownAt_ = 0;  ///< reading of the high-resolution counter
};

}  // namespace bexlow::download
