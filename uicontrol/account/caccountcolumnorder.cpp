#include "account/caccountcolumnorder.h"

#include <algorithm>

namespace KV {

namespace {

const QChar separator = QLatin1Char('\t');
const QString shownMark = QStringLiteral("shown");
const QString hiddenMark = QStringLiteral("hidden");
const QString lockedMark = QStringLiteral("locked");

bool isLocked(const CAccountListColumn &column)
{
    return column.locked;
}

/// Finds a column again in another run of the program, whose numbers of it may differ.
QString identity(const CAccountListColumn &column)
{
    return column.fieldId >= 0 ? QString::number(column.fieldId) : QLatin1Char('#') + column.name;
}

int placeOf(const QVector<CAccountListColumn> &columns, const QString &wanted)
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&wanted](const CAccountListColumn &each) { return identity(each) == wanted; });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

/// Brings an arrangement under the rules.
void straighten(QVector<CAccountListColumn> &columns)
{
    std::stable_partition(columns.begin(), columns.end(), isLocked);
    const auto isShown = [](const CAccountListColumn &column) { return column.visible; };
    for (CAccountListColumn &column : columns)
        column.visible = column.visible || column.locked;
    if (!columns.isEmpty() && std::none_of(columns.begin(), columns.end(), isShown))
        columns.first().visible = true;
}

} // namespace

void CAccountColumnOrder::setDefaults(const QVector<CAccountListColumn> &columns)
{
    defaults.clear();
    for (const CAccountListColumn &column : columns)
        if (placeOf(defaults, identity(column)) < 0)
            defaults.push_back(column);
    straighten(defaults);
    list = defaults;
    absent.clear();
}

void CAccountColumnOrder::setColumns(const QVector<CAccountListColumn> &columns)
{
    list.clear();
    for (const CAccountListColumn &column : columns) {
        const QString name = identity(column);
        const int known = placeOf(defaults, name);
        if (known < 0 || placeOf(list, name) >= 0)
            continue;
        list.push_back(defaults[known]);
        list.last().visible = column.visible;
        list.last().locked = column.locked;
    }
    complete();
}

void CAccountColumnOrder::complete()
{
    for (int at = 0; at < defaults.size(); ++at) {
        if (placeOf(list, identity(defaults[at])) >= 0)
            continue;
        const int left = at == 0 ? -1 : placeOf(list, identity(defaults[at - 1]));
        list.insert(left + 1, defaults[at]);
    }
    straighten(list);
}

int CAccountColumnOrder::lockedCount() const
{
    return static_cast<int>(std::count_if(list.begin(), list.end(), isLocked));
}

bool CAccountColumnOrder::setVisible(int place, bool visible)
{
    if (!isPlace(place) || list[place].visible == visible || list[place].locked)
        return false;
    const auto shown = std::count_if(list.begin(), list.end(), [](const auto &column) { return column.visible; });
    if (!visible && shown == 1)
        return false;
    list[place].visible = visible;
    return true;
}

int CAccountColumnOrder::setLocked(int place, bool locked)
{
    if (!isPlace(place) || list[place].locked == locked)
        return -1;
    const int target = lockedCount() - (locked ? 0 : 1);
    list[place].locked = locked;
    list[place].visible = true;
    list.move(place, target);
    return target;
}

int CAccountColumnOrder::move(int place, int gap)
{
    if (!isPlace(place) || list[place].locked)
        return -1;
    const int wanted = std::clamp(gap, lockedCount(), int(list.size()));
    const int target = wanted > place ? wanted - 1 : wanted;
    if (target == place)
        return -1;
    list.move(place, target);
    return target;
}

void CAccountColumnOrder::restoreDefaults()
{
    list = defaults;
    absent.clear();
}

QStringList CAccountColumnOrder::saved() const
{
    if (isDefault() && absent.isEmpty())
        return {};
    QStringList lines;
    for (const CAccountListColumn &column : list)
        lines << identity(column) + separator + (column.locked ? lockedMark : column.visible ? shownMark : hiddenMark);
    return lines + absent;
}

void CAccountColumnOrder::restore(const QStringList &lines)
{
    list.clear();
    absent.clear();
    for (const QString &line : lines) {
        const QString name = line.section(separator, 0, -2);
        const QString state = line.section(separator, -1);
        const int known = placeOf(defaults, name);
        if (name.isEmpty() || !QStringList({shownMark, hiddenMark, lockedMark}).contains(state))
            continue;
        if (known < 0)
            absent << line;
        if (known < 0 || placeOf(list, name) >= 0)
            continue;
        list.push_back(defaults[known]);
        list.last().visible = state != hiddenMark;
        list.last().locked = state == lockedMark;
    }
    complete();
}

} // namespace KV
