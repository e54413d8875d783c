// Shows the logger's on-board parameters, reads them all and writes them back. Opening it starts a read.
#pragma once

namespace bexlow::platform {
class Form;
}

namespace bexlow::config {

platform::Form* MakeConfiguration();

}  // namespace bexlow::config
