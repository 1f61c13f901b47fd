#pragma once

#include <initializer_list>
#include <random>

namespace pagetest {

/// What a random test draws, the same for the same seed.
class RandomDraws
{
public:
    explicit RandomDraws(unsigned number) : random(number) {}

    int draw(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    template <typename T>
    T pick(std::initializer_list<T> list)
    {
        return *(list.begin() + draw(0, static_cast<int>(list.size()) - 1));
    }

private:
    std::mt19937 random;
};

} // namespace pagetest
