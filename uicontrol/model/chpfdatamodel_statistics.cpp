#include <cmath>
#include <limits>

#include "kv/cuserconfig.h"
#include "model/chpfdatamodel.h"
#include "model/chpfextradatamodel.h"
#include "model/fieldvalue.h"
#include "zb/numberformat.h"

namespace KV {

namespace {

constexpr qint64 noLong = std::numeric_limits<qint64>::max();

/// Values outside the range, NaN included, mean no statistic.
qint64 toInteger(double value)
{
    constexpr double end = 9223372036854775808.0;
    return value >= -end && value < end ? static_cast<qint64>(value) : noLong;
}

} // namespace

void CHpfDataModel::setColumnStatEnable(int column, bool enable)
{
    if (extraDataModel->exist(column))
        extraDataModel->setColumnStatEnable(column, enable);
    else
        ZB::IBaseHpfTableModel::setColumnStatEnable(column, enable);
}

void CHpfDataModel::resetStatData()
{
    _resetStatMap();
    for (const Row &row : getAllDatas())
        _addStatColumnData(row);
}

void CHpfDataModel::reCalcExStat()
{
    if (!extraDataModel->hasStatistics())
        return;
    // Rows without extra values count for nothing, so where these are few only they are looked up.
    const QStringList keys = extraDataModel->keys();
    QList<Row> rows;
    if (keys.size() > allSize() / 4)
        getDatas(rows);
    else
        for (const QString &key : keys)
            if (indexOfKey(key.toStdString()) >= 0)
                rows.append(getDataByKey(key));
    extraDataModel->reCalcStatOnFilter(rows);
}

QString CHpfDataModel::getStatDispalyQString(int column) const
{
    const bool extra = extraDataModel->exist(column);
    const QVariant::Type type = columnType(column);
    if (type == QVariant::Int || type == QVariant::LongLong)
        return statText(column, extra ? toInteger(extraDataModel->getStatData(column)) : getStatColumnLongLong(column));
    if (type == QVariant::Double)
        return statText(column, extra ? extraDataModel->getStatData(column) : getStatColumnDouble(column));
    return QString();
}

QString CHpfDataModel::statText(int column, qint64 sum) const
{
    const kdservice::FieldDes *field = fieldOf(column);
    if (field == nullptr || sum == noLong)
        return QString();
    return QString::number(field->getProperty(7) && sum < 0 ? 0 : sum, 10);
}

QString CHpfDataModel::statText(int column, double sum) const
{
    const kdservice::FieldDes *field = fieldOf(column);
    if (field == nullptr || field->getProperty(5) || isAbsent(sum))
        return QString();
    if (field->getProperty(7) && sum < 0)
        sum = 0;

    int precision = field->precision;
    auto flags = field->formatFlags;
    CExtraColumnInfo info;
    if (extraDataModel->exist(column) && extraDataModel->getColumnInfo(column, info)) {
        precision = info.precision;
        flags = info.flag;
    }
    const QString invalid = QStringLiteral("非法值");
    if (!field->getProperty(10))
        return ZB::formatDoubleNumber(static_cast<long double>(sum), precision, flags, false, invalid);
    if (const CUserConfig *config = getUserConfig())
        flags |= config->getSegmentedFormatFlag();
    return ZB::formatDoubleNumberSpace(static_cast<long double>(sum), precision, flags, false, invalid);
}

} // namespace KV
