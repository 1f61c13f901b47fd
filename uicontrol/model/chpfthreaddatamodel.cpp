#include "model/chpfthreaddatamodel.h"

#include <boost/make_shared.hpp>
#include <memory>
#include <utility>

#include "model/chpfdata.h"
#include "model/chpfsorttimedata.h"
#include "model/modelrelease.h"
#include "net/rpcengine.h"

namespace KV {

CHpfThreadDataModel::CHpfThreadDataModel(int metaId, kdservice::EVxTraderType traderType)
    : CHpfDataModel(metaId, traderType), strand(net::RPCEngine::instance()->getStrand("uicontrol_hpf_data_model"))
{
}

CHpfThreadDataModel::~CHpfThreadDataModel() = default;

template <typename Task>
void CHpfThreadDataModel::post(Task task)
{
    const boost::weak_ptr<CHpfDataModel> weak = shared_from_this();
    strand->post([weak, task] {
        if (boost::shared_ptr<CHpfDataModel> model = weak.lock()) {
            task(static_cast<CHpfThreadDataModel &>(*model));
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
    post([handedOver](CHpfThreadDataModel &model) { model.doAddDatas(*handedOver); });
}

void CHpfThreadDataModel::addDatas(const ColoredRecords &records, const Filters &filters)
{
    post([records, filters](CHpfThreadDataModel &model) { model.doAddDatas(records, filters); });
}

void CHpfThreadDataModel::doAddDatas(const Records &records)
{
    if (records.empty())
        return;
    const boost::shared_ptr<CHpfDataModel> self = shared_from_this();
    const QMap<int, int> columns = fieldColumnMapCopy();
    QVector<Row> rows;
    rows.reserve(static_cast<int>(records.size()));
    for (const RecordPtr &record : records)
        if (record)
            rows.append(boost::make_shared<CHpfData>(record, columns, self));
    updateDatas(rows);
}

void CHpfThreadDataModel::doAddDatas(const ColoredRecords &records, const Filters &filters)
{
    if (records.isEmpty())
        return;
    const boost::shared_ptr<CHpfDataModel> self = shared_from_this();
    const QMap<int, int> columns = fieldColumnMapCopy();
    QVector<Row> rows;
    rows.reserve(records.size());
    for (const auto &[record, colorKey] : records) {
        if (!record)
            continue;
        auto row = boost::make_shared<CHpfData>(record, columns, self);
        if (!colorKey.isEmpty())
            row->setAllColorKey(colorKey);
        rows.append(std::move(row));
    }
    updateDatas(rows);
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
