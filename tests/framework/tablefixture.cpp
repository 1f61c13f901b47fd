#include "framework/tablefixture.h"

#include <QtGui/QMouseEvent>
#include <QtTest/QTest>

#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace tabletest {

namespace {

/// The row of an OrderModel whose columns stand elsewhere than in an Order.
class PlacedRow : public OrderRow
{
public:
    PlacedRow(const Order &value, std::vector<Column> modelColumns) : OrderRow(value), columns(std::move(modelColumns))
    {
    }

    QString getDisplayQString(int column) override { return OrderRow::getDisplayQString(at(column)); }
    QString getQString(int column) override { return OrderRow::getQString(at(column)); }
    int getInt(int column) override { return OrderRow::getInt(at(column)); }
    double getDouble(int column) override { return OrderRow::getDouble(at(column)); }
    qint64 getLongLong(int column) override { return OrderRow::getLongLong(at(column)); }

private:
    int at(int column) const
    {
        return column >= 0 && column < int(columns.size()) ? columns[std::size_t(column)] : ColumnCount;
    }

    const std::vector<Column> columns;
};

} // namespace

OrderRow::OrderRow(Order value) : order(std::move(value)) {}

QString OrderRow::getDisplayQString(int column)
{
    switch (column) {
    case Code:
        return order.code;
    case Name:
        return order.name;
    case Side:
        return order.side ? QStringLiteral("卖出") : QStringLiteral("买入");
    case Price:
        return ZB::formatDoubleNumber(order.price, 2, {}, false, QString());
    case Quantity:
        return ZB::formatLonglongNumber(order.quantity, 0, utils::FormatGroupDigits);
    default:
        return QString();
    }
}

QString OrderRow::getQString(int column)
{
    switch (column) {
    case Side:
        return QString::number(order.side);
    case Price:
        return QString::number(order.price, 'g', 17);
    case Quantity:
        return QString::number(order.quantity);
    default:
        return OrderRow::getDisplayQString(column); // not of a derived row, which numbers columns otherwise
    }
}

int OrderRow::getInt(int column)
{
    return column == Side ? order.side : 0;
}

double OrderRow::getDouble(int column)
{
    return column == Price ? order.price : column == Quantity ? double(order.quantity) : 0.0;
}

qint64 OrderRow::getLongLong(int column)
{
    return column == Quantity ? order.quantity : 0;
}

const QColor *OrderRow::getColor(int)
{
    return ZB::CUiResource::instance()->getColor(QStringLiteral("clr_text_default"));
}

std::string OrderRow::key()
{
    return order.key;
}

OrderModel::OrderModel(std::vector<Column> modelColumns) : IBaseHpfTableModel(true), columns(std::move(modelColumns)) {}

OrderModel::~OrderModel() = default;

void OrderModel::put(const Order &order)
{
    updateData(boost::make_shared<PlacedRow>(order, columns));
}

void OrderModel::addColumn(Column column)
{
    columns.push_back(column);
}

int OrderModel::columnCount() const
{
    return int(columns.size());
}

QString OrderModel::columnHeader(int column) const
{
    static const char *const names[] = {"代码", "名称", "方向", "价格", "数量"};
    return column >= 0 && column < columnCount() ? QString::fromUtf8(names[columns[std::size_t(column)]]) : QString();
}

QVariant::Type OrderModel::columnType(int column) const
{
    static constexpr QVariant::Type types[] = {QVariant::String, QVariant::String, QVariant::Int, QVariant::Double,
                                               QVariant::LongLong};
    return column >= 0 && column < columnCount() ? types[columns[std::size_t(column)]] : QVariant::Invalid;
}

QString OrderModel::getStatDispalyQString(int column) const
{
    if (columnType(column) != QVariant::LongLong || !columnStatEnable(column))
        return QString();
    return QString::number(getStatColumnLongLong(column));
}

bool OrderModel::columnFlashChange(int) const
{
    return true;
}

const QColor *OrderModel::getBackgroundColor(int) const
{
    return ZB::CUiResource::instance()->getColor(QStringLiteral("clr_table_background"));
}

