#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QVBoxLayout>
#include <boost/make_shared.hpp>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <vector>

#include "grid/gridview.h"
#include "services/userconfig.h"
#include "zb/cbasehighperformancetable.h"
#include "zb/cbasewidget.h"
#include "zb/ibasehpftabledata.h"
#include "zb/ibasehpftablemodel.h"

QT_BEGIN_NAMESPACE
/// Failures show texts, not their bytes.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
QT_END_NAMESPACE

namespace tabletest {

constexpr double noPrice = std::numeric_limits<double>::max();

/// An order as these tests need it: 代码, 名称, 方向 (a number shown as a word), 价格, 数量.
struct Order
{
    std::string key;
    QString code;
    QString name;
    int side = 0; ///< 0 买入, 1 卖出
    double price = 0;
    qint64 quantity = 0;
};

enum Column
{
    Code,
    Name,
    Side,
    Price,
    Quantity,
    ColumnCount
};

class OrderRow : public ZB::IBaseHpfTableData
{
public:
    explicit OrderRow(Order order);

    QString getDisplayQString(int column) override;
    QString getQString(int column) override;
    int getInt(int column) override;
    double getDouble(int column) override;
    qint64 getLongLong(int column) override;
    const QColor *getColor(int column) override;
    std::string key() override;

private:
    const Order order;
};

/// Columns by name, so that a test can leave some out or put them elsewhere.
class OrderModel : public ZB::IBaseHpfTableModel
{
public:
    explicit OrderModel(std::vector<Column> columns = {Code, Name, Side, Price, Quantity});
    ~OrderModel() override;

    void put(const Order &order);
    void addColumn(Column column);

    int columnCount() const override;
    QString columnHeader(int column) const override;
    QVariant::Type columnType(int column) const override;
    QString getStatDispalyQString(int column) const override;
    bool columnFlashChange(int column) const override;
    const QColor *getBackgroundColor(int column) const override;
    utils::CFlags<utils::EFormatNumberFlag> columnFlag(int column) const override;
    void clear() override;
    void onTimer() override;

    int timerCalls = 0;

protected:
    void initColumns(const std::vector<int> &metaIds) override;

private:
    std::vector<Column> columns;
};

/// A window that writes down every event that reaches it.
class EventWindow : public ZB::CBaseWidget
{
public:
    bool handleEvent(int event, int first, int second, QString text, void *data) override;

    QStringList takeEvents();

private:
    QStringList events;
};

/// A table over five orders in a window of its own, with a configuration in memory.
class TableTest : public ::testing::Test
{
protected:
    TableTest();
    ~TableTest() override;

    /// The same window with another table over another model.
    void rebuild(const boost::shared_ptr<OrderModel> &model);
    ZB::GridView *grid() const;
    /// Headers with their signs (arrow of the sort, * for a filter, | behind the last frozen column), then the rows as
    /// they are shown: > for the current row, + for other selected ones.
    QString shown() const;
    void settle() const;
    void clickHeader(int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void clickCell(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses at one place and lets go at another, with the button down in between.
    static void drag(QWidget *widget, const QPoint &from, const QPoint &to);
    /// The one that is open.
    template <typename Popup>
    Popup *popup() const
    {
        for (Popup *each : window->findChildren<Popup *>())
            if (each->isVisible())
                return each;
        return nullptr;
    }

    static constexpr int tableId = 4711;
    std::unique_ptr<EventWindow> window;
    boost::shared_ptr<OrderModel> model;
    ZB::CBaseHighPerformanceTable *table = nullptr;
};

std::vector<Order> fiveOrders();

} // namespace tabletest
