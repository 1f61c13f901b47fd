#include "window/marketlistener.h"

namespace terminal {

MarketListener::~MarketListener() = default;

} // namespace terminal
