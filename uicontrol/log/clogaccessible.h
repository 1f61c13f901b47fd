#pragma once

#include "accessible/accessibleitems.h"

namespace KV {

class CHpfLogWidget;

/// A log as screen readers and test tools see it: a list of all rows that its filter lets through, as a table of one
/// column. A row stays the same object while older ones leave the log. GUI thread.
class CLogAccessible : public AccessibleItems
{
public:
    explicit CLogAccessible(CHpfLogWidget *log);
    ~CLogAccessible() override;

    /// Makes every log accessible; costs nothing while nobody asks.
    static void install();
    /// Tells what changed since the last time: other rows, another selection.
    static void tellChanges(CHpfLogWidget *log);
    static void focusCame(CHpfLogWidget *log);

    QString text(QAccessible::Text kind) const override;
    QAccessibleInterface *childAt(int x, int y) const override;

    quint64 keyOf(int index) const override;
    int indexOf(quint64 key) const override;
    QString textOf(int index) const override;
    QRect rectOf(int index) const override;
    QAccessible::Role roleOf(int) const override { return QAccessible::ListItem; }
    bool isSelected(int index) const override;
    int currentIndex() const override;

    int rowCount() const override;
    int columnCount() const override { return 1; }
    QString columnDescription(int) const override { return {}; }
    QString rowDescription(int) const override { return {}; }
    int selectedRowCount() const override;
    QList<int> selectedRows() const override;
    bool selectRow(int row) override;
    bool unselectRow(int row) override;

protected:
    QList<int> selectedRowsInSight() const override;

private:
    /// What there was when it was told last.
    struct State
    {
        unsigned list = 0;
        int rows = 0;
        qint64 trimmed = 0;
        qint64 selected = -1; ///< counted from the first row that the list ever had
        bool all = false;
    };
    State present() const;
    void tellRowChanges(const State &before) const;
    CHpfLogWidget &log() const;

    State told;
};

} // namespace KV
