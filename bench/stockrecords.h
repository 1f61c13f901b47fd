#pragma once

#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <QtWidgets/QTableWidget>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "kdservice/fielddes.h"
#include "orderset.h"

namespace bench {

/// The stock Qt way of a small table: a QTableWidget with one item per cell, texts and colours by the same formatter as
/// ours, shown at the same size; only the item of the changed field is set, and flashes as ours does.
class StockRecords
{
public:
    using RecordPtr = boost::shared_ptr<kdservice::IData>;

    explicit StockRecords(const std::vector<OrderPtr> &orders);

    int columnOfField(int fieldId) const;
    void updateField(const RecordPtr &order, int fieldId);
    /// Rows whose text in the column is not among these are hidden; an empty set shows all.
    void filter(int column, const QSet<QString> &values);
    int shownRows() const;
    void sortBy(int column, Qt::SortOrder order);
    /// Asks for the cells in sight whose flash has faded by a step.
    void fade();
    /// With what has to be painted.
    void paint();

    /// What a cell shows; place: of the record in the list that was given.
    QString text(std::size_t place, int fieldId) const;
    double numberAt(int row, int fieldId) const;
    QWidget *viewport() const { return table->viewport(); }

private:
    void setCell(QTableWidgetItem &item, const RecordPtr &order, const kdservice::FieldDes &field);
    void showSums();

    struct Sum
    {
        const kdservice::FieldDes *field;
        long double value = 0;
        QString text; ///< as a label would show it
    };

    std::vector<RecordPtr> orders;
    std::vector<kdservice::FieldDes *> fields;
    std::vector<int> flashingColumns;
    std::vector<QTableWidgetItem *> keyItems; ///< by order: in its row, wherever that is
    std::unordered_map<std::string, int> placeOfKey;
    std::vector<Sum> sums; ///< kept up to date with every change
    QTimer sumTimer;
    std::unique_ptr<QTableWidget> table;
};

} // namespace bench
