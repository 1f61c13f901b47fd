#pragma once

#include <QtCore/QElapsedTimer>
#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>
#include <map>
#include <utility>

#include "grid/gridselection.h"
#include "rows/newestkept.h"

namespace ZB {

class GridView;
class GridViewPrivate;

/// A grid as screen readers and test tools see it: a table of all its rows with all visible columns; its children are
/// the cells row by row, then the headers. Cells are made when they are asked for, and only the newest thousands are
/// kept: a million rows are no million objects. Numbers of rows and children end at the largest int. Of more than
/// 4096 selected rows those on the screen are answered, while their number is that of all. GUI thread.
class GridAccessible : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    explicit GridAccessible(GridView *view);
    ~GridAccessible() override;

    /// Makes every GridView accessible; costs nothing while nobody asks.
    static void install();
    /// Tells that the current cell is another one, that other rows are selected, that the table has more or fewer rows
    /// or other columns.
    static void focusMoved(GridView *view);
    static void selectionMoved(GridView *view);
    static void layoutChanged(GridView *view);
    /// A frame has been shown: a grid with the keyboard tells that the text of its current cell is another one, at most
    /// once a second. Milliseconds after which it wants to be asked again, since a change is still to be told; else 0.
    /// Next to nothing while nobody listens.
    static int frameShown(GridView *view);

    /// Without a name of its own it has that of the table around it, or that of any table; without rows the description
    /// is what stands in their place.
    QString text(QAccessible::Text type) const override;
    void *interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    /// Of a visible column; null for others.
    QAccessibleInterface *header(int column) const;
    /// Cells that several ranges of together more than 4096 rows share are counted for each.
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int row) override;
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *) override {}

private:
    const GridViewPrivate &view() const;
    QAccessibleInterface *cellOf(quint64 rowId, int modelColumn) const;
    int currentRow() const;
    int currentIndex() const;
    quint64 idOf(int row) const;
    int tellCurrentText();
    QList<int> selectedRowsOnScreen() const;
    qint64 cellCountOf(const GridSelection::Block &block) const;

    struct Told ///< the current cell when it was told last
    {
        quint64 row = 0;
        int column = -1;
        QString text;
        QElapsedTimer since;
    };

    Told told;
    mutable core::NewestKept<QAccessible::Id, std::pair<quint64, int>> cells; ///< by row and column of the model
    mutable std::map<int, QAccessible::Id> headers;                           ///< by column of the model
};

} // namespace ZB
