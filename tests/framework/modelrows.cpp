#include "modelrows.h"

#include <QtGui/QColor>

namespace modeltest {

QString shownText(const Record &record, int column)
{
    if (record.blank)
        return QStringLiteral("~");
    switch (column) {
    case Quantity:
        return record.quantity == noQuantity ? QStringLiteral("-") : QString::number(record.quantity);
    case Status:
        return record.status == noStatus ? QStringLiteral("-") : QLatin1Char('S') + QString::number(record.status);
    case Price:
        return record.price == noPrice ? QStringLiteral("-") : QString::number(record.price, 'f', 2);
    case Name:
        return record.name;
    default:
        return QString();
    }
}

void ValueRow::setRecord(const Record &record)
{
    const std::lock_guard<std::mutex> lock(mutex);
    current = record;
}

Record ValueRow::record() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return current;
}

QString ValueRow::getDisplayQString(int column)
{
    ++textsMade;
    return shownText(record(), column);
}

QString ValueRow::getQString(int column)
{
    const Record read = record();
    if (read.blank)
        return QString();
    switch (column) {
    case Quantity:
        return QString::number(read.quantity);
    case Status:
        return QString::number(read.status);
    case Price:
        return QString::number(read.price);
    case Name:
        return read.name;
    default:
        return QString();
    }
}

int ValueRow::getInt(int column)
{
    return column == Status ? record().status : 0;
}

double ValueRow::getDouble(int column)
{
    if (column != Price)
        return 0;
    if (onGetDouble)
        onGetDouble();
    return record().price;
}

qint64 ValueRow::getLongLong(int column)
{
    return column == Quantity ? record().quantity : 0;
}

const QColor *ValueRow::getColor(int)
{
    static const QColor color(Qt::black);
    return &color;
}

ValueModel::~ValueModel()
{
    if (onDestruction)
        onDestruction();
}

QString ValueModel::columnHeader(int column) const
{
    return QString::number(column);
}

QVariant::Type ValueModel::columnType(int column) const
{
    static constexpr QVariant::Type types[] = {QVariant::LongLong, QVariant::Int, QVariant::Double, QVariant::String};
    if (column < 0 || column >= ColumnCount)
        return QVariant::Invalid;
    return textColumns ? QVariant::String : types[column];
}

QString ValueModel::getStatDispalyQString(int) const
{
    return QString();
}

const QColor *ValueModel::getBackgroundColor(int) const
{
    static const QColor color(Qt::white);
    return &color;
}

utils::CFlags<utils::EFormatNumberFlag> ValueModel::columnFlag(int) const
{
    return {};
}

int ValueModel::customSort(const Row &a, const Row &b) const
{
    if (!compareRecords)
        return IBaseHpfTableModel::customSort(a, b);
    return compareRecords(static_cast<const ValueRow &>(*a).record(), static_cast<const ValueRow &>(*b).record());
}

void ValueModel::filter(int column, int type, const QSet<QString> &values)
{
    ColumnFilter condition(static_cast<ZB::EFilterType>(type), values);
    filterColumn(column, condition);
}

void ValueModel::narrow(int column, int type, const QSet<QString> &values)
{
    ColumnFilter condition(static_cast<ZB::EFilterType>(type), values);
    filterColumnCombin(column, condition);
}

void ValueModel::_addData(const Row &row)
{
    if (onRow)
        onRow(static_cast<const ValueRow &>(*row).record(), true);
}

void ValueModel::_updateData(const Row &row)
{
    if (onRow)
        onRow(static_cast<const ValueRow &>(*row).record(), false);
}

RowPtr makeRow(const std::string &key, qint64 quantity, int status, double price, const QString &name)
{
    return boost::make_shared<ValueRow>(key, Record{quantity, status, price, name, false});
}

namespace {

QString keysOf(const QList<ZB::IBaseHpfTableModel::Row> &rows)
{
    QStringList keys;
    for (const auto &row : rows)
        keys.append(QString::fromStdString(row->key()));
    return keys.join(QLatin1Char(' '));
}

} // namespace

void fillFour(ValueModel &model)
{
    model.addData(makeRow("a", 3, 1, 1.5, "xx"));
    model.addData(makeRow("b", noQuantity, 2, noPrice, "y"));
    model.addData(makeRow("c", 1, 1, -0.5, "zzz"));
    model.addData(makeRow("d", 2, noStatus, 1.5, ""));
}

QString shownKeys(const ZB::IBaseHpfTableModel &model)
{
    QList<ZB::IBaseHpfTableModel::Row> rows;
    model.getDatas(rows);
    return keysOf(rows);
}

QString allKeys(const ZB::IBaseHpfTableModel &model)
{
    return keysOf(model.getAllDatas());
}

} // namespace modeltest
