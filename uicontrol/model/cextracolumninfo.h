#pragma once

#include <QtCore/QString>

#include "utils/eformatnumberflag.h"

namespace KV {

/// How the cells of a computed column (one whose values are no record fields) become text. A value type.
struct CExtraColumnInfo
{
    CExtraColumnInfo() = default;
    CExtraColumnInfo(const QString &textOfEmpty, int decimals, utils::EFormatNumberFlag formatFlag)
        : flag(formatFlag), precision(decimals), text(textOfEmpty)
    {
    }

    utils::EFormatNumberFlag flag = utils::FormatNone; ///< how numbers are written
    int precision = 0;                                 ///< decimal places
    QString text;                                      ///< shown by rows that have no value in the column
};

} // namespace KV
