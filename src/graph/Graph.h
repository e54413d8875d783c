// Draws a download, X above Y: a Linear run as a whole, a Bin file one pair of pages at a time.
#pragma once

namespace bexlow::graph {

class DataScreen;

DataScreen* MakeGraph();

}  // namespace bexlow::graph
