#include "model/chpfthreaddatamodel.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <memory>
#include <utility>

#include "model/chpfdata.h"
#include "model/chpfsorttimedata.h"
#include "model/modelrelease.h"
#include "net/rpcengine.h"

namespace KV {

namespace {

constexpr int stepsPerRow = 2;    ///< it is made and it is stored
constexpr int rowsPerPiece = 256; ///< made before somebody who cancels is heard: less than a millisecond

} // namespace

CHpfThreadDataModel::CHpfThreadDataModel(int metaId, kdservice::EVxTraderType traderType)
    : CHpfDataModel(metaId, traderType), strand(net::RPCEngine::instance()->getStrand("uicontrol_hpf_data_model"))
{
}

CHpfThreadDataModel::~CHpfThreadDataModel() = default;

template <typename Task>
void CHpfThreadDataModel::post(qint64 rows, Task task)
{
    const boost::weak_ptr<CHpfDataModel> weak = shared_from_this();
    strand->post([weak, task, ticket = loads.enter(stepsPerRow * rows)] {
        if (boost::shared_ptr<CHpfDataModel> model = weak.lock()) {
            auto &loaded = static_cast<CHpfThreadDataModel &>(*model);
            loaded.present = ticket;
            task(loaded);
            loaded.present = CLoadCount::uncounted;
            loaded.loads.leave(ticket);
            releaseModel(std::move(model));
        }
    });
}

void CHpfThreadDataModel::addDatas(const Records &records)
{
    addDatas(Records(records));
}

/// A task is copied on its way, its records are not.
void CHpfThreadDataModel::addDatas(Records &&records)
{
    const auto handedOver = std::make_shared<const Records>(std::move(records));
    post(static_cast<qint64>(handedOver->size()),
         [handedOver](CHpfThreadDataModel &model) { model.doAddDatas(*handedOver); });
}

void CHpfThreadDataModel::addDatas(const ColoredRecords &records, const Filters &filters)
{
    post(records.size(), [records, filters](CHpfThreadDataModel &model) { model.doAddDatas(records, filters); });
}

int CHpfThreadDataModel::loadProgress() const
{
    return loads.progress();
}

quint64 CHpfThreadDataModel::loadNumber() const
{
    return loads.number();
}

bool CHpfThreadDataModel::cancelLoad()
{
    return loads.cancel();
}

void CHpfThreadDataModel::dismiss()
{
    loads.dismiss();
    clear();
}

/// makeRow(index, columns, model): an empty pointer for a record that is none. False when there is none, or when the
/// batch was cancelled before the first row was stored.
template <typename MakeRow>
bool CHpfThreadDataModel::load(int count, MakeRow makeRow)
{
    if (count == 0)
        return false;
    const boost::shared_ptr<CHpfDataModel> self = shared_from_this();
    const QMap<int, int> columns = fieldColumnMapCopy();
    QVector<Row> rows;
    rows.reserve(count);
    for (int index = 0; index < count; ++index) {
        if (index % rowsPerPiece == 0 && !loads.advance(present, std::min(rowsPerPiece, count - index)))
            return false;
        if (Row row = makeRow(index, columns, self))
            rows.append(std::move(row));
    }
    store(rows);
    return true;
}

void CHpfThreadDataModel::store(const QVector<Row> &rows)
{
    int stored = 0;
    updateDatas(rows, [this, &rows, &stored](int through) {
        const int before = std::exchange(stored, through);
        if (loads.advance(present, through - before))
            return true;
        if (loads.isDismissed(present)) // since the answer before this one
            takeOut(rows, before, through);
        return false;
    });
}

void CHpfThreadDataModel::takeOut(const QVector<Row> &rows, int first, int end)
{
    QVector<std::string> keys;
    std::for_each(rows.begin() + first, rows.begin() + end, [&keys](const Row &row) { keys.append(row->key()); });
    removeDatasByKey(keys);
}

void CHpfThreadDataModel::doAddDatas(const Records &records)
{
    load(static_cast<int>(records.size()), [&records](int index, const QMap<int, int> &columns, const auto &self) {
        const RecordPtr &record = records[static_cast<std::size_t>(index)];
        return record ? boost::make_shared<CHpfData>(record, columns, self) : nullptr;
    });
}

void CHpfThreadDataModel::doAddDatas(const ColoredRecords &records, const Filters &filters)
{
    const auto makeRow = [&records](int index, const QMap<int, int> &columns, const auto &self) {
        const auto &[record, colorKey] = records[index];
        auto row = record ? boost::make_shared<CHpfData>(record, columns, self) : nullptr;
        if (row && !colorKey.isEmpty())
            row->setAllColorKey(colorKey);
        return row;
    };
    if (!load(records.size(), makeRow))
        return;
    for (auto filter = filters.begin(); filter != filters.end(); ++filter) {
        auto values = filter.value();
        filterColumn(filter.key(), values);
    }
}

void CHpfThreadDataModel::updateDataFixColorForSortTime(const QString &key, const RecordPtr &record,
                                                        const QString &colorKey)
{
    if (!record)
        return;
    auto row = boost::make_shared<CHpfSortTimeData>(record, fieldColumnMapCopy(), shared_from_this());
    if (!colorKey.isEmpty())
        row->setAllColorKey(colorKey);
    if (containData(key.toUtf8().toStdString()))
        updateData(row);
    else
        addData(row);
}

} // namespace KV
