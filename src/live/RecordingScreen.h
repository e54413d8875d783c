// What Accelerometers and Angles share: a chain that shows samples, and a data file to save them to.
#pragma once

#include <string>

#include "files/DataFile.h"
#include "link/SamplingChain.h"
#include "live/LiveStrips.h"
#include "platform/controls/CommonDialog.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"

namespace bexlow::live {

/// What differs between the two.
struct RecordingKind {
  const char* screen;  ///< its name, and its caption
  link::CommandName command;
  files::DataFileKind file;
  bool (*write)(const std::string& time);  ///< appends the sample to the data file
};

class RecordingScreen : public platform::Form {
  Q_OBJECT

 public:
  /// A screen has begun a data file at this path: no other one that has recorded there saves to it any more.
  static void GiveUp(const std::string& path, const platform::Form& toScreen);

 protected:
  explicit RecordingScreen(const RecordingKind& kind);

  /// Decodes a sample into the live sample. An exception ends the chain.
  virtual void Decode(const link::Bytes& reply) = 0;
  /// Shows the sample that was decoded last.
  virtual void Show() = 0;
  /// Sampling is about to start; the port is not open yet.
  virtual void Starting() {}
  /// Sampling has stopped: clears what showed samples.
  virtual void Stopped() = 0;

  link::SamplingChain& Chain() { return chain_; }
  platform::MSComm& SerialControl() { return MSComm1; }
  LiveStrips& Strips() { return *strips_; }

 private:
  void BuildMenu();
  void mnuSave_Click();
  void PrepareRun();
  void FinishRun();
  bool AnotherSaves() const;
  void SaveToOwnFile();
  void Take(const link::Bytes& reply);
  platform::Activity Activity();

  const RecordingKind& kind_;
  platform::MSComm MSComm1;
  platform::CommonDialog CommonDialog1;
  link::SamplingChain chain_;
  LiveStrips* strips_;
  std::int64_t saved_ = 0;  ///< samples of this run
  QAction* mnuSave = nullptr;
  QAction* mnuSample = nullptr;
};

}  // namespace bexlow::live
