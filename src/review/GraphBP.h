// Reviews a two-channel run: the angles, and a cursor at each push of the wearer's button.
#pragma once

namespace bexlow::graph {
class DataScreen;
}

namespace bexlow::review {

graph::DataScreen* MakeGraphBP();

}  // namespace bexlow::review
