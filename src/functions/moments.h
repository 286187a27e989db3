// Count, sum and sum of squares of numbers, gathered in one pass, and the variances they give.
// Rounding may leave a deviation a hair below 0, whose root is no number; a formula shows it as an
// error.
#pragma once

namespace vorn {

struct Moments {
    double count = 0;
    double sum = 0;
    double squares = 0;

    void add(double number)
    {
        count += 1;
        sum += number;
        squares += number * number;
    }

    double deviation() const { return count * squares - sum * sum; }

    // Of a sample, which takes two numbers, and of a whole population.
    double sampleVariance() const { return deviation() / (count * (count - 1)); }
    double populationVariance() const { return deviation() / (count * count); }
};

} // namespace vorn
