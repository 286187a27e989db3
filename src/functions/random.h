// The random numbers of formulas: one generator for the process, seeded when the application is
// made, so that a run with a fixed clock gives the same numbers again.
#pragma once

namespace vorn {

// What nextRandom gives at most.
constexpr int RandomMax = 32767;

void seedRandom(unsigned seed);

// The next number, 0 to RandomMax.
int nextRandom();

} // namespace vorn
