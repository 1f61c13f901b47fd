#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <memory>
#include <vector>

#include "grid/gridsource.h"

class QColor;

namespace ZB {

/// One cell of a row that a table keeps itself.
struct RecordCell
{
    QString text;
    QString unit;
    const QColor *color = nullptr; ///< null for the table's own
    QVariant value;                ///< as the program set it
    double number = 0;             ///< behind the text, where the column flashes by direction
    double change = 0;             ///< of the number when the text changed last
    bool hasNumber = false;
    bool due = true; ///< to be filled before it is painted or read
};

/// What puts a row in its place under one sort column.
struct RecordSortKey
{
    quint64 key = 0; ///< of core::SortKey
    QString text;    ///< decides between equal keys of texts

    bool operator==(const RecordSortKey &other) const { return key == other.key && text == other.text; }
};

/// One row. A row that was removed lives on for as long as it is on the screen.
struct RecordRow : std::enable_shared_from_this<RecordRow>
{
    int id = -1;
    GridRowId gridId = NoGridRow;
    quint32 version = 1;
    int place = -1; ///< on the screen, as of the last settling
    bool gone = false;
    bool touched = false;          ///< may have to move
    std::vector<RecordCell> cells; ///< by column; shorter while no cell was needed
    std::vector<RecordSortKey> keys;

    /// As a new one, with the memory that it has.
    void reset()
    {
        place = -1;
        gone = false;
        touched = false;
        cells.clear();
        keys.clear();
    }
    RecordCell &cell(int column)
    {
        if (cells.size() <= static_cast<std::size_t>(column))
            cells.resize(static_cast<std::size_t>(column) + 1);
        return cells[static_cast<std::size_t>(column)];
    }
};

using RecordRowPtr = std::shared_ptr<RecordRow>;

} // namespace ZB
