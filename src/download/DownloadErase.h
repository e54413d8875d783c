// Downloads the logger's stored data into a data file, and erases it in the logger.
#pragma once

#include <functional>

#include "platform/controls/Form.h"

namespace bexlow::download {

/// @param openGraph  brings Graph to the front and runs its Open action
platform::Form* MakeDownloadErase(std::function<void()> openGraph);

}  // namespace bexlow::download
