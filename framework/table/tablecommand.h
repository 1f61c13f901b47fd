#pragma once

#include <QtCore/QString>
#include <QtGui/QKeySequence>
#include <vector>

namespace ZB {

/// What a user can ask of a table, by menu and by keyboard.
enum class TableCommand
{
    Copy,
    CopyWithHeader,
    SelectAll,
    Find,
    FindNext,
    FindPrevious,
    ClearFilter,
    Columns,
    FitColumns,
    FreezeColumns,
    RowMarks,
    Pause,
    Export
};

/// How a command is offered.
struct TableCommandEntry
{
    TableCommand command;
    int menuFlag; ///< of ETableMenu; 0 for commands that no flag takes away
    QString text; ///< empty: not in the menu
    QKeySequence keys;
    bool endsGroup;
};

/// Every command, in the order of the menu.
const std::vector<TableCommandEntry> &tableCommands();

} // namespace ZB
