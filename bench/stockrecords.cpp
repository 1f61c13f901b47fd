#include "stockrecords.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QColor>
#include <QtWidgets/QHeaderView>
#include <limits>

#include "kdservice/typemanager.h"
#include "model/fieldformatter.h"
#include "stocktable.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace bench {

namespace {

/// Sorts by its number.
class NumberItem : public QTableWidgetItem
{
public:
    bool operator<(const QTableWidgetItem &other) const override
    {
        return number < static_cast<const NumberItem &>(other).number;
    }
    double number = 0;
};

boost::shared_ptr<kdservice::IData> holderOf(const OrderPtr &order, int fieldId)
{
    if (order->getFieldDes(fieldId))
        return order;
    return order->getIData(refhost::OrderInstrument);
}

double numberOf(const OrderPtr &order, const kdservice::FieldDes &field)
{
    switch (field.dataType) {
    case kdservice::ExtInt:
        return order->getInt(field.fieldId);
    case kdservice::ExtLong:
        return static_cast<double>(order->getLong(field.fieldId));
    case kdservice::ExtDouble:
        return order->getDouble(field.fieldId);
    default:
        return 0;
    }
}

} // namespace

StockRecords::StockRecords(const std::vector<OrderPtr> &list) : orders(list), table(new QTableWidget)
{
    for (kdservice::FieldDes *field :
         kdservice::TypeManager::instance()->getAllFields({orderMetaId()}, kdservice::TraderStock))
        fields.push_back(field);
    const int columns = static_cast<int>(fields.size());
    table->setRowCount(static_cast<int>(orders.size()));
    table->setColumnCount(columns);
    placeOfKey.reserve(table->rowCount());
    for (int row = 0; row < table->rowCount(); ++row) {
        const OrderPtr &order = orders[static_cast<std::size_t>(row)];
        placeOfKey.insert(order->hashKey(), row);
        for (int column = 0; column < columns; ++column) {
            auto *item = new NumberItem;
            setCell(*item, order, *fields[static_cast<std::size_t>(column)]);
            table->setItem(row, column, item);
        }
        keyItems.push_back(table->item(row, 0));
    }
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setDefaultSectionSize(columnWidth);
    table->setFont(*ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_table_text_default")));
    table->resize(viewWidth, viewHeight);
    table->show();
    QCoreApplication::processEvents();
}

void StockRecords::setCell(QTableWidgetItem &item, const OrderPtr &order, const kdservice::FieldDes &field)
{
    QString text, colorKey, unit;
    QVariant value;
    KV::formatField(holderOf(order, field.fieldId), &field, field.fieldId, text, colorKey, unit, value,
                    kdservice::TraderStock);
    static_cast<NumberItem &>(item).number = numberOf(order, field);
    item.setForeground(*ZB::CUiResource::instance()->getColor(colorKey));
    item.setTextAlignment(field.getProperty(2)
                              ? int(Qt::AlignLeft | Qt::AlignVCenter)
                              : int((field.getProperty(3) ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter));
    item.setText(text);
}

int StockRecords::columnOfField(int fieldId) const
{
    for (std::size_t column = 0; column < fields.size(); ++column)
        if (fields[column]->fieldId == fieldId)
            return static_cast<int>(column);
    return -1;
}

void StockRecords::updateField(const OrderPtr &order, int fieldId)
{
    const auto place = static_cast<std::size_t>(placeOfKey.value(order->hashKey()));
    orders[place] = order;
    const int column = columnOfField(fieldId);
    const kdservice::FieldDes &field = *fields[static_cast<std::size_t>(column)];
    QString text, colorKey, unit;
    QVariant value;
    KV::formatField(order, &field, fieldId, text, colorKey, unit, value, kdservice::TraderStock);
    auto *item = static_cast<NumberItem *>(table->item(table->row(keyItems[place]), column));
    item->number = numberOf(order, field);
    item->setText(text);
}

void StockRecords::filter(int column, const QSet<QString> &values)
{
    for (int row = 0; row < table->rowCount(); ++row)
        table->setRowHidden(row, !values.isEmpty() && !values.contains(table->item(row, column)->text()));
}

int StockRecords::shownRows() const
{
    return table->rowCount() - table->verticalHeader()->hiddenSectionCount();
}

QStringList StockRecords::sums() const
{
    QStringList texts;
    for (const kdservice::FieldDes *field : fields) {
        if (!field->getProperty(1))
            continue;
        long double sum = 0;
        for (const OrderPtr &order : orders)
            sum += static_cast<long double>(numberOf(order, *field));
        texts << ZB::formatDoubleNumber(sum, field->precision, utils::FormatNone, false, QString());
    }
    return texts;
}

void StockRecords::sortBy(int column, Qt::SortOrder order)
{
    table->horizontalHeader()->setSortIndicator(column, order);
    table->setSortingEnabled(true);
}

void StockRecords::paint()
{
    QCoreApplication::processEvents();
}

} // namespace bench
