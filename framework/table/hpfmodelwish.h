#pragma once

#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QVector>
#include <set>

#include "zb/ibasehpftablemodel.h"

namespace ZB {

/// What a model was asked to show: a plain value.
struct HpfModelWish
{
    using Condition = IBaseHpfTableModel::ColumnFilter;

    QVector<QPair<int, int>> sort;         ///< column and order, each column once
    QMap<int, QVector<Condition>> filters; ///< conditions of a column that must all be met
    std::set<int> sums;                    ///< columns
    quint64 revision = 0;                  ///< grows with every change of the above
};

} // namespace ZB
