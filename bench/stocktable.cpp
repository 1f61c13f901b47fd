#include "stocktable.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtWidgets/QHeaderView>
#include <algorithm>

#include "kdservice/typemanager.h"
#include "model/fieldformatter.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace bench {

namespace {

constexpr int summedProperty = 1;

/// The record that holds the field: the order itself or its instrument.
boost::shared_ptr<kdservice::IData> holderOf(const OrderPtr &order, int fieldId)
{
    if (order->getFieldDes(fieldId))
        return order;
    return order->getIData(refhost::OrderInstrument);
}

} // namespace

StockModel::StockModel()
{
    for (kdservice::FieldDes *field :
         kdservice::TypeManager::instance()->getAllFields({orderMetaId()}, kdservice::TraderStock))
        fields.push_back(field);
    for (const kdservice::FieldDes *field : fields)
        if (field->getProperty(summedProperty))
            sums.emplace_back(field, 0.0);
}

StockModel::~StockModel() = default;

void StockModel::setOrders(std::vector<OrderPtr> list)
{
    beginResetModel();
    orders = std::move(list);
    rowOfKey.clear();
    rowOfKey.reserve(static_cast<int>(orders.size()));
    for (std::size_t row = 0; row < orders.size(); ++row)
        rowOfKey.insert(orders[row]->hashKey(), static_cast<int>(row));
    for (auto &[field, sum] : sums)
        sum = 0;
    for (const OrderPtr &order : orders)
        count(order, 1);
    endResetModel();
}

int StockModel::columnOfField(int fieldId) const
{
    for (std::size_t column = 0; column < fields.size(); ++column)
        if (fields[column]->fieldId == fieldId)
            return static_cast<int>(column);
    return -1;
}

int StockModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(orders.size());
}

int StockModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(fields.size());
}

QVariant StockModel::data(const QModelIndex &index, int role) const
{
    const OrderPtr &order = orders[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return text(order, index.column());
    case SortRole:
        return rawValue(order, index.column());
    case Qt::ForegroundRole:
        return *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_text_default"));
    case Qt::TextAlignmentRole: {
        const kdservice::FieldDes &field = *fields[static_cast<std::size_t>(index.column())];
        if (field.getProperty(2))
            return int(Qt::AlignLeft | Qt::AlignVCenter);
        return int((field.getProperty(3) ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter);
    }
    default:
        return QVariant();
    }
}

QVariant StockModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    return kdservice::TypeManager::instance()->getFieldChsNameByType(fields[static_cast<std::size_t>(section)],
                                                                     kdservice::TraderStock);
}

QVariant StockModel::text(const OrderPtr &order, int column) const
{
    const kdservice::FieldDes *field = fields[static_cast<std::size_t>(column)];
    QString shown, colorKey, unit;
    QVariant value;
    KV::formatField(holderOf(order, field->fieldId), field, field->fieldId, shown, colorKey, unit, value,
                    kdservice::TraderStock);
    return shown;
}

QString StockModel::shown(const OrderPtr &order, int fieldId)
{
    QString text, colorKey, unit;
    QVariant value;
    KV::formatField(order, order->getFieldDes(fieldId), fieldId, text, colorKey, unit, value, kdservice::TraderStock);
    return text;
}

QVariant StockModel::rawValue(const OrderPtr &order, int column) const
{
    const kdservice::FieldDes &field = *fields[static_cast<std::size_t>(column)];
    const auto holder = holderOf(order, field.fieldId);
    switch (field.dataType) {
    case kdservice::ExtInt:
        return holder->getInt(field.fieldId);
    case kdservice::ExtLong:
        return holder->getLong(field.fieldId);
    case kdservice::ExtDouble:
        return holder->getDouble(field.fieldId);
    default:
        return ZB::sToQs(holder->getString(field.fieldId));
    }
}

void StockModel::update(const OrderPtr &order)
{
    const int row = rowOfKey.value(order->hashKey(), -1);
    if (row < 0)
        return;
    count(orders[static_cast<std::size_t>(row)], -1);
    count(order, 1);
    orders[static_cast<std::size_t>(row)] = order;
    Q_EMIT dataChanged(index(row, 0), index(row, static_cast<int>(fields.size()) - 1));
}

void StockModel::append(const OrderPtr &order)
{
    const int row = static_cast<int>(orders.size());
    beginInsertRows(QModelIndex(), row, row);
    orders.push_back(order);
    rowOfKey.insert(order->hashKey(), row);
    endInsertRows();
    count(order, 1);
}

/// Adds the order's values to the sums, or takes them away.
void StockModel::count(const OrderPtr &order, int sign)
{
    for (auto &[field, sum] : sums)
        sum += sign * (field->dataType == kdservice::ExtDouble ? order->getDouble(field->fieldId)
                                                               : static_cast<double>(order->getLong(field->fieldId)));
}

double StockModel::sumOf(int fieldId) const
{
    for (const auto &[field, sum] : sums)
        if (field->fieldId == fieldId)
            return sum;
    return 0;
}

StockProxy::StockProxy(QObject *parent) : QSortFilterProxyModel(parent)
{
    setSortRole(StockModel::SortRole);
    setDynamicSortFilter(true);
}

StockProxy::~StockProxy() = default;

void StockProxy::setValue(int column, const QString &value)
{
    valueColumn = column;
    accepted = value;
    invalidateFilter();
}

bool StockProxy::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    return valueColumn < 0 ||
           sourceModel()->index(row, valueColumn, parent).data(StockModel::SortRole).toString() == accepted;
}

StockTable::StockTable() : model(new StockModel), proxy(new StockProxy), view(new QTableView)
{
    proxy->setSourceModel(model.get());
    view->setModel(proxy.get());
    view->setSortingEnabled(false);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(rowHeight);
    view->horizontalHeader()->setDefaultSectionSize(columnWidth);
    view->setFont(*ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_table_text_default")));
    view->resize(viewWidth, viewHeight);
    view->show();
    QCoreApplication::processEvents();
}

void StockTable::load(std::vector<OrderPtr> orders)
{
    model->setOrders(std::move(orders));
    paint();
}

void StockTable::paint()
{
    QCoreApplication::processEvents();
    view->viewport()->repaint();
}

int StockTable::visibleRows() const
{
    const int last = view->rowAt(view->viewport()->height() - 1);
    return (last < 0 ? proxy->rowCount() : last + 1) - std::max(view->rowAt(0), 0);
}

int StockTable::visibleCells() const
{
    const int last = view->columnAt(view->viewport()->width() - 1);
    const int columns = (last < 0 ? proxy->columnCount() : last + 1) - std::max(view->columnAt(0), 0);
    return visibleRows() * columns;
}

QImage StockTable::picture() const
{
    return view->viewport()->grab().toImage();
}

} // namespace bench
