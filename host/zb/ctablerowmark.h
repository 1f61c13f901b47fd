#pragma once

#include <QtCore/QString>

namespace ZB {

/// A rule that tints rows which stand out, such as large orders: a row is marked when its value in a number column
/// reaches a threshold. Of several rules that apply, the first one colours. A value type.
struct CTableRowMark
{
    int column = -1;        ///< model column
    double threshold = 0.0; ///< reached by values of this size, whatever their sign
    QString colorKey;       ///< resource key; the row's background is a tint of this colour
};

} // namespace ZB
