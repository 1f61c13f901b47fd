#pragma once

#include "kv/cuserconfig.h"

namespace KV {

/// What a user's configuration says about trading screens. A view of it: valid while the configuration is. Any thread.
class CTradeSetting
{
public:
    explicit CTradeSetting(const CUserConfig &userConfig) : config(userConfig) {}

    /// The flags that ask a formatter for the user's grouping of digits; FormatNone without grouping.
    utils::CFlags<utils::EFormatNumberFlag> getSegmentFlag() const { return config.getSegmentedFormatFlag(); }

private:
    const CUserConfig &config;
};

} // namespace KV
