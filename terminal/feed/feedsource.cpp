#include "feed/feedsource.h"

namespace feed {

FeedSource::~FeedSource() = default;

qint64 FeedSource::longestGap() const
{
    // Longer than a lunch break, shorter than any night.
    return 3 * 60 * 60 * 1000;
}

bool FeedSource::canEndDay() const
{
    return false;
}

void FeedSource::endDay(BatchWriter &) {}

} // namespace feed
