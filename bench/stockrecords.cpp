#include "stockrecords.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QColor>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QStyledItemDelegate>
#include <algorithm>
#include <limits>
#include <utility>

#include "kdservice/typemanager.h"
#include "model/fieldformatter.h"
#include "stocktable.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace bench {

namespace {

using RecordPtr = StockRecords::RecordPtr;

constexpr int summedProperty = 1;
constexpr int sumMilliseconds = 100;
constexpr int flashProperty = 6;
constexpr int flashMilliseconds = 500;
constexpr int flashSteps = 16;
constexpr int strongestFlash = 90; ///< of 255

qint64 now()
{
    static const QElapsedTimer clock = [] {
        QElapsedTimer started;
        started.start();
        return started;
    }();
    return clock.elapsed();
}

/// Sorts by its number, and flashes by the direction in which that has changed.
class NumberItem : public QTableWidgetItem
{
public:
    bool operator<(const QTableWidgetItem &other) const override
    {
        return number < static_cast<const NumberItem &>(other).number;
    }
    /// How strong the flash still is, to 0.
    int flashStep() const
    {
        const qint64 left = flashMilliseconds - std::min<qint64>(now() - changedAt, flashMilliseconds);
        return static_cast<int>((left * flashSteps + flashMilliseconds - 1) / flashMilliseconds);
    }

    QString colorKey;
    double number = 0;
    double change = 0;
    qint64 changedAt = -flashMilliseconds;
    int shownStep = 0; ///< as the view was asked to paint it last
};

/// Paints the flash as the background of the cell.
class FlashDelegate : public QStyledItemDelegate
{
public:
    FlashDelegate(QTableWidget *shown)
        : QStyledItemDelegate(shown), table(shown), rise(colorOf("clr_global_rise")), fall(colorOf("clr_global_fall"))
    {
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const auto *item = static_cast<const NumberItem *>(table->item(index.row(), index.column()));
        const int step = item->flashStep();
        if (step == 0)
            return;
        QColor color = item->change > 0 ? rise : fall;
        color.setAlpha(strongestFlash * step / flashSteps);
        option->backgroundBrush = color;
    }

private:
    static QColor colorOf(const char *key) { return *ZB::CUiResource::instance()->getColor(QLatin1String(key)); }

    QTableWidget *const table;
    const QColor rise;
    const QColor fall;
};

RecordPtr holderOf(const RecordPtr &order, int fieldId)
{
    if (order->getFieldDes(fieldId))
        return order;
    return order->getIData(refhost::OrderInstrument);
}

double numberOf(const RecordPtr &order, const kdservice::FieldDes &field)
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

StockRecords::StockRecords(const std::vector<OrderPtr> &list)
    : orders(list.begin(), list.end()), table(new QTableWidget)
{
    for (kdservice::FieldDes *field :
         kdservice::TypeManager::instance()->getAllFields({orderMetaId()}, kdservice::TraderStock)) {
        if (field->getProperty(flashProperty))
            flashingColumns.push_back(static_cast<int>(fields.size()));
        if (field->getProperty(summedProperty))
            sums.push_back({field, 0, QString()});
        fields.push_back(field);
    }
    const int columns = static_cast<int>(fields.size());
    table->setRowCount(static_cast<int>(orders.size()));
    table->setColumnCount(columns);
    placeOfKey.reserve(orders.size());
    for (int row = 0; row < table->rowCount(); ++row) {
        const RecordPtr &order = orders[static_cast<std::size_t>(row)];
        placeOfKey.emplace(order->getKey(), row);
        for (int column = 0; column < columns; ++column) {
            auto *item = new NumberItem;
            setCell(*item, order, *fields[static_cast<std::size_t>(column)]);
            table->setItem(row, column, item);
        }
        keyItems.push_back(table->item(row, 0));
        for (Sum &sum : sums)
            sum.value += numberOf(order, *sum.field);
    }
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->horizontalHeader()->setDefaultSectionSize(columnWidth);
    table->setFont(*ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_table_text_default")));
    table->setItemDelegate(new FlashDelegate(table.get()));
    table->resize(viewWidth, viewHeight);
    table->show();
    QObject::connect(&sumTimer, &QTimer::timeout, table.get(), [this] { showSums(); });
    sumTimer.start(sumMilliseconds);
    QCoreApplication::processEvents();
}

void StockRecords::setCell(QTableWidgetItem &item, const RecordPtr &order, const kdservice::FieldDes &field)
{
    QString text, colorKey, unit;
    QVariant value;
    KV::formatField(holderOf(order, field.fieldId), &field, field.fieldId, text, colorKey, unit, value,
                    kdservice::TraderStock);
    static_cast<NumberItem &>(item).number = numberOf(order, field);
    static_cast<NumberItem &>(item).colorKey = colorKey;
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

void StockRecords::updateField(const RecordPtr &order, int fieldId)
{
    const auto place = static_cast<std::size_t>(placeOfKey.at(order->getKey()));
    orders[place] = order;
    const int column = columnOfField(fieldId);
    const kdservice::FieldDes &field = *fields[static_cast<std::size_t>(column)];
    QString text, colorKey, unit;
    QVariant value;
    KV::formatField(order, &field, fieldId, text, colorKey, unit, value, kdservice::TraderStock);
    auto *item = static_cast<NumberItem *>(table->item(table->row(keyItems[place]), column));
    const double number = numberOf(order, field);
    for (Sum &sum : sums)
        if (sum.field == &field)
            sum.value += number - item->number;
    if (field.getProperty(flashProperty)) {
        item->change = number - item->number;
        item->changedAt = now();
    }
    item->number = number;
    if (item->colorKey != colorKey) {
        item->colorKey = colorKey;
        item->setForeground(*ZB::CUiResource::instance()->getColor(colorKey));
    }
    item->setText(text);
}

void StockRecords::filter(int column, const QSet<QString> &values)
{
    table->setUpdatesEnabled(false);
    for (int row = 0; row < table->rowCount(); ++row)
        table->setRowHidden(row, !values.isEmpty() && !values.contains(table->item(row, column)->text()));
    table->setUpdatesEnabled(true);
}

int StockRecords::shownRows() const
{
    return table->rowCount() - table->verticalHeader()->hiddenSectionCount();
}

void StockRecords::showSums()
{
    for (Sum &sum : sums)
        sum.text = ZB::formatDoubleNumber(sum.value, sum.field->precision, utils::FormatNone, false, QString());
}

QString StockRecords::text(std::size_t place, int fieldId) const
{
    return table->item(table->row(keyItems[place]), columnOfField(fieldId))->text();
}

double StockRecords::numberAt(int row, int fieldId) const
{
    return static_cast<const NumberItem *>(table->item(row, columnOfField(fieldId)))->number;
}

void StockRecords::sortBy(int column, Qt::SortOrder order)
{
    table->horizontalHeader()->setSortIndicator(column, order);
    table->setSortingEnabled(true);
}

void StockRecords::fade()
{
    const int first = table->rowAt(0);
    const int last = table->rowAt(table->viewport()->height() - 1);
    for (int row = std::max(first, 0); row <= (last < 0 ? table->rowCount() - 1 : last); ++row)
        for (const int column : flashingColumns) {
            auto *item = static_cast<NumberItem *>(table->item(row, column));
            const int step = item->flashStep();
            if (std::exchange(item->shownStep, step) != step)
                table->viewport()->update(table->visualItemRect(item));
        }
}

void StockRecords::paint()
{
    fade();
    QCoreApplication::processEvents();
}

} // namespace bench
