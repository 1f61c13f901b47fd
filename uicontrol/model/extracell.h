#pragma once

#include <optional>

#include "model/chpfextradatamodel.h"
#include "stats/exactsum.h"

namespace KV {

/// One stored value.
struct CHpfExtraDataModel::Cell
{
    int column = -1;
    unsigned memberOf = 0; ///< generation of the sum that the cell belongs to; 0 for none
    const QColor *color = nullptr;
    QVariant value;
};

/// The running sum of one column.
struct CHpfExtraDataModel::Accumulator
{
    core::ExactSum sum;
    unsigned generation = 0;    ///< differs from every earlier sum of any column
    std::optional<double> told; ///< instead of the sum, while that is being counted anew
    bool judged = false;        ///< the rows that count were named; others stay out until the next time
};

} // namespace KV
