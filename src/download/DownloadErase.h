// Downloads the logger's stored data into a data file, and erases it in the logger.
#pragma once

#include <functional>
#include <optional>

#include "download/Erase.h"
#include "link/Protocol.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QProgressBar;

namespace bexlow::download {

class RunPreview;

class DownloadErase : public platform::Form {
  Q_OBJECT

 public:
  /// @param openGraph  brings Graph to the front and runs its Open action
  explicit DownloadErase(std::function<void()> openGraph);

 private:
  void BuildMenu();
  void BuildBody();

  void mnuDownload_Click();
  void mnuReturn_Click();
  void MSComm1_OnComm();
  void TimerSampling_Timer();

  bool RetrieveAll();
  bool RetrieveModeParameters();
  bool RetrieveFirmwareParameters();
  bool RetrieveHeader1Parameters();
  bool RetrieveHeader2Parameters();
  std::optional<link::Bytes> Retrieve(const link::Block& block);

  bool ChooseFile();
  void StartPages();
  void TakePage(const link::Bytes& reply, std::size_t stepsSent);
  void StorePage(std::int32_t number, const link::Bytes& page);
  void EndRest();
  void RequestPage(std::size_t stepsSent = 0);
  link::Request BeginNextRequest(const link::Bytes& reply) const;
  static bool EndsData(const link::Bytes& reply);
  platform::Activity Activity() const;
  std::string TimeLeft() const;
  void FinishDownload();
  void StopDownload();
  void MakeLinearCSV(const std::string& dataFileName);
  void BackToIdle();

  std::function<void()> openGraph_;
  platform::MSComm MSComm1;
  platform::MSComm MSComm3;
  platform::Timer TimerSampling;
  platform::Timer resting_;
  platform::CommonDialog CommonDialog1;
  Erase erase_;
  /// How many bytes of a torn reply waited when the watchdog asked again. The new reply follows them, so the
  /// bytes taken next are never a page, even if on a line that stalls their number is that of a page.
  std::size_t torn_ = 0;

  QAction* mnuDownload = nullptr;
  QAction* mnuErase = nullptr;
  QGroupBox* fraPBar = nullptr;
  QProgressBar* PBar = nullptr;
  QLineEdit* txtMode = nullptr;
  QLineEdit* txtChannels = nullptr;
  QLineEdit* txtTimer = nullptr;
  QLineEdit* txtBufferLen = nullptr;
  QLabel* lblWarning = nullptr;
  RunPreview* preview_ = nullptr;
};

}  // namespace bexlow::download
