#include "functions/random.h"

#include <random>

namespace vorn {

namespace {

std::minstd_rand randomGenerator;

// Seeds are milliseconds, a thousand small neighbours, whose first numbers would be small
// neighbours too. A few steps part them.
constexpr unsigned SettlingSteps = 16;

} // namespace

void seedRandom(unsigned seed)
{
    randomGenerator.seed(seed + 1);
    randomGenerator.discard(SettlingSteps);
}

int nextRandom()
{
    // The high bits of this kind of generator are the better ones.
    return static_cast<int>((randomGenerator() >> 16U) & static_cast<unsigned>(RandomMax));
}

} // namespace vorn
