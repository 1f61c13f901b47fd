#pragma once

#include <functional>

namespace terminal {

/// Processes events until something is so, or the time is over. Whether it is so. GUI thread.
bool waitFor(const std::function<bool()> &isSo, int milliseconds);

} // namespace terminal
