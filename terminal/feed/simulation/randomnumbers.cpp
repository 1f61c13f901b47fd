#include "feed/simulation/randomnumbers.h"

namespace feed {

int RandomNumbers::below(int bound)
{
    return int(generator() % quint64(bound));
}

int RandomNumbers::runLength(int perMille, int most)
{
    int length = 0;
    while (length < most && chance(perMille))
        ++length;
    return length;
}

} // namespace feed
