#pragma once

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtWidgets/QTableWidget>
#include <memory>
#include <vector>

#include "kdservice/fielddes.h"
#include "orderset.h"

namespace bench {

/// The stock Qt way of a small table: a QTableWidget with one item per cell, texts and colours by the same formatter as
/// ours, shown at the same size; only the item of the changed field is set, and flashes as ours does.
class StockRecords
{
public:
    explicit StockRecords(const std::vector<OrderPtr> &orders);

    int columnOfField(int fieldId) const;
    void updateField(const OrderPtr &order, int fieldId);
    /// Rows whose text in the column is not among these are hidden; an empty set shows all.
    void filter(int column, const QSet<QString> &values);
    int shownRows() const;
    /// Sums of the summed columns from the records, as texts in a row of labels would show them.
    QStringList sums() const;
    void sortBy(int column, Qt::SortOrder order);
    void paint();

private:
    void fade();
    void setCell(QTableWidgetItem &item, const OrderPtr &order, const kdservice::FieldDes &field);

    std::vector<OrderPtr> orders;
    std::vector<kdservice::FieldDes *> fields;
    std::vector<int> flashingColumns;
    std::vector<QTableWidgetItem *> keyItems; ///< by order: in its row, wherever that is
    QHash<quint64, int> placeOfKey;
    std::unique_ptr<QTableWidget> table;
};

} // namespace bench
