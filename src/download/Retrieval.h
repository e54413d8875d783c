// What a download reads of the logger before its pages: mode and channels, and the values of the header.
#pragma once

#include "platform/controls/MSComm.h"

namespace bexlow::download {

/// Fills OnBoardParameters and DownloadHeader, and calls `done` with 1 to 4 after each of its four reads.
/// @return what was not retrieved ("MODE"), where it ends; null if all has come
const char* RetrieveParameters(platform::MSComm& comm, const platform::Form& screen,
                               const std::function<void(int)>& done);

}  // namespace bexlow::download
