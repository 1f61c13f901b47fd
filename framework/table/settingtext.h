#pragma once

#include <QtCore/QString>
#include <optional>

#include "frameworkexport.h"
#include "zb/cbasetablesettingparam.h"

namespace ZB {

/// A table's settings as one line of JSON, for the user's configuration.
FRAMEWORK_API QString settingText(const CBaseTableSettingParam &setting);

/// Reads them back; empty for a text that holds no settings. Values of the wrong kind or size take their defaults.
FRAMEWORK_API std::optional<CBaseTableSettingParam> settingFromText(const QString &text);

} // namespace ZB
