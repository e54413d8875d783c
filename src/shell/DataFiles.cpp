#include "shell/DataFiles.h"

#include <system_error>

#include "platform/machine/Folders.h"
#include "platform/machine/TextFile.h"
#include "shell/ErrorHandler.h"
#include "shell/Records.h"

namespace bexlow::shell {

namespace {

bool AppendRecord(const char* procedure, const std::string& record) {
  return GuardedIn("General", procedure, [&] { platform::Append(Shared.DataFileName, record); });
}

}  // namespace

std::string WriteDataFileHeader(platform::CommonDialog& dialog, download::DataFileKind kind) {
  dialog.CancelError = true;
  dialog.Flags = platform::OverwritePrompt;
  dialog.Filter = "All Files (*.*)|*.*|Text Files(*.txt)|*.txt|QBX Files (*.qbx)|*.qbx";
  dialog.FilterIndex = 3;
  dialog.InitDir = platform::DataFilesFolder().string();
  try {
    dialog.ShowSave();
  } catch (const std::system_error&) {
    return {};  // cancelled: callers look at the dialog's FileName
  }
  try {
    const auto& parameters = Shared.OnBoardParameters;
    platform::WriteWhole(dialog.FileName,
                         download::DataFileHeader(kind, Shared.ProgramVersionText, Shared.DownloadHeader,
                                                  parameters.BinLinearMode, parameters.LinearChannels));
  } catch (const std::system_error& error) {
    Shared.DataFileName.clear();
    return std::string("The data file cannot be created!\r\n") + error.what();
  }
  Shared.DataFileName = dialog.FileName;
  return {};
}

bool WriteDownloadPagesToFile(std::int32_t page) {
  return AppendRecord("WriteDownloadPagesToFile", download::PageRecord(page, Shared.PageDataText));
}

bool WriteAccelerometersToFile(const std::string& time) {
  return AppendRecord("WriteAccelerometersToFile", download::AccelerometersRecord(Shared.LiveSample, time));
}

bool WriteAnglesToFile(const std::string& time) {
  return AppendRecord("WriteAnglesToFile", download::AnglesRecord(Shared.LiveSample, time));
}

}  // namespace bexlow::shell
