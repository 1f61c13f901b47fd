#include "grid/gridaccessibleheader.h"

#include <QtCore/QStringList>

#include "grid/gridview.h"
#include "grid/gridviewprivate.h"

namespace ZB {

GridAccessibleHeader::GridAccessibleHeader(GridView *view, int modelColumn) : owner(view), column(modelColumn) {}

int GridAccessibleHeader::columnIndex() const
{
    const GridViewPrivate *grid = owner ? &GridViewPrivate::of(*owner) : nullptr;
    return grid && grid->source ? grid->geometry.columns.placeOf(column) : -1;
}

QAccessibleInterface *GridAccessibleHeader::parent() const
{
    return QAccessible::queryAccessibleInterface(owner);
}

QString GridAccessibleHeader::text(QAccessible::Text kind) const
{
    if (!isValid())
        return QString();
    if (kind == QAccessible::Description)
        return description();
    return kind == QAccessible::Name ? GridViewPrivate::of(*owner).source->headerText(column) : QString();
}

QString GridAccessibleHeader::description() const
{
    const GridViewPrivate &grid = GridViewPrivate::of(*owner);
    QStringList parts;
    for (const GridSortMark &mark : grid.headerState.sorts)
        if (mark.column == column)
            parts << (mark.descending ? QStringLiteral("降序") : QStringLiteral("升序"));
    const QString statistics = grid.statisticsVisible ? grid.source->statisticsText(column) : QString();
    if (!statistics.isEmpty())
        parts << (grid.statisticsTitle + QLatin1Char(' ') + statistics).trimmed();
    return parts.join(QStringLiteral("，"));
}

QRect GridAccessibleHeader::rect() const
{
    const QRect inView = isValid() ? owner->headerRect(column) : QRect();
    return inView.isEmpty() ? QRect() : QRect(owner->mapToGlobal(inView.topLeft()), inView.size());
}

QAccessible::State GridAccessibleHeader::state() const
{
    QAccessible::State state;
    state.invalid = !isValid();
    state.disabled = owner && !owner->isEnabled();
    state.offscreen = rect().isEmpty();
    return state;
}

void *GridAccessibleHeader::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
}

QStringList GridAccessibleHeader::actionNames() const
{
    return isValid() && owner->isEnabled() ? QStringList{pressAction()} : QStringList();
}

void GridAccessibleHeader::doAction(const QString &name)
{
    if (actionNames().contains(name))
        Q_EMIT owner->headerClicked(column, Qt::NoModifier);
}

} // namespace ZB
