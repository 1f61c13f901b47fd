#include "table/tablesource.h"

#include <algorithm>
#include <cmath>

#include "kv/cuserconfig.h"
#include "table/cellvalue.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace ZB {

namespace {

constexpr int touchShift = 40; ///< changes of data count below it, so that neither can make up for the other

/// With the digits in front of the decimal point in groups, where the user wants that.
QString groupedText(const QString &text)
{
    const int sign = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    int end = sign;
    while (end < text.size() && text.at(end) >= QLatin1Char('0') && text.at(end) <= QLatin1Char('9'))
        ++end;
    bool whole = false;
    const qint64 number = text.midRef(sign, end - sign).toLongLong(&whole);
    const KV::CUserConfig *config = KV::getUserConfig();
    if (!whole || !config)
        return text;
    return text.left(sign) + formatLonglongNumber(number, 0, config->getSegmentedFormatFlag()) + text.mid(end);
}

} // namespace

TableSource::TableSource() = default;

TableSource::~TableSource() = default;

void TableSource::setModel(IBaseHpfTableModel *newModel, const SharedModel &newShared)
{
    resume();
    model = newModel;
    sharedModel = newShared;
    window.clear();
    before.clear();
    windowMarks.clear();
    statisticsTexts.clear();
    const HpfModelStatus status = model ? HpfModelAccess::status(*model) : HpfModelStatus();
    lastData = status.dataEpoch;
    lastMarks = status.marks;
    touch();
}

void TableSource::touch()
{
    ++touches;
    columnBackgrounds.clear();
    windowMarks.assign(windowMarks.size(), unknownMark);
}

void TableSource::setRowMarks(const QVector<CTableRowMark> &newMarks, std::vector<QColor> tints)
{
    marks = newMarks;
    markTints = std::move(tints);
    touch();
}

void TableSource::setPlainBackground(const QColor &background)
{
    plainBackground = background;
    touch();
}

/// The mark is taken off before the state is read: what comes in between wakes the table once more. Other tables over
/// the model take it off too, so that it is told by its number. A mark without a change of rows means that something
/// else is different that rows show (a computed column), so all is asked again.
quint64 TableSource::revision() const
{
    if (heldRows())
        return (touches << touchShift) + holding->data;
    quint64 data = 0;
    if (model) {
        if (model->updated())
            model->setUpdated(false);
        const HpfModelStatus status = HpfModelAccess::status(*model);
        data = status.dataEpoch;
        if (status.marks != lastMarks && data == lastData)
            ++touches;
        lastData = data;
        lastMarks = status.marks;
    }
    return (touches << touchShift) + data;
}

quint64 TableSource::epoch() const
{
    return touches;
}

qint64 TableSource::rowCount() const
{
    if (const auto *held = heldRows())
        return qint64(held->size());
    return model ? HpfModelAccess::rowCount(*model) : 0;
}

void TableSource::fetchRows(qint64 first, int count, std::vector<HpfShownRow> &rows) const
{
    rows.clear();
    if (const auto *held = heldRows()) {
        const auto size = qint64(held->size());
        const qint64 from = std::clamp<qint64>(first, 0, size);
        const qint64 to = std::clamp<qint64>(first + count, from, size);
        rows.assign(held->begin() + from, held->begin() + to);
    } else if (model) {
        HpfModelAccess::fetch(*model, int(first), count, rows);
    }
}

IBaseHpfTableModel::Row TableSource::rowOfId(GridRowId id) const
{
    if (const auto *held = heldRows()) {
        const qint64 row = rowOf(id);
        return row < 0 ? IBaseHpfTableModel::Row() : (*held)[std::size_t(row)].row;
    }
    return model ? HpfModelAccess::rowOf(*model, id) : IBaseHpfTableModel::Row();
}

GridRowId TableSource::idAt(qint64 row) const
{
    if (row < 0 || row >= rowCount())
        return NoGridRow;
    const auto *held = heldRows();
    const quint64 id = held ? (*held)[std::size_t(row)].id : HpfModelAccess::idAt(*model, int(row));
    return id ? id : NoGridRow;
}

void TableSource::fetch(qint64 first, int count, GridWindow &gridWindow)
{
    std::swap(window, before);
    fetchRows(first, count, window);
    windowMarks.assign(window.size(), unknownMark);
    takeWindow(first, gridWindow);
}

void TableSource::takeWindow(qint64 first, GridWindow &gridWindow)
{
    gridWindow.rowCount = rowCount();
    gridWindow.first = first;
    gridWindow.rows.clear();
    for (const HpfShownRow &row : window)
        gridWindow.rows.push_back({row.id, row.version});
}

void TableSource::refetch(GridWindow &gridWindow)
{
    before = window;
    for (std::size_t at = 0; at < window.size() && !heldRows() && model; ++at) {
        const int index = HpfModelAccess::indexOf(*model, window[at].id);
        std::vector<HpfShownRow> present;
        if (index < 0 || !HpfModelAccess::fetch(*model, index, 1, present) || present[0].id != window[at].id)
            continue;
        if (present[0].version != window[at].version)
            windowMarks[at] = unknownMark;
        window[at] = std::move(present[0]);
    }
    takeWindow(gridWindow.first, gridWindow);
}

bool TableSource::isSettling() const
{
    return model && !holding && HpfModelAccess::status(*model).pending;
}

qint64 TableSource::rowOf(GridRowId id) const
{
    if (!heldRows())
        return model ? HpfModelAccess::indexOf(*model, id) : -1;
    return placeOf(id, *holding->places);
}

void TableSource::rowsOf(const std::vector<GridRowId> &ids, std::vector<qint64> &rows) const
{
    if (heldRows() || !model)
        return GridSource::rowsOf(ids, rows);
    const std::vector<int> indexes = HpfModelAccess::indexesOf(*model, ids);
    rows.assign(indexes.begin(), indexes.end());
}

void TableSource::rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const
{
    const auto *held = heldRows();
    if (!held) {
        if (model)
            HpfModelAccess::ids(*model, int(first), int(count), ids);
        return;
    }
    const qint64 end = std::min(first + count, qint64(held->size()));
    for (qint64 row = std::max<qint64>(first, 0); row < end; ++row)
        ids.push_back((*held)[std::size_t(row)].id);
}

QVariant::Type TableSource::columnType(int column) const
{
    return model ? model->columnType(column) : QVariant::Invalid;
}

int TableSource::columnCount() const
{
    return model ? model->columnCount() : 0;
}

QString TableSource::headerText(int column) const
{
    return model ? model->columnHeader(column) : QString();
}

/// Asking for a sum while a filter is being carried out would wait for it.
/// Models give whole sums without groups, whatever their cells show.
QString TableSource::statisticsText(int column) const
{
    if (!model)
        return QString();
    if (!HpfModelAccess::status(*model).pending) {
        const QVariant::Type type = model->columnType(column);
        const QString text = model->getStatDispalyQString(column);
        const bool isNumber = type == QVariant::Int || type == QVariant::LongLong || type == QVariant::Double;
        statisticsTexts[column] = isNumber ? groupedText(text) : text;
    }
    return statisticsTexts[column];
}

} // namespace ZB
