#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <vector>

#include "table/hpfmodelaccess.h"

namespace ZB {

class TableRows;

/// Looks for a text in the shown cells, row by row and in each row column by column, around the end of the table and
/// back to where it began. Works in slices on the GUI thread, so the table goes on meanwhile; it looks at
/// the rows that are shown when it begins, wherever they move, and at none that comes later. A row is also found by its
/// further names; the first column stands for them.
class TableFinder : public QObject
{
    Q_OBJECT

public:
    /// source: outlives the finder.
    explicit TableFinder(const TableRows &source);

    struct Search
    {
        QString text;
        std::vector<int> columns; ///< model columns in the order on the screen
        quint64 row = 0;          ///< where to begin; unknown: at the top
        int column = -1;
        bool forward = true;
        bool includeStart = false; ///< the beginning itself counts as a hit too
    };

    /// Ends the search before it; answers with found() or notFound(), never before this returns.
    void start(const Search &search);
    void cancel();
    bool isSearching() const;
    /// In thousandths of the rows.
    int progress() const;

Q_SIGNALS:
    /// wrapped: on the way there the search passed the end of the table.
    void found(quint64 row, int column, bool wrapped);
    void notFound();

private:
    void searchOn();
    bool searchRow(quint64 id, IBaseHpfTableData &row);
    bool matches(IBaseHpfTableData &row, int column) const;
    void advance();

    const TableRows &source;
    Search search;
    QTimer slice;
    std::vector<quint64> ids; ///< the rows to look at
    std::size_t at = 0;       ///< index of the one to look at next
    std::size_t seen = 0;
    bool wrapped = false;
};

} // namespace ZB
