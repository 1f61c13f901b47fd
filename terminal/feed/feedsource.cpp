#include "feed/feedsource.h"

namespace feed {

FeedSource::~FeedSource() = default;

} // namespace feed
