// The values that several screens share, one instance of each for the whole run of the program.
#pragma once

#include "files/DataFile.h"

namespace bexlow::shared {

struct Records {
  std::string ProgramVersionText;
  std::int16_t CurrentCommPort = 0;  ///< 0: none selected

  values::OnBoardParameters OnBoardParameters;  ///< what was last read, not what was last written
  std::int16_t ParameterIndex = 2;              ///< position in the running read or write sequence
  values::ReadArray ReadArray{};

  values::LiveSample LiveSample;
  values::SampleClock SampleClock;

  files::DownloadHeader DownloadHeader;
  std::string DataFileName;        ///< path of the data file being written
  std::int64_t RecordsInFile = 0;  ///< that the data file holds
  std::string PageDataText;        ///< the page decoded last
  std::int16_t MaxDownloadPages = 0;
  std::int32_t DownloadPageNumber = 0;
  bool EndOfDataReached = false;
  std::int64_t LastReplyTime = 0;  ///< whole seconds, of the last page reply; not reset by a new download
  double TimerAdvanceCount = 0;
  std::int16_t HaltedEraseCommPort = 0;  ///< where a halted erase may go on in the logger; 0: nowhere
  bool GraphAfterDownload = false;
  std::string GraphFileName;

  std::string LastFailure;        ///< "14:05:07 Angles: words", for the status line; empty until there is one
  std::string LastFailureScreen;  ///< the caption in it
};

inline Records Shared;

}  // namespace bexlow::shared
