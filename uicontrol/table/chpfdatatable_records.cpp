#include <algorithm>
#include <boost/make_shared.hpp>

#include "model/chpfdata.h"
#include "model/chpfdatamodel.h"
#include "model/chpfsorttimedata.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "table/chpfdatatable.h"

namespace KV {

namespace {

/// Records of so many rows are still in the processor's cache when the model reads them again.
constexpr int rowsPerPiece = 256;

} // namespace

template <typename RowClass>
boost::shared_ptr<RowClass> CHpfDataTable::makeRow(const RecordPtr &record, const QString &colorKey) const
{
    auto row = boost::make_shared<RowClass>(record, dataModel->fieldColumnMap(), dataModel);
    if (!colorKey.isEmpty())
        row->setAllColorKey(colorKey);
    return row;
}

void CHpfDataTable::takeRow(const RowPtr &row, bool redraw)
{
    dataModel->updateData(row); // a new key is added
    if (redraw)
        updateTable();
}

void CHpfDataTable::updateData(const RecordPtr &record, bool redraw)
{
    if (record && dataModel)
        takeRow(makeRow<CHpfData>(record), redraw);
}

void CHpfDataTable::updateDataFixColor(const RecordPtr &record, const QString &colorKey, bool redraw)
{
    if (record && dataModel)
        takeRow(makeRow<CHpfData>(record, colorKey), redraw);
}

void CHpfDataTable::updateDataFixColorForSortTime(const RecordPtr &record, const QString &colorKey, bool redraw)
{
    if (record && dataModel)
        takeRow(makeRow<CHpfSortTimeData>(record, colorKey), redraw);
}

template <typename Records>
void CHpfDataTable::takeRecords(const Records &records, bool redraw)
{
    if (!dataModel)
        return;
    const int piece = std::min(rowsPerPiece, static_cast<int>(records.size()));
    QVector<RowPtr> rows;
    rows.reserve(piece);
    for (const RecordPtr &record : records) {
        if (record)
            rows.append(makeRow<CHpfData>(record));
        if (rows.size() == piece) {
            dataModel->updateDatas(rows);
            rows.clear();
        }
    }
    dataModel->updateDatas(rows);
    if (redraw)
        updateTable();
}

template <typename RowClass>
void CHpfDataTable::takeColored(const ColoredRecords &records, bool redraw)
{
    if (!dataModel)
        return;
    QVector<RowPtr> rows;
    rows.reserve(records.size());
    for (const auto &[record, colorKey] : records)
        if (record)
            rows.append(makeRow<RowClass>(record, colorKey));
    dataModel->updateDatas(rows);
    if (redraw)
        updateTable();
}

void CHpfDataTable::updateDatas(const std::vector<RecordPtr> &records, bool redraw)
{
    takeRecords(records, redraw);
}

void CHpfDataTable::updateDatas(const QVector<RecordPtr> &records, bool redraw)
{
    takeRecords(records, redraw);
}

void CHpfDataTable::updateDatas(const QList<RecordPtr> &records, bool redraw)
{
    takeRecords(records, redraw);
}

void CHpfDataTable::updateDataFixColor(const ColoredRecords &records, bool redraw)
{
    takeColored<CHpfData>(records, redraw);
}

void CHpfDataTable::updateDataFixColorForSortTime(const ColoredRecords &records, bool redraw)
{
    takeColored<CHpfSortTimeData>(records, redraw);
}

void CHpfDataTable::removeDataByKey(const QString &key, bool refresh)
{
    const std::string rowKey = key.toStdString();
    if (dataModel)
        dataModel->removeDataByKey(rowKey);
    if (pageModel)
        pageModel->removeDataByKey(rowKey);
    if (refresh)
        updateTable();
}

void CHpfDataTable::removeDatasByKey(const QVector<QString> &keys, bool refresh)
{
    QVector<std::string> rowKeys;
    rowKeys.reserve(keys.size());
    for (const QString &key : keys)
        rowKeys.append(key.toStdString());
    if (dataModel)
        dataModel->removeDatasByKey(rowKeys);
    for (const std::string &key : qAsConst(rowKeys))
        if (pageModel)
            pageModel->removeDataByKey(key);
    if (refresh)
        updateTable();
}

void CHpfDataTable::clear()
{
    if (dataModel)
        dataModel->clear();
    updateTable();
    firstFitDone = false;
}

QList<CHpfDataTable::RowPtr> CHpfDataTable::getAllDatas() const
{
    return dataModel ? dataModel->getAllDatas() : QList<RowPtr>();
}

CHpfDataTable::RowPtr CHpfDataTable::getData(int row) const
{
    return dataModel ? dataModel->getData(row) : RowPtr();
}

CHpfDataTable::RowPtr CHpfDataTable::getDataByKey(const QString &key) const
{
    return dataModel ? dataModel->getDataByKey(key) : RowPtr();
}

int CHpfDataTable::count() const
{
    return dataModel ? dataModel->size() : 0;
}

} // namespace KV
