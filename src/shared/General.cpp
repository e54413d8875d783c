#include "shared/General.h"

#include <cmath>

#include "files/LinearCsv.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/System.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"

namespace bexlow::shared {

using files::DataFileKind;

namespace {

std::string HeaderOf(DataFileKind kind) {
  const auto& parameters = Shared.OnBoardParameters;
  return files::DataFileHeader(kind, Shared.ProgramVersionText, Shared.DownloadHeader,
                               parameters.BinLinearMode, parameters.LinearChannels);
}

// A file that was moved or deleted meanwhile begins again with its header, so that the records can be read.
bool AppendRecord(const char* procedure, DataFileKind kind, const std::string& record) {
  return GuardedIn("General", procedure, [&] {
    std::error_code unknown;
    const bool begins = !std::filesystem::exists(Shared.DataFileName, unknown) && !unknown;
    platform::Append(Shared.DataFileName, begins ? HeaderOf(kind) + record : record);
    Shared.RecordsInFile = begins ? 1 : Shared.RecordsInFile + 1;
    if (begins) NoteFailure(Shared.DataFileName + " was gone and begins anew");
  });
}

}  // namespace

// Measured on the fine counter: on the millisecond counter alone a wait could be short by most of a
// millisecond, and the logger needs the whole pause between two bytes.
void WaitMilliseconds(int milliseconds) { WaitMicroseconds(std::int64_t{1000} * milliseconds); }

void WaitMicroseconds(std::int64_t microseconds) {
  constexpr std::int64_t Noticed = 100'000;
  if (microseconds <= 0) return;
  if (microseconds >= Noticed) platform::EventGate::Get().NoteWait();
  auto& machine = platform::Machine::Get();
  const auto start = machine.QueryPerformanceCounter();
  while (true) {
    const double left = static_cast<double>(microseconds) - platform::SecondsSince(start) * 1e6;
    if (left <= 0) return;
    machine.Idle(std::chrono::microseconds(static_cast<std::int64_t>(std::ceil(left))));
  }
}

void TestForFileFolders() {
  GuardedIn("General", "TestForFileFolders", [] {
    for (const auto& folder : {platform::DataFilesFolder(), platform::LogsFolder()}) {
      std::error_code error;
      std::filesystem::create_directory(folder, error);
      if (error) throw std::system_error(error, folder.string());
    }
  });
}

std::string WriteDataFileHeader(platform::CommonDialog& dialog, DataFileKind kind) {
  dialog.Flags = platform::OverwritePrompt;
  dialog.Filter = "All Files (*.*)|*.*|Text Files(*.txt)|*.txt|QBX Files (*.qbx)|*.qbx";
  dialog.FilterIndex = 3;
  dialog.InitDir = platform::DataFilesFolder().string();
  if (!dialog.ShowSave()) return {};  // cancelled: callers look at the dialog's FileName
  try {
    platform::WriteWhole(dialog.FileName, HeaderOf(kind));
  } catch (const std::system_error& error) {
    Shared.DataFileName.clear();
    return std::string("The data file cannot be created!\r\n") + error.what();
  }
  Shared.DataFileName = dialog.FileName;
  Shared.RecordsInFile = 0;
  return {};
}

bool WriteDownloadPagesToFile(std::int32_t page) {
  return AppendRecord("WriteDownloadPagesToFile", DataFileKind::DownloadPages,
                      files::PageRecord(page, Shared.PageDataText));
}

bool WriteAccelerometersToFile(const std::string& time) {
  return AppendRecord("WriteAccelerometersToFile", DataFileKind::Accelerometers,
                      files::AccelerometersRecord(Shared.LiveSample, time));
}

bool WriteAnglesToFile(const std::string& time) {
  return AppendRecord("WriteAnglesToFile", DataFileKind::Angles,
                      files::AnglesRecord(Shared.LiveSample, time));
}

void WriteLinearCsv(const std::string& dataFileName) {
  const std::string csvName = files::CsvFileName(dataFileName);
  std::error_code none;  // where there is no CSV file yet
  if (csvName == dataFileName || std::filesystem::equivalent(csvName, dataFileName, none))
    values::Throw(std::errc::file_exists, "The CSV file would replace the data file " + dataFileName);
  const std::string dataFile = platform::ReadWhole(dataFileName);
  std::string csv;
  try {
    files::AppendLinearCsv(dataFile, csv);
  } catch (const std::exception&) {
    platform::WriteWhole(csvName, csv);
    throw;
  }
  platform::WriteWhole(csvName, csv);
}

}  // namespace bexlow::shared
