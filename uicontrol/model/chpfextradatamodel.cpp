#include "model/chpfextradatamodel.h"

#include <algorithm>
#include <boost/thread/lock_guard.hpp>

#include "model/cfieldformat.h"
#include "model/extracell.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace KV {

namespace {

using Lock = boost::lock_guard<boost::mutex>;

constexpr int firstSharedBit = 63;

quint64 columnBit(int column)
{
    return quint64(1) << (column >= 0 && column < firstSharedBit ? column : firstSharedBit);
}

QString cellText(const QVariant &value, const CExtraColumnInfo &info)
{
    switch (value.type()) {
    case QVariant::Int:
        return ZB::formatIntNumber(value.toInt(), info.precision, info.flag);
    case QVariant::LongLong:
        return ZB::formatIntNumber(static_cast<int>(value.toLongLong()), info.precision, info.flag);
    case QVariant::Double:
        return ZB::formatDoubleNumber(static_cast<long double>(value.toDouble()), info.precision, info.flag, false,
                                      QStringLiteral("非法值"));
    default:
        return value.toString();
    }
}

} // namespace

CHpfExtraDataModel::CHpfExtraDataModel()
    : defaultColor(ZB::CUiResource::instance()->getColor(QLatin1String(defaultTextColorKey))), describedColumns(0),
      summed(0)
{
}

CHpfExtraDataModel::~CHpfExtraDataModel() = default;

void CHpfExtraDataModel::setChangeListener(std::function<void()> listener)
{
    changeListener = std::move(listener);
}

void CHpfExtraDataModel::notify() const
{
    if (changeListener)
        changeListener();
}

void CHpfExtraDataModel::publishColumns()
{
    quint64 described = 0;
    for (auto column = columns.keyBegin(); column != columns.keyEnd(); ++column)
        described |= columnBit(*column);
    describedColumns.store(described, std::memory_order_release);
}

void CHpfExtraDataModel::addColumn(int column, const CExtraColumnInfo &info)
{
    {
        const Lock lock(mutex);
        columns[column] = info;
        publishColumns();
    }
    notify();
}

void CHpfExtraDataModel::removeColumn(int column)
{
    {
        const Lock lock(mutex);
        columns.remove(column);
        statistics.remove(column);
        publishColumns();
        publishStatistics();
    }
    notify();
}

bool CHpfExtraDataModel::exist(int column) const
{
    // Asked for every cell of every table, most of which have no extra column at all.
    const quint64 bit = columnBit(column);
    if ((describedColumns.load(std::memory_order_acquire) & bit) == 0)
        return false;
    if (bit != columnBit(firstSharedBit))
        return true;
    const Lock lock(mutex);
    return columns.contains(column);
}

bool CHpfExtraDataModel::getColumnInfo(int column, CExtraColumnInfo &out) const
{
    const Lock lock(mutex);
    const auto found = columns.constFind(column);
    if (found == columns.constEnd())
        return false;
    out = *found;
    return true;
}

const CHpfExtraDataModel::Cell *CHpfExtraDataModel::findCell(const QString &key, int column) const
{
    const auto cells = values.constFind(key);
    if (cells == values.constEnd())
        return nullptr;
    const auto found =
        std::find_if(cells->begin(), cells->end(), [column](const Cell &cell) { return cell.column == column; });
    return found == cells->end() ? nullptr : &*found;
}

bool CHpfExtraDataModel::looksEmpty(int column, const QVariant &value, const QColor *color) const
{
    const auto info = columns.constFind(column);
    return info != columns.constEnd() && color == defaultColor && value.toString() == info->text;
}

void CHpfExtraDataModel::addData(const QString &key, int column, const QVariant &value, const QColor *color)
{
    {
        const Lock lock(mutex);
        if (looksEmpty(column, value, color))
            eraseCell(key, column);
        else
            storeCell(key, column, value, color != nullptr ? color : defaultColor);
    }
    notify();
}

void CHpfExtraDataModel::storeCell(const QString &key, int column, const QVariant &value, const QColor *color)
{
    Cells &cells = values[key];
    const auto known =
        std::find_if(cells.begin(), cells.end(), [column](const Cell &cell) { return cell.column == column; });
    if (known == cells.end()) {
        cells.push_back(Cell{column, 0, color, value});
        count(cells.back());
        return;
    }
    const bool leftOut = isLeftOut(*known);
    discount(*known);
    known->value = value;
    known->color = color;
    if (!leftOut)
        count(*known);
}

void CHpfExtraDataModel::eraseCell(const QString &key, int column)
{
    const auto cells = values.find(key);
    if (cells == values.end())
        return;
    const auto found =
        std::find_if(cells->begin(), cells->end(), [column](const Cell &cell) { return cell.column == column; });
    if (found == cells->end())
        return;
    discount(*found);
    cells->erase(found);
    if (cells->empty())
        values.erase(cells);
}

bool CHpfExtraDataModel::getData(const QString &key, int column, QVariant &out) const
{
    const Lock lock(mutex);
    const Cell *cell = findCell(key, column);
    if (cell == nullptr)
        return false;
    out = cell->value;
    return true;
}

int CHpfExtraDataModel::getInt(const QString &key, int column) const
{
    const Lock lock(mutex);
    const Cell *cell = findCell(key, column);
    return cell == nullptr ? 0 : cell->value.toInt();
}

qint64 CHpfExtraDataModel::getLonglong(const QString &key, int column) const
{
    const Lock lock(mutex);
    const Cell *cell = findCell(key, column);
    return cell == nullptr ? 0 : cell->value.toLongLong();
}

double CHpfExtraDataModel::getDouble(const QString &key, int column) const
{
    const Lock lock(mutex);
    const Cell *cell = findCell(key, column);
    return cell == nullptr ? 0 : cell->value.toDouble();
}

QString CHpfExtraDataModel::getString(const QString &key, int column) const
{
    const Lock lock(mutex);
    const CExtraColumnInfo info = columns.value(column);
    const Cell *cell = findCell(key, column);
    return cell == nullptr ? info.text : cellText(cell->value, info);
}

const QColor *CHpfExtraDataModel::getColor(const QString &key, int column) const
{
    const Lock lock(mutex);
    const Cell *cell = findCell(key, column);
    return cell == nullptr ? defaultColor : cell->color;
}

void CHpfExtraDataModel::removeData(const QString &key)
{
    {
        const Lock lock(mutex);
        const auto cells = values.find(key);
        if (cells == values.end())
            return;
        for (const Cell &cell : *cells)
            discount(cell);
        values.erase(cells);
    }
    notify();
}

} // namespace KV
