#pragma once

#include <functional>
#include <string>

#include "rows/pointerindex.h"
#include "table/cdatatable.h"

namespace KV {

class CDataTable::Index : public core::PointerIndex<Entry>
{
public:
    static quint64 hashOf(const std::string &key) { return std::hash<std::string>()(key); }
    Entry *entryOf(const std::string &key, quint64 hash) const
    {
        return find(hash, [&key](const Entry &entry) { return entry.first == key; });
    }
};

} // namespace KV
