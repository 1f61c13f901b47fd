#include "order/cquotesaccessible.h"

#include <utility>

#include "order/cquotesgraphwidget.h"

namespace KV {

using namespace quotevalue;

namespace {

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *ladder = qobject_cast<CQuotesGraphWidget *>(object);
    return ladder ? new CQuotesAccessible(ladder) : nullptr;
}

/// None while nobody listens.
CQuotesAccessible *listening(CQuotesGraphWidget *ladder)
{
    return QAccessible::isActive() ? dynamic_cast<CQuotesAccessible *>(QAccessible::queryAccessibleInterface(ladder))
                                   : nullptr;
}

} // namespace

CQuotesAccessible::CQuotesAccessible(CQuotesGraphWidget *ladder)
    : AccessibleItems(ladder, QAccessible::Table), told(present())
{
}

CQuotesAccessible::~CQuotesAccessible() = default;

void CQuotesAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

CQuotesGraphWidget &CQuotesAccessible::ladder() const
{
    return *static_cast<CQuotesGraphWidget *>(object());
}

const QuoteView &CQuotesAccessible::view() const
{
    return ladder().view;
}

CQuotesAccessible::Told CQuotesAccessible::present() const
{
    Told now{reading(), text(QAccessible::Name), {}, ladder().isStale()};
    for (const Button &button : buttons())
        now.buttons.push_back(keyOf(button));
    return now;
}

void CQuotesAccessible::tellChanges(CQuotesGraphWidget *ladder)
{
    CQuotesAccessible *self = listening(ladder);
    if (!self)
        return;
    const Told before = std::exchange(self->told, self->present());
    const Told now = self->told;
    const auto tell = [ladder](QAccessible::Event kind) {
        QAccessibleEvent event(ladder, kind);
        QAccessible::updateAccessibility(&event);
    };
    if (before.buttons != now.buttons || before.rows.size() != now.rows.size())
        self->tellRows(QAccessibleTableModelChangeEvent::ModelReset, 0, 0);
    else if (before.rows != now.rows)
        self->tellChangedRows(before.rows, now.rows);
    if (before.name != now.name)
        tell(QAccessible::NameChanged);
    if (before.stale != now.stale)
        tell(QAccessible::DescriptionChanged);
}

/// The stretch from the first row that reads otherwise to the last one; both lists are of one length.
void CQuotesAccessible::tellChangedRows(const QStringList &before, const QStringList &now) const
{
    int first = 0;
    while (now[first] == before[first])
        ++first;
    int last = now.size() - 1;
    while (now[last] == before[last])
        --last;
    tellRows(QAccessibleTableModelChangeEvent::DataChanged, first, last);
}

void CQuotesAccessible::cursorMoved(CQuotesGraphWidget *ladder)
{
    if (const CQuotesAccessible *self = listening(ladder))
        self->tellSelection();
}

void CQuotesAccessible::focusCame(CQuotesGraphWidget *ladder)
{
    if (const CQuotesAccessible *self = listening(ladder))
        self->tellFocus();
}

QString CQuotesAccessible::text(QAccessible::Text kind) const
{
    const QString given = AccessibleItems::text(kind);
    if (!given.isEmpty())
        return given;
    if (kind == QAccessible::Name)
        return QStringLiteral("盘口 %1").arg(ladder().stockCode).trimmed();
    return kind == QAccessible::Description ? view().age : QString();
}

QStringList CQuotesAccessible::reading() const
{
    QStringList lines;
    for (const Row &row : rows())
        lines << cellText(row, Caption) + QLatin1Char(' ') + cellText(row, Price) + QLatin1Char(' ') +
                     cellText(row, Volume);
    return lines;
}

QString CQuotesAccessible::columnDescription(int column) const
{
    return column == Caption  ? QStringLiteral("档位")
           : column == Price  ? QStringLiteral("价格")
           : column == Volume ? QStringLiteral("数量")
                              : QString();
}

QString CQuotesAccessible::rowDescription(int row) const
{
    return row >= 0 && row < rowCount() ? cellText(rows()[static_cast<std::size_t>(row)], Caption) : QString();
}

QAccessibleInterface *CQuotesAccessible::childAt(int x, int y) const
{
    const QPoint at = ladder().mapFromGlobal(QPoint(x, y));
    for (int i = childCount() - 1; i >= 0; --i)
        if (rectOf(i).contains(at))
            return item(i);
    return nullptr;
}

/// Of a level that the keyboard stands on, the price: that is what it takes.
int CQuotesAccessible::currentIndex() const
{
    const int button = ladder().cursorLevel ? ladder().cursorLevel->button : 0;
    if (button > 0)
        return button <= static_cast<int>(buttons().size()) ? rowCount() * columnCount() + button - 1 : -1;
    const QList<int> selected = selectedRows();
    return selected.isEmpty() ? -1 : selected.front() * columnCount() + Price;
}

QList<int> CQuotesAccessible::selectedRows() const
{
    const std::vector<Row> all = rows();
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].kind == Row::Level && ladder().cursorLevel == all[i].level)
            return {static_cast<int>(i)};
    return {};
}

bool CQuotesAccessible::isSelected(int index) const
{
    return isCell(index) && selectedRows().contains(index / columnCount());
}

bool CQuotesAccessible::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    const Row chosen = rows()[static_cast<std::size_t>(row)];
    if (chosen.kind != Row::Level || !isPrice(priceOf(chosen)))
        return false;
    ladder().setCursorLevel(chosen.level);
    return true;
}

bool CQuotesAccessible::unselectRow(int row)
{
    if (!isRowSelected(row))
        return false;
    ladder().setCursorLevel(std::nullopt);
    return true;
}

} // namespace KV
