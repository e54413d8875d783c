// What Accelerometers and Angles share: strips of the samples, and a data file to save them to.
#pragma once

#include "files/DataFile.h"
#include "link/SamplingScreen.h"
#include "live/LiveStrips.h"

namespace bexlow::live {

class RecordingScreen : public link::SamplingScreen {
 public:
  /// A data file was begun at this path: no screen but this one goes on saving to it.
  static void EndSavingOfOthers(const std::string& path, const platform::Form& but);

 protected:
  /// @param name   of the screen, and its caption
  /// @param write  appends the sample to the data file
  RecordingScreen(const char* name, link::CommandName command, files::DataFileKind file,
                  bool (*write)(const std::string& time));

  /// Decodes a sample into the live sample. An exception ends the chain.
  virtual void Decode(const link::Bytes& reply) = 0;
  void Show() override { strips_->Show(); }
  void Starting() override;
  void Stopped() override;

  LiveStrips* strips_ = new LiveStrips(this);

 private:
  void mnuSave_Click();
  bool AnotherSaves() const;
  void SaveToOwnFile();
  void Take(const link::Bytes& reply) override;
  platform::Activity Activity() override;

  const files::DataFileKind file_;
  bool (*const write_)(const std::string& time);
  platform::CommonDialog CommonDialog1;
  bool writing_ = true;  ///< the last sample could be written
  QAction* mnuSave = AddCheckEntry(mnuData, "mnuSave", "Sa&ve", [this] { mnuSave_Click(); });
};

}  // namespace bexlow::live
