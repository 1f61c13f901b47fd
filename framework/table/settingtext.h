#pragma once

#include <QtCore/QString>
#include <optional>

#include "frameworkexport.h"
#include "zb/cbasetablesettingparam.h"

namespace ZB {

/// A table's settings as one line of JSON, for the user's configuration.
FRAMEWORK_API QString settingText(const CBaseTableSettingParam &setting);

/// Characters of filter texts that settings hold for one table. Every settings text is read at the start and written
/// anew a moment after each change; the codes of two thousand instruments fit, which is more than anybody ticks one by
/// one, while a filter that a program makes of a hundred thousand texts would be a megabyte each time.
constexpr int maximumFilterCharacters = 16384;

/// Those that settingText() writes, in their order: a filter that does not fit into what the ones before it leave is
/// left out as a whole, since a part of it would be another filter.
FRAMEWORK_API QVector<CBaseTableColumnFilter> keptFilters(const QVector<CBaseTableColumnFilter> &filters);

/// Reads them back; empty for a text that holds no settings. Values of the wrong kind or size take their defaults.
FRAMEWORK_API std::optional<CBaseTableSettingParam> settingFromText(const QString &text);

} // namespace ZB
