// Columns of a paged model: their fields, texts and sums.

#include "pagemodel/chpfpagedatamodel_p.h"
#include "pagemodel/pagemenugatherer.h"

namespace KV {

/// Records are sorted again, since their values may be others.
template <typename Change>
void CHpfPageDataModel::changeColumns(Change work)
{
    settledChange([&](PageModelCore &c) {
        work(c.columns);
        c.columnsChanged();
    });
    finishWork();
}

void CHpfPageDataModel::setTraderType(kdservice::EVxTraderType traderType)
{
    changeColumns([&](PageColumns &columns) { columns.setTraderType(traderType); });
}

void CHpfPageDataModel::setColumnFieldDesMap(const QMap<int, kdservice::FieldDes *> &map)
{
    changeColumns([&](PageColumns &columns) { columns.setFieldDesMap(map); });
}

void CHpfPageDataModel::setColumnIDPropertyMap(const QMap<int, CHpfDataColumnProperty> &map)
{
    settledChange([&](PageModelCore &c) { c.columns.setPropertyMap(map); });
}

void CHpfPageDataModel::setFieldColumnIDMap(const QMap<int, int> &map)
{
    changeColumns([&](PageColumns &columns) { columns.setFieldColumnMap(map); });
}

QMap<int, kdservice::FieldDes *> CHpfPageDataModel::getColumnFieldDesMap() const
{
    return shownRead([](const PageModelCore &c) { return c.columns.fieldDesMap(); });
}

bool CHpfPageDataModel::getFieldDesID(int column, kdservice::FieldDes **field) const
{
    const QMap<int, kdservice::FieldDes *> map = getColumnFieldDesMap();
    const auto found = map.constFind(column);
    if (found == map.constEnd() || !*found || !field)
        return false;
    *field = *found;
    return true;
}

int CHpfPageDataModel::getFiledIdByColumn(int column) const
{
    return shownRead([&](const PageModelCore &c) { return c.columns.fieldIdOf(column); });
}

QVariant::Type CHpfPageDataModel::columnType(int column) const
{
    return shownRead([&](const PageModelCore &c) { return c.columns.type(column); });
}

bool CHpfPageDataModel::getValue(int column, const boost::shared_ptr<kdservice::IData> &record, QVariant &value) const
{
    return record && shownRead([&](const PageModelCore &c) { return c.columns.value(*record, column, value); });
}

bool CHpfPageDataModel::getIDataStringByColID(int column, const boost::shared_ptr<kdservice::IData> &record,
                                              QString &text, OriginData &origin) const
{
    return record && shownRead([&](const PageModelCore &c) { return c.columns.origin(*record, column, text, origin); });
}

QStringList CHpfPageDataModel::getMenuItems(int column) const
{
    PageMenuGatherer gatherer(*this, column);
    while (!gatherer.step(1000)) {
    }
    return gatherer.items();
}

void CHpfPageDataModel::setColumnStatEnable(int column, bool enable)
{
    change([&](PageModelCore &c) { c.setColumnStatEnable(column, enable); });
}

int CHpfPageDataModel::getStatColumnInt(int column) const
{
    return read([&](const PageModelCore &c) { return c.statistics.sumInt(column); });
}

qint64 CHpfPageDataModel::getStatColumnLongLong(int column) const
{
    return read([&](const PageModelCore &c) { return c.statistics.sumLong(column); });
}

double CHpfPageDataModel::getStatColumnDouble(int column) const
{
    return read([&](const PageModelCore &c) { return c.statistics.sumDouble(column); });
}

} // namespace KV
