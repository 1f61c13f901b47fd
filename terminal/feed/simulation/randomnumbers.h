#pragma once

#include <QtGlobal>

#include <random>

namespace feed {

/// Random numbers that are the same for a seed on every machine: the generator is fixed by the C++ standard, its
/// distributions are not, hence these, in whole numbers only.
class RandomNumbers
{
public:
    explicit RandomNumbers(quint64 seed) : generator(seed) {}

    /// 0 .. bound - 1.
    int below(int bound);
    /// True in so many of a thousand cases.
    bool chance(int perMille) { return below(1000) < perMille; }
    /// How often in a row chance(perMille) is true, at most `most`.
    int runLength(int perMille, int most);

private:
    std::mt19937_64 generator;
};

} // namespace feed
