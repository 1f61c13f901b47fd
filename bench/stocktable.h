#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QSortFilterProxyModel>
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

    /// Replaces all records.
    void setOrders(std::vector<OrderPtr> orders);
    int columnOfField(int fieldId) const;

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

/// Passes the rows whose text in one column is in a set.
class StockProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit StockProxy(QObject *parent = nullptr);
    ~StockProxy() override;

    /// An empty set passes everything.
    void setValues(int column, const QSet<QString> &values);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    int valueColumn = -1;
    QSet<QString> accepted;
};

/// Model, proxy and view together, shown at the size that every table benchmark uses.
struct StockTable
{
    /// Without records.
    StockTable();
    /// Until they are painted.
    void load(std::vector<OrderPtr> orders);

    std::unique_ptr<StockModel> model;
    std::unique_ptr<StockProxy> proxy;
    std::unique_ptr<QTableView> view;
};

constexpr int viewWidth = 1400;
constexpr int viewHeight = 900;
constexpr int rowHeight = 24;
constexpr int columnWidth = 68;

} // namespace bench
