#pragma once

#include <memory>

#include "services/userconfig.h"

/// Somebody is logged in for as long as it lives, with settings that are kept nowhere.
struct LoggedIn
{
    LoggedIn() { refhost::setUserConfig(std::make_unique<refhost::UserConfig>()); }
    ~LoggedIn() { refhost::setUserConfig(nullptr); }
    LoggedIn(const LoggedIn &) = delete;
    LoggedIn &operator=(const LoggedIn &) = delete;
};
