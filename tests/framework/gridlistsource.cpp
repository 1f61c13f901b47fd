#include "framework/gridlistsource.h"

#include <algorithm>

using namespace ZB;

namespace {

QString textOf(const ListSource::Row &row, int column)
{
    const auto own = row.texts.find(column);
    return own != row.texts.end() ? own->second : QStringLiteral("%1.%2").arg(row.id).arg(column);
}

} // namespace

ListSource::ListSource(int rowCount, int columnCount) : columns(columnCount)
{
    for (int i = 0; i < rowCount; ++i)
        insert(i);
}

GridRowId ListSource::insert(qint64 place)
{
    Row row;
    row.id = nextId++;
    rows.insert(rows.begin() + place, row);
    ++changes;
    return row.id;
}

void ListSource::remove(qint64 place)
{
    rows.erase(rows.begin() + place);
    ++changes;
}

void ListSource::setText(qint64 place, int column, const QString &text)
{
    Row &row = rows.at(static_cast<size_t>(place));
    row.texts[column] = text;
    ++row.version;
    ++changes;
}

void ListSource::setMarked(qint64 place, bool marked)
{
    Row &row = rows.at(static_cast<size_t>(place));
    row.marked = marked;
    ++row.version;
    ++changes;
}

void ListSource::reorder(const std::function<void(std::vector<Row> &)> &change)
{
    change(rows);
    ++changes;
}

void ListSource::renew()
{
    ++changes;
    ++renewals;
}

void ListSource::fetch(qint64 first, int count, GridWindow &window)
{
    held.clear();
    window.rows.clear();
    window.first = first;
    window.rowCount = rowCount();
    for (qint64 place = first; place < std::min(first + count, rowCount()); ++place) {
        held.push_back(rows[static_cast<size_t>(place)]);
        window.rows.push_back({held.back().id, held.back().version});
    }
}

void ListSource::refetch(GridWindow &window)
{
    for (size_t i = 0; i < held.size(); ++i) {
        const qint64 place = rowOf(held[i].id);
        if (place >= 0)
            held[i] = rows[static_cast<size_t>(place)];
        window.rows[i].version = held[i].version;
    }
}

qint64 ListSource::rowOf(GridRowId id) const
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row &row) { return row.id == id; });
    return found == rows.end() ? -1 : found - rows.begin();
}

void ListSource::rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const
{
    for (qint64 place = first; place < std::min(first + count, rowCount()); ++place)
        ids.push_back(rows[static_cast<size_t>(place)].id);
}

void ListSource::content(int windowRow, int column, GridContent &content)
{
    ++asked;
    const Row &row = held.at(static_cast<size_t>(windowRow));
    content.text = textOf(row, column);
    if (row.marked)
        content.background = &mark;
}

QString ListSource::cellText(qint64 row, int column) const
{
    return row < rowCount() ? textOf(rows[static_cast<size_t>(row)], column) : QString();
}

GridFlash ListSource::flash(int, int)
{
    return flashes;
}

QString ListSource::headerText(int column) const
{
    return QStringLiteral("Head %1").arg(column);
}

QString ListSource::statisticsText(int) const
{
    return statistics;
}

QString idsOf(const GridWindow &window)
{
    std::vector<GridRowId> ids;
    for (const GridRow &row : window.rows)
        ids.push_back(row.id);
    return joined(ids);
}

QString joined(const std::vector<GridRowId> &ids)
{
    QStringList texts;
    for (const GridRowId id : ids)
        texts.append(QString::number(id));
    return texts.join(QLatin1Char(' '));
}

QString joined(const std::vector<int> &columns)
{
    QStringList texts;
    for (const int column : columns)
        texts.append(QString::number(column));
    return texts.join(QLatin1Char(' '));
}

GridLook plainLook()
{
    GridLook look;
    QFont font;
    font.setPixelSize(12);
    look.textFont = look.numberFont = look.rowNumberFont = look.headerFont = look.statisticsFont = font;
    look.background = QColor(255, 255, 255);
    look.oddBackground = QColor(245, 245, 250);
    look.numberBackground = QColor(240, 240, 240);
    look.line = QColor(200, 200, 200);
    look.sortLine = look.accent = QColor(0, 90, 220);
    look.inactiveSortLine = QColor(120, 120, 120);
    look.text = look.statisticsText = QColor(20, 20, 20);
    look.dimText = look.rowNumberText = look.headerText = QColor(110, 110, 110);
    look.selected = QColor(180, 205, 255);
    look.selectedNoFocus = QColor(215, 220, 230);
    look.selectedText = QColor(0, 0, 60);
    look.header = QColor(225, 228, 235);
    look.headerHover = QColor(210, 215, 225);
    look.headerPressed = QColor(195, 200, 215);
    look.headerDisabled = QColor(235, 235, 235);
    look.statisticsBackground = look.statisticsTitleBackground = QColor(235, 240, 235);
    look.statisticsBorderColor = look.line;
    look.rise = QColor(200, 30, 40);
    look.fall = QColor(10, 120, 70);
    look.equal = QColor(90, 90, 90);
    look.hit = QColor(255, 230, 140);
    return look;
}
