#include <algorithm>
#include <boost/thread/lock_types.hpp>

#include "kdservice/typemanager.h"
#include "model/ccolumnplan.h"
#include "model/chpfdatamodel.h"
#include "model/chpfextradatamodel.h"
#include "model/fieldvalue.h"

namespace KV {

namespace {

using ReadLock = boost::shared_lock<boost::shared_mutex>;
using WriteLock = boost::unique_lock<boost::shared_mutex>;

constexpr int rejectReasonField = 1621501;

bool isOrderMeta(int metaId)
{
    return metaId == 16202 || metaId == 16204;
}

int alignmentOf(const kdservice::FieldDes &field)
{
    if (field.getProperty(2))
        return Qt::AlignLeft | Qt::AlignVCenter;
    if (field.getProperty(3))
        return Qt::AlignHCenter | Qt::AlignVCenter;
    return Qt::AlignRight | Qt::AlignVCenter; // what property 4 asks for too
}

} // namespace

struct CHpfDataModel::NewColumn
{
    kdservice::FieldDes *field = nullptr;
    CHpfDataColumnProperty property;
};

void CHpfDataModel::initColumns(const std::vector<int> &metaIds)
{
    dropColumns();
    std::vector<NewColumn> columns;
    for (kdservice::FieldDes *field : kdservice::TypeManager::instance()->getAllFields(metaIds, tradeType())) {
        if (field == nullptr)
            continue;
        columns.push_back(columnOf(*field));
        setColumnStatEnable(static_cast<int>(columns.size()) - 1, columns.back().property.statEnable);
    }
    storeColumns(columns);
}

void CHpfDataModel::dropColumns()
{
    QList<int> extraColumns;
    {
        const WriteLock lock(mutex);
        columnOfField.clear();
        properties.clear();
        extraColumns.swap(addedExtraColumns);
        forgetPlan();
    }
    for (const int column : qAsConst(extraColumns))
        extraDataModel->removeColumn(column);
}

CHpfDataModel::NewColumn CHpfDataModel::columnOf(kdservice::FieldDes &field) const
{
    NewColumn column;
    column.field = &field;
    CHpfDataColumnProperty &property = column.property;
    if (isOrderMeta(getMetaID()) && field.fieldId == rejectReasonField)
        property.name = QStringLiteral("废单原因");
    else
        property.name = kdservice::TypeManager::instance()->getFieldChsNameByType(&field, tradeType());
    property.type = dataTypeToQtType(field.dataType);
    property.fieldId = field.fieldId;
    property.alignment = alignmentOf(field);
    property.statEnable = field.getProperty(1);
    property.flag8 = field.getProperty(8);
    property.flag11 = field.getProperty(11);
    return column;
}

void CHpfDataModel::storeColumns(const std::vector<NewColumn> &columns)
{
    {
        const WriteLock lock(mutex);
        int number = 0;
        for (const NewColumn &column : columns) {
            columnOfField[column.property.fieldId] = number;
            fields[number] = column.field;
            properties[number] = column.property;
            ++number;
        }
        forgetPlan();
        useKnownPlan();
    }
    columnsChanged();
}

QVariant::Type CHpfDataModel::dataTypeToQtType(kdservice::EXT_DATA_TYPE type) const
{
    return qtTypeOf(type);
}

void CHpfDataModel::forgetPlan()
{
    ++columnsVersion;
    plan.store(nullptr, std::memory_order_release);
}

ColumnMaps CHpfDataModel::presentMaps() const
{
    return {columnOfField, properties, fields, tradeType()};
}

void CHpfDataModel::useKnownPlan()
{
    const ColumnMaps maps = presentMaps();
    for (const auto &known : plans) {
        if (!(known->maps() == maps))
            continue;
        columnOfField = known->maps().columnOfField; // the same object: rows tell it from a stranger's map by that
        plan.store(known.get(), std::memory_order_release);
        return;
    }
}

const CColumnPlan &CHpfDataModel::makePlan() const
{
    while (true) {
        ColumnMaps maps;
        quint64 version = 0;
        {
            const ReadLock lock(mutex);
            maps = presentMaps();
            version = columnsVersion;
        }
        auto made = std::make_unique<CColumnPlan>(maps);
        const WriteLock lock(mutex);
        if (const CColumnPlan *ready = plan.load(std::memory_order_acquire))
            return *ready;
        if (version != columnsVersion)
            continue;
        plans.push_back(std::move(made));
        plan.store(plans.back().get(), std::memory_order_release);
        return *plans.back();
    }
}

} // namespace KV