utils::CFlags<utils::EFormatNumberFlag> OrderModel::columnFlag(int) const
{
    return {};
}

void OrderModel::clear()
{
    clearRows();
}

void OrderModel::onTimer()
{
    ++timerCalls;
}

void OrderModel::initColumns(const std::vector<int> &) {}

bool EventWindow::handleEvent(int event, int first, int second, QString text, void *)
{
    events.append(QStringLiteral("%1(%2, %3, %4)").arg(event).arg(first).arg(second).arg(text));
    return true;
}

QStringList EventWindow::takeEvents()
{
    return std::exchange(events, QStringList());
}

std::vector<Order> fiveOrders()
{
    return {{"a", "600000", "浦发银行", 0, 10.25, 300},
            {"b", "000001", "平安银行", 1, 12.5, 1200000},
            {"c", "300918", "南山智尚", 0, 15.929999999999999, 100},
            {"d", "600000", "浦发银行", 1, noPrice, 700},
            {"e", "688293", "=奥浦迈", 0, 98.7, 50}};
}

TableTest::TableTest()
{
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    model = boost::make_shared<OrderModel>();
    for (const Order &order : fiveOrders())
        model->put(order);
    rebuild(model);
}

TableTest::~TableTest()
{
    window.reset();
    refhost::setUserConfig(nullptr);
}

void TableTest::rebuild(const boost::shared_ptr<OrderModel> &newModel)
{
    window.reset();
    model = newModel;
    window = std::make_unique<EventWindow>();
    window->resize(900, 400);
    table = new ZB::CBaseHighPerformanceTable(tableId, window.get(), ZB::MenuAll);
    table->addTableFlag(ZB::TableRowNumbers);
    table->installDataModel(model);
    auto *layout = new QVBoxLayout(window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    grid()->setFocus();
    settle();
    window->takeEvents();
}

ZB::GridView *TableTest::grid() const
{
    return table->findChild<ZB::GridView *>();
}

void TableTest::settle() const
{
    QCoreApplication::processEvents();
    table->updateTable();
}

QString TableTest::shown() const
{
    settle();
    QStringList headers;
    const std::vector<int> columns = grid()->visibleColumns();
    for (const int column : columns) {
        QString text = model->columnHeader(column);
        for (const ZB::GridSortMark &mark : grid()->sortMarks())
            if (mark.column == column)
                text += mark.descending ? QStringLiteral("↓") : QStringLiteral("↑");
        if (grid()->column(column).filtered)
            text += QLatin1Char('*');
        headers.append(text);
        if (headers.size() == grid()->frozenColumns())
            headers.last() += QLatin1Char('|');
    }
    QString all = headers.join(QLatin1Char(' '));
    const ZB::GridSource *source = grid()->source();
    std::vector<ZB::GridRowId> ids;
    source->rowIds(0, source->rowCount(), ids);
    for (int row = 0; row < model->size() && row < int(ids.size()); ++row) {
        const auto id = ids[std::size_t(row)];
        QStringList texts;
        for (const int column : columns)
            texts.append(model->getData(row)->getDisplayQString(column));
        const QString sign = id == grid()->currentRow()  ? QStringLiteral("> ")
                             : grid()->isRowSelected(id) ? QStringLiteral("+ ")
                                                         : QString();
        all += QLatin1Char('\n') + sign + texts.join(QLatin1Char(' '));
    }
    return all;
}

void TableTest::clickHeader(int column, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseClick(grid(), Qt::LeftButton, modifiers, grid()->headerRect(column).center());
}

void TableTest::clickCell(int row, int column, Qt::KeyboardModifiers modifiers)
{
    std::vector<ZB::GridRowId> ids;
    grid()->source()->rowIds(row, 1, ids);
    QTest::mouseClick(grid(), Qt::LeftButton, modifiers, grid()->cellRect(ids.at(0), column).center());
}

void TableTest::drag(QWidget *widget, const QPoint &from, const QPoint &to)
{
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    for (const QPoint &place : {from + (to - from) / 2, to}) {
        QMouseEvent move(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(widget, &move);
    }
    QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
}

} // namespace tabletest
