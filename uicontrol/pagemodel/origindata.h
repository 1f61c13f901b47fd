#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace KV {

/// What the display text of a cell comes with.
struct OriginData
{
    QString colorKey; ///< resource key of the text's colour
    QString unit;     ///< what the text ends with: "万", "亿", "%" or nothing
    QVariant value;   ///< the raw value; "no value" is the largest of its type
};

} // namespace KV
