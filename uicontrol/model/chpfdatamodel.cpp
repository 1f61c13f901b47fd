#include "model/chpfdatamodel.h"

#include <boost/thread/lock_types.hpp>

#include "kv/cuserconfig.h"
#include "model/ccolumnplan.h"
#include "model/chpfextradatamodel.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

using ReadLock = boost::shared_lock<boost::shared_mutex>;
using WriteLock = boost::unique_lock<boost::shared_mutex>;

constexpr int extraPrecision = 2;

bool isNumber(kdservice::EXT_DATA_TYPE type)
{
    return type == kdservice::ExtInt || type == kdservice::ExtLong || type == kdservice::ExtDouble;
}

} // namespace

CHpfDataModel::CHpfDataModel(int metaId, kdservice::EVxTraderType traderType)
    : ZB::IBaseHpfTableModel(true), plan(nullptr), extraDataModel(std::make_unique<CHpfExtraDataModel>()),
      background(ZB::CUiResource::instance()->getColor(QStringLiteral("clr_table_background"))), meta(metaId),
      trader(traderType), fieldColorsOn(false)
{
    extraDataModel->setChangeListener([this] { setUpdated(true); });
    if (metaId != -1)
        CHpfDataModel::initColumns({metaId});
}

CHpfDataModel::~CHpfDataModel() = default;

int CHpfDataModel::columnCount() const
{
    const ReadLock lock(mutex);
    return properties.size();
}

QString CHpfDataModel::columnHeader(int column) const
{
    CHpfDataColumnProperty property;
    getColumnProperty(column, property);
    const QStringList parts = property.name.split(QLatin1Char('-'));
    return parts.size() <= 2 ? parts.first() : property.name;
}

QVariant::Type CHpfDataModel::columnType(int column) const
{
    if (const CColumnPlan *ready = plan.load(std::memory_order_acquire)) {
        const CColumnPlan::Column *planned = ready->column(column);
        return planned == nullptr ? QVariant::Invalid : planned->type;
    }
    CHpfDataColumnProperty property;
    getColumnProperty(column, property);
    return static_cast<QVariant::Type>(property.type);
}

const kdservice::FieldDes *CHpfDataModel::fieldOf(int column) const
{
    const CColumnPlan::Column *planned = columnPlan().column(column);
    return planned == nullptr ? nullptr : planned->format.field();
}

ZB::CFlags<utils::EFormatNumberFlag> CHpfDataModel::columnFlag(int column) const
{
    const kdservice::FieldDes *field = fieldOf(column);
    if (field == nullptr)
        return {};
    const CUserConfig *config = getUserConfig();
    const bool grouped = isNumber(field->dataType) && config != nullptr && config->isSegmentedFormat();
    return grouped ? field->formatFlags | utils::FormatGroupDigits : field->formatFlags;
}

bool CHpfDataModel::columnFlashChange(int column) const
{
    const kdservice::FieldDes *field = fieldOf(column);
    return field != nullptr && field->getProperty(6);
}

const QColor *CHpfDataModel::getBackgroundColor(int) const
{
    return background;
}

/// The user's grouping goes into all numbers; extra values and texts that need a look at another record are the row's
/// own, whatever its value is.
int CHpfDataModel::textContext(int column) const
{
    const CUserConfig *config = getUserConfig();
    const int grouping = config == nullptr ? 0 : static_cast<int>(config->getSegmentedFormatFlag().value());
    const CColumnPlan::Column *planned = columnPlan().column(column);
    const bool follows = planned == nullptr || planned->format.textFollowsValue();
    return follows && !extraDataModel->exist(column) ? grouping : -1 - grouping;
}

void CHpfDataModel::clear()
{
    clearRows();
    extraDataModel->clear();
}

void CHpfDataModel::onTimer() {}

int CHpfDataModel::addColumn(const CHpfDataColumnProperty &property, const QString &name, bool extra)
{
    int number = 0;
    {
        const WriteLock lock(mutex);
        number = properties.size();
        properties[number] = property;
        if (extra)
            addedExtraColumns.append(number);
        forgetPlan();
        useKnownPlan();
    }
    if (extra)
        extraDataModel->addColumn(number, CExtraColumnInfo(name, extraPrecision, utils::FormatNone));
    columnsChanged();
    return number;
}

void CHpfDataModel::setMetaID(int metaId)
{
    if (meta.exchange(metaId) == metaId)
        return;
    clear();
    initColumns({metaId});
}

int CHpfDataModel::getMetaID() const
{
    return meta.load();
}

void CHpfDataModel::setTradeType(kdservice::EVxTraderType traderType)
{
    if (trader.exchange(traderType) == traderType)
        return;
    clear();
    initColumns({getMetaID()});
}

kdservice::EVxTraderType CHpfDataModel::tradeType() const
{
    return trader.load();
}

const QMap<int, int> &CHpfDataModel::fieldColumnMap() const
{
    const ReadLock lock(mutex);
    return columnOfField;
}

const QMap<int, CHpfDataColumnProperty> &CHpfDataModel::columnPropertyMap() const
{
    const ReadLock lock(mutex);
    return properties;
}

const QMap<int, kdservice::FieldDes *> &CHpfDataModel::columnFieldDesMap() const
{
    const ReadLock lock(mutex);
    return fields;
}

QMap<int, int> CHpfDataModel::fieldColumnMapCopy() const
{
    const ReadLock lock(mutex);
    return columnOfField;
}

bool CHpfDataModel::getColumnProperty(const int &column, CHpfDataColumnProperty &out) const
{
    const ReadLock lock(mutex);
    const auto found = properties.constFind(column);
    if (found == properties.constEnd())
        return false;
    out = *found;
    return true;
}

bool CHpfDataModel::getFieldDesID(int column, kdservice::FieldDes **out) const
{
    const ReadLock lock(mutex);
    const auto found = fields.constFind(column);
    if (found == fields.constEnd() || out == nullptr)
        return false;
    *out = *found;
    return true;
}

CHpfExtraDataModel *CHpfDataModel::getExtraDataModel() const
{
    return extraDataModel.get();
}

void CHpfDataModel::setFieldColors(bool on)
{
    if (fieldColorsOn.exchange(on) != on)
        setUpdated(true);
}

} // namespace KV
