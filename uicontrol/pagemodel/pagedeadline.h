#pragma once

#include <chrono>

namespace KV {

/// When a slice of work has to end.
class PageDeadline
{
public:
    /// Never.
    PageDeadline() : endless(true) {}
    explicit PageDeadline(int milliseconds)
        : end(std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds))
    {
    }
    bool isDue() const { return !endless && std::chrono::steady_clock::now() >= end; }

private:
    bool endless = false;
    std::chrono::steady_clock::time_point end;
};

} // namespace KV
