#pragma once

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

#include "rows/newestkept.h"

namespace KV {

/// A self-painted control as screen readers and test tools see it: a table of what it shows, row by row, and behind its
/// cells whatever else there is to press. An item is made when it is asked for, and only the newest are kept: a long
/// list is no long list of objects. Numbers of items end at the largest int. GUI thread.
class AccessibleItems : public QAccessibleWidget, public QAccessibleTableInterface
{
public:
    AccessibleItems(QWidget *widget, QAccessible::Role role);
    ~AccessibleItems() override;

    /// @name What a kind of control answers for one item
    /// Items are counted from 0: cells row by row, then the others. A key names an item while others come and go.
    /// @{
    virtual quint64 keyOf(int index) const = 0;
    /// -1 once the item is gone.
    virtual int indexOf(quint64 key) const = 0;
    virtual QString textOf(int index) const = 0;
    /// In the widget; empty while it does not show the item.
    virtual QRect rectOf(int index) const = 0;
    virtual QAccessible::Role roleOf(int index) const = 0;
    virtual bool isSelected(int index) const = 0;
    virtual bool canPress(int index) const;
    virtual void press(int index);
    /// The item that the keyboard stands on; -1 for none.
    virtual int currentIndex() const = 0;
    /// @}

    bool isCell(int index) const { return index >= 0 && index < rowCount() * columnCount(); }
    /// None outside.
    QAccessibleInterface *item(int index) const;

    void *interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override { return item(index); }
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *focusChild() const override { return item(currentIndex()); }

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    QList<QAccessibleInterface *> selectedCells() const override;
    int selectedColumnCount() const override { return 0; }
    QList<int> selectedColumns() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    bool isRowSelected(int row) const override;
    void modelChange(QAccessibleTableModelChangeEvent *) override {}

protected:
    /// The rows, of a selection of any size, whose cells are worth an object: those on the screen.
    virtual QList<int> selectedRowsInSight() const = 0;

    void tellRows(QAccessibleTableModelChangeEvent::ModelChangeType change, int first, int last) const;
    /// That the selection is another one, and the current item while the widget has the keyboard.
    void tellSelection() const;
    void tellFocus() const;

private:
    mutable core::NewestKept<QAccessible::Id> items; ///< by key
};

} // namespace KV
