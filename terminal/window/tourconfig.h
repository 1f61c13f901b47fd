#pragma once

#include <memory>

namespace refhost {
class UserConfig;
}

namespace terminal {

/// As long as it lives, the program's configuration is one in memory that starts out empty, but for the grouping of
/// digits; the user's comes back untouched at its end. GUI thread, while no other thread asks for the configuration.
class TourConfig
{
public:
    TourConfig();
    ~TourConfig();

    TourConfig(const TourConfig &) = delete;
    TourConfig &operator=(const TourConfig &) = delete;

private:
    std::unique_ptr<refhost::UserConfig> users;
};

} // namespace terminal
