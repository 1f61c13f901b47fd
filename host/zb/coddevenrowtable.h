#pragma once

#include "zb/cstandardtable.h"

namespace ZB {

/// A table whose rows alternate between two backgrounds, where TableOddEvenRows is among its options. GUI thread.
class HOST_API COddEvenRowTable : public CStandardTable
{
    Q_OBJECT

public:
    COddEvenRowTable(int tableId, QWidget *parent, int options);
    ~COddEvenRowTable() override;

    /// Whether the rows alternate at present.
    bool hasOddEvenRows() const;
};

} // namespace ZB
