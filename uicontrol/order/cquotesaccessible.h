#pragma once

#include <QtCore/QStringList>
#include <vector>

#include "accessible/accessibleitems.h"
#include "order/quoteclickareas.h"
#include "order/quoteview.h"

namespace KV {

class CQuotesGraphWidget;

/// A price ladder as screen readers and test tools see it: a table with a row for each level, the latest price, the
/// previous close and the limits, read from top to bottom; behind it the buttons of the last picture. Values and
/// buttons are pressed as a click presses them. GUI thread.
class CQuotesAccessible : public AccessibleItems
{
public:
    explicit CQuotesAccessible(CQuotesGraphWidget *ladder);
    ~CQuotesAccessible() override;

    /// Makes every ladder accessible; costs nothing while nobody asks.
    static void install();
    /// Tells what reads otherwise than the last time: values, rows, the name, whether the quote is out of date.
    static void tellChanges(CQuotesGraphWidget *ladder);
    static void cursorMoved(CQuotesGraphWidget *ladder);
    static void focusCame(CQuotesGraphWidget *ladder);

    QString text(QAccessible::Text kind) const override;
    int childCount() const override;
    QAccessibleInterface *childAt(int x, int y) const override;

    quint64 keyOf(int index) const override;
    int indexOf(quint64 key) const override;
    QString textOf(int index) const override;
    QRect rectOf(int index) const override;
    QAccessible::Role roleOf(int index) const override;
    bool isSelected(int index) const override;
    bool canPress(int index) const override;
    void press(int index) override;
    int currentIndex() const override;

    int rowCount() const override;
    int columnCount() const override { return 3; }
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedRowCount() const override { return selectedRows().size(); }
    QList<int> selectedRows() const override;
    bool selectRow(int row) override;
    bool unselectRow(int row) override;

protected:
    QList<int> selectedRowsInSight() const override { return selectedRows(); }

private:
    enum Column
    {
        Caption,
        Price,
        Volume
    };
    /// What a row of the table shows: a level, or a value of the quote.
    struct Row
    {
        enum Kind
        {
            Level,
            Latest,
            PreviousClose,
            UpperLimit,
            LowerLimit
        } kind = Level;
        QuoteCursor level;
    };
    struct Button
    {
        enum Kind
        {
            PriceType = 1,
            CancelLevel,
            CancelAll
        } kind = PriceType;
        QuoteClickAreas::PriceType type;
        QuoteClickAreas::Cancel cancel;
    };

    /// What there was when it was told last.
    struct Told
    {
        QStringList rows; ///< as they read
        QString name;
        std::vector<quint64> buttons; ///< their keys
        bool stale = false;
    };

    CQuotesGraphWidget &ladder() const;
    const QuoteView &view() const;
    std::vector<Row> rows() const;
    std::vector<Button> buttons() const;
    static quint64 keyOf(const Button &button);
    QString buttonText(const Button &button) const;
    QString cellText(const Row &row, int column) const;
    QRect cellRect(const Row &row, int column) const;
    double priceOf(const Row &row) const;
    /// No price for what cannot be pressed.
    double pressedValue(const Row &row, int column) const;
    /// All rows as they read, a line each.
    QStringList reading() const;

    Told present() const;
    void tellChangedRows(const QStringList &before, const QStringList &now) const;

    Told told;
};

} // namespace KV
