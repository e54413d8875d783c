// Shares live angles between two computers: one samples and sends, the other receives and shows.
#pragma once

namespace bexlow::platform {
class Form;
}

namespace bexlow::live {

platform::Form* MakeRemoteSession();

}  // namespace bexlow::live
