#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QSortFilterProxyModel>
#include <QtGui/QImage>
#include <QtWidgets/QTableView>
#include <memory>
#include <utility>
#include <vector>

#include "kdservice/fielddes.h"
#include "orderset.h"

namespace bench {

/// The stock Qt way, as a careful Qt programmer writes it: records in a vector, one dataChanged per changed record,
/// texts by the same formatter as ours, sorting on raw values, a running sum of doubles for each summed column.
class StockModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    static constexpr int SortRole = Qt::UserRole;

    StockModel();
    ~StockModel() override;

    const OrderPtr &order(int row) const { return orders[static_cast<std::size_t>(row)]; }
    /// Replaces all records.
    void setOrders(std::vector<OrderPtr> orders);
    int columnOfField(int fieldId) const;
    /// What a field of the order itself shows.
    static QString shown(const OrderPtr &order, int fieldId);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Replaces the record of the same key.
    void update(const OrderPtr &order);
    void append(const OrderPtr &order);
    /// Of all rows, kept up to date with every change; 0 for a field that is not summed.
    double sumOf(int fieldId) const;

private:
    void count(const OrderPtr &order, int sign);
    QVariant text(const OrderPtr &order, int column) const;
    QVariant rawValue(const OrderPtr &order, int column) const;

    std::vector<OrderPtr> orders;
    std::vector<kdservice::FieldDes *> fields;
    QHash<quint64, int> rowOfKey;
    std::vector<std::pair<const kdservice::FieldDes *, double>> sums;
};

/// Passes the rows that have a value in one column; asks for the raw value, without formatting it.
class StockProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit StockProxy(QObject *parent = nullptr);
    ~StockProxy() override;

    /// Until the first call everything passes.
    void setValue(int column, const QString &value);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    int valueColumn = -1;
    QString accepted;
};

/// Model, proxy and view together, shown at the size that every table benchmark uses.
struct StockTable
{
    /// Without records.
    StockTable();
    /// Until they are painted.
    void load(std::vector<OrderPtr> orders);
    /// Handles events and paints all of the rows in sight.
    void paint();
    /// Rows and cells of which at least a part is on the screen.
    int visibleRows() const;
    int visibleCells() const;
    QImage picture() const;

    std::unique_ptr<StockModel> model;
    std::unique_ptr<StockProxy> proxy;
    std::unique_ptr<QTableView> view;
};

constexpr int viewWidth = 1400;
constexpr int viewHeight = 900;
constexpr int rowHeight = 24;
constexpr int columnWidth = 68;

} // namespace bench
