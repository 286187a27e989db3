// Counts the owners of every entry of both pools, over cells, formulas, programs of undo, names and
// variables, and compares them with what the pools believe. An entry that nobody owns, or that has
// an owner too many or too few, is told by its index.
#pragma once

#include <string>

namespace vorn {

// What is wrong with the pools, a line for each entry; empty if nothing is.
std::string poolFaults();

// Live entries of the two pools.
int liveTexts();
int liveFormulas();

} // namespace vorn
