#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "table/tablefinder.h"

namespace ZB {

class FindBar;
class GridView;

/// Find in table: what the user types in the strip lights up in the cells, and the hits become the current cell one
/// after the other.
class TableFind : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive it.
    TableFind(GridView *grid, FindBar *bar, const TableRows &source);

    void open();
    void close();
    /// Goes on with the text of the strip, which it opens where it is closed.
    void findNext(bool forward);
    void find(const QString &text, bool forward, bool includeCurrent);
    void cancel();

private:
    void textChanged(const QString &text);
    void showHit(quint64 row, int column, bool wrapped);
    void showMiss();
    void showProgress();

    GridView *grid;
    FindBar *bar;
    const TableRows &source;
    TableFinder finder;
    QTimer progress;
};

} // namespace ZB
