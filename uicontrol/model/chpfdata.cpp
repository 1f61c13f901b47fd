#include "model/chpfdata.h"

#include <boost/thread/lock_guard.hpp>

#include "model/ccolumnplan.h"
#include "model/chpfdatamodel.h"
#include "model/chpfextradatamodel.h"
#include "model/fieldvalue.h"
#include "model/modelrelease.h"
#include "model/recordsearch.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

using Lock = boost::lock_guard<boost::mutex>;

} // namespace

CHpfData::CHpfData(const RecordPtr &data, const QMap<int, int> &fieldColumnMap, boost::shared_ptr<CHpfDataModel> model)
    : record(data), owner(std::move(model))
{
    // Nobody else knows the row yet, so all of this goes without its lock.
    if (!owner)
        return;
    const CColumnPlan &plan = owner->columnPlan();
    startColors(plan, fieldColumnMap);
    takeStatistics(plan, data, fieldColumnMap);
}

CHpfData::~CHpfData()
{
    releaseModel(std::move(owner));
}

bool CHpfData::isExtra(int column) const
{
    return owner && owner->extraData().exist(column);
}

QString CHpfData::getDisplayQString(int column)
{
    return isExtra(column) ? owner->extraData().getString(qsKey(), column) : getIDataString(column);
}

QString CHpfData::getQString(int column)
{
    if (isExtra(column))
        return owner->extraData().getString(qsKey(), column);
    const Lock lock(mutex);
    return valueAt(placeOf(column)).toString();
}

int CHpfData::getInt(int column)
{
    const bool extra = isExtra(column);
    const QString extraKey = extra ? qsKey() : QString(); // takes the lock itself
    const Lock lock(mutex);
    return extra ? owner->extraData().getInt(extraKey, column) : valueAt(placeOf(column)).toInt();
}

double CHpfData::getDouble(int column)
{
    const bool extra = isExtra(column);
    const QString extraKey = extra ? qsKey() : QString();
    const Lock lock(mutex);
    if (extra)
        return owner->extraData().getDouble(extraKey, column);
    const Place place = placeOf(column);
    if (place.holder != nullptr && place.field->dataType == kdservice::ExtDouble)
        return place.holder->getDouble(place.field->fieldId); // sums and sorts read these by the million
    return valueAt(place).toDouble();
}

qint64 CHpfData::getLongLong(int column)
{
    const Lock lock(mutex);
    const Place place = placeOf(column);
    if (place.holder != nullptr && place.field->dataType == kdservice::ExtLong)
        return place.holder->getLong(place.field->fieldId);
    return valueAt(place).toLongLong();
}

const QColor *CHpfData::getColor(int column)
{
    const bool extra = isExtra(column);
    const QString extraKey = extra ? qsKey() : QString();
    const Lock lock(mutex);
    return extra ? owner->extraData().getColor(extraKey, column) : recordColor(column);
}

std::string CHpfData::key()
{
    const Lock lock(mutex);
    return record ? record->getKey() : std::string();
}

void CHpfData::updateData(const RecordPtr &data, const QMap<int, int> &fieldColumnMap, bool)
{
    {
        const Lock lock(mutex);
        record = data;
    }
    updateOriginData(data, fieldColumnMap);
}

void CHpfData::updateOriginData(const RecordPtr &data, const QMap<int, int> &fieldColumnMap)
{
    if (!owner)
        return;
    const CColumnPlan &plan = owner->columnPlan();
    const Lock lock(mutex);
    takeStatistics(plan, data, fieldColumnMap);
}

void CHpfData::takeStatistics(const CColumnPlan &plan, const RecordPtr &data, const QMap<int, int> &fieldColumnMap)
{
    if (!data)
        return;
    if (fieldColumnMap.isSharedWith(plan.maps().columnOfField))
        statistics.take(*data, plan.statLayout());
    else
        statistics.take(*data, plan.statLayout(), fieldColumnMap);
}

CHpfData::RecordPtr CHpfData::getIData() const
{
    const Lock lock(mutex);
    return record;
}

QVariant CHpfData::getStatValue(int column) const
{
    const Lock lock(mutex);
    return statistics.value(column);
}

void CHpfData::setColorKey(int column, const QString &key)
{
    const QColor *color = ZB::CUiResource::instance()->getColor(key);
    const Lock lock(mutex);
    colors[column] = color;
}

void CHpfData::setAllColorKey(const QString &key)
{
    if (!owner)
        return;
    const CColumnPlan &plan = owner->columnPlan();
    const Lock lock(mutex);
    colors = plan.withAllColumns(colors, key);
}

const char *CHpfData::entrustColorKey(kdservice::EEntrustBS bs) const
{
    return sideColorKey(bs);
}

void CHpfData::resetColorKey(const QMap<int, int> &map)
{
    if (!owner)
        return;
    const CColumnPlan &plan = owner->columnPlan();
    const Lock lock(mutex);
    startColors(plan, map);
}

void CHpfData::startColors(const CColumnPlan &plan, const QMap<int, int> &map)
{
    if (colors.isEmpty() && map.isSharedWith(plan.maps().columnOfField)) {
        colors = plan.defaultColors();
        return;
    }
    for (auto field = map.begin(); field != map.end(); ++field)
        colors[field.key()] = plan.defaultColor();
}

const QColor *CHpfData::recordColor(int column) const
{
    const QColor *color = colors.value(column, nullptr);
    if (!owner)
        return color != nullptr ? color : ZB::CUiResource::instance()->getColor(QLatin1String(defaultTextColorKey));
    const CColumnPlan &plan = owner->columnPlan();
    if (color != nullptr && color != plan.defaultColor())
        return color;
    const CColumnPlan::Column *planned = owner->fieldColors() && record ? plan.column(column) : nullptr;
    if (planned == nullptr || planned->format.field() == nullptr)
        return plan.defaultColor();
    RecordPtr keep;
    const kdservice::IData *holder = recordHolding(*record, planned->format.fieldId(), keep);
    return holder == nullptr ? plan.defaultColor() : plan.fieldColor(planned->format.colorKey(*holder));
}

bool CHpfData::getData(const int &column, QVariant &out) const
{
    const Lock lock(mutex);
    const Place place = placeOf(column);
    return place.holder != nullptr && readFieldValue(*place.holder, place.field->dataType, place.field->fieldId, out);
}

CHpfData::Place CHpfData::placeOf(int column) const
{
    Place place;
    if (!record || !owner)
        return place;
    const CColumnPlan::Column *planned = owner->columnPlan().column(column);
    place.field = planned == nullptr ? nullptr : planned->format.field();
    if (place.field != nullptr)
        place.holder = recordHolding(*record, place.field->fieldId, place.keep);
    return place;
}

/// Invalid where there is none.
QVariant CHpfData::valueAt(const Place &place)
{
    QVariant value;
    if (place.holder != nullptr)
        readFieldValue(*place.holder, place.field->dataType, place.field->fieldId, value);
    return value;
}

QString CHpfData::getIDataString(int column) const
{
    const Lock lock(mutex);
    if (!record || !owner)
        return QString();
    const CColumnPlan::Column *planned = owner->columnPlan().column(column);
    if (planned == nullptr || planned->format.field() == nullptr)
        return QString();
    RecordPtr keep;
    const kdservice::IData *holder = recordHolding(*record, planned->format.fieldId(), keep);
    return holder == nullptr ? QString() : planned->format.text(*holder);
}

} // namespace KV
