#pragma once

#include <string>

#include "kdservice/keyhash.h"
#include "rows/pointerindex.h"
#include "table/cdatatable.h"

namespace KV {

class ColumnTotal;

class CDataTable::Index : public core::PointerIndex<Entry>
{
public:
    Entry *entryOf(const std::string &key, quint64 hash) const
    {
        return find(hash, [&key](const Entry &entry) { return entry.first == key; });
    }
};

/// Where a change of one field goes. Valid until columns, fields or rows come or go.
struct CDataTable::FieldRoute
{
    int field = -1;
    int column = -1;
    ColumnTotal *total = nullptr; ///< of the field; null where none is kept
};

} // namespace KV
