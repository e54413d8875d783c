#include "graph/DataScreen.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/Screens.h"

namespace bexlow::review {

namespace {

class Recording : public graph::DataScreen {
 public:
  Recording() : DataScreen("Recording", "Recording", true) { BuildBody(); }

  // What is no recording leaves the one on show.
  void Open(const std::string& fileName) override {
    shared::Guarded(*this, "mnuOpen_Click", [&] {
      files::Run run;
      if (!files::ReadRecording(platform::ReadWhole(fileName), run))
        return platform::MsgBox(
            "This is not a recording of Angles or Accelerometers, or its header is damaged!");
      shared::ForgetFailure(*this);
      FileName(fileName);
      run_ = std::move(run);
      graphs_->PrepareLinear(run_.axes);
      graphs_->TellFile(fileName, {});
      graphs_->CWGraph1->ShowTime(true);
      graphs_->Show(run_);
    });
  }

 private:
  void mnuOpen_Click() override {
    if (graph::AskForDataFile(CommonDialog1)) Open(CommonDialog1.FileName);
  }

  files::Run run_;
};

}  // namespace

graph::DataScreen* MakeRecording() { return new Recording; }

}  // namespace bexlow::review
