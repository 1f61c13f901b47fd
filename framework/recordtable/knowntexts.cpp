#include "recordtable/knowntexts.h"

namespace ZB {

KnownTexts::KnownTexts(std::vector<Value> values) : known(std::move(values)) {}

KnownTexts::~KnownTexts() = default;

bool KnownTexts::step(int)
{
    return true;
}

int KnownTexts::progress() const
{
    return 1000;
}

const std::vector<DistinctTexts::Value> &KnownTexts::values() const
{
    return known;
}

bool KnownTexts::isTruncated() const
{
    return false;
}

} // namespace ZB
