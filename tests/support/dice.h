// Random numbers for tests: the same ones on every run.
#pragma once

#include <random>

namespace vorn {

class Dice {
public:
    explicit Dice(unsigned seed) : generator_(seed) {}

    // 0 to limit - 1.
    int below(int limit) { return static_cast<int>(any() % static_cast<unsigned>(limit)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    // Any 32 bits.
    unsigned any() { return static_cast<unsigned>(generator_()); }

private:
    std::mt19937 generator_;
};

} // namespace vorn
