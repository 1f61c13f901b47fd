#pragma once

#include <initializer_list>
#include <string>

#include "table/chpfdatatable.h"
#include "window/tablepanel.h"

/// One row a line, as they are shown: the given fields.
inline std::string deskRows(const terminal::TablePanel &panel, std::initializer_list<int> fields)
{
    KV::CHpfDataTable &table = panel.table();
    std::string text;
    table.updateTable();
    for (int row = 0; row < table.count(); ++row) {
        for (const int field : fields)
            text += table.getData(row)->getDisplayQString(table.getColumnIdByFileId(field)).toStdString() + ' ';
        text += '\n';
    }
    return text;
}
