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

/// columns: of the model, asked for once for many rows.
template <typename RowClass>
boost::shared_ptr<RowClass> makeRow(const boost::shared_ptr<CHpfDataModel> &model, const QMap<int, int> &columns,
                                    const boost::shared_ptr<kdservice::IData> &record,
                                    const QString &colorKey = QString())
{
    auto row = boost::make_shared<RowClass>(record, columns, model);
    if (!colorKey.isEmpty())
        row->setAllColorKey(colorKey);
    return row;
}

} // namespace

void CHpfDataTable::takeRow(const RowPtr &row, bool redraw)
{
    dataModel->updateData(row); // a new key is added
    if (redraw)
        updateTable();
}

void CHpfDataTable::updateData(const RecordPtr &record, bool redraw)
{
    if (record && dataModel)
        takeRow(makeRow<CHpfData>(dataModel, dataModel->fieldColumnMap(), record), redraw);
}

void CHpfDataTable::updateDataFixColor(const RecordPtr &record, const QString &colorKey, bool redraw)
{
    if (record && dataModel)
        takeRow(makeRow<CHpfData>(dataModel, dataModel->fieldColumnMap(), record, colorKey), redraw);
}

void CHpfDataTable::updateDataFixColorForSortTime(const RecordPtr &record, const QString &colorKey, bool redraw)
{
    if (record && dataModel)
        takeRow(makeRow<CHpfSortTimeData>(dataModel, dataModel->fieldColumnMap(), record, colorKey), redraw);
}

template <typename Records>
void CHpfDataTable::takeRecords(const Records &records, bool redraw)
{
    const boost::shared_ptr<CHpfDataModel> model = dataModel; // whoever hears of rows may set another one
    if (!model)
        return;
    QMap<int, int> columns = model->fieldColumnMap();
    const int piece = std::min(rowsPerPiece, static_cast<int>(records.size()));
    QVector<RowPtr> rows;
    rows.reserve(piece);
    for (const RecordPtr &record : records) {
        if (record)
            rows.append(makeRow<CHpfData>(model, columns, record));
        if (rows.size() == piece) {
            model->updateDatas(rows);
            rows.clear();
            columns = model->fieldColumnMap();
        }
    }
    model->updateDatas(rows);
    if (redraw)
        updateTable();
}

template <typename RowClass>
void CHpfDataTable::takeColored(const ColoredRecords &records, bool redraw)
{
    if (!dataModel)
        return;
    const QMap<int, int> &columns = dataModel->fieldColumnMap();
    QVector<RowPtr> rows;
    rows.reserve(records.size());
    for (const auto &[record, colorKey] : records)
        if (record)
            rows.append(makeRow<RowClass>(dataModel, columns, record, colorKey));
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
