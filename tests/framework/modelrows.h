#pragma once

#include <QtCore/QStringList>
#include <atomic>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <limits>
#include <mutex>

#include "zb/ibasehpftabledata.h"
#include "zb/ibasehpftablemodel.h"

namespace modeltest {

enum Column
{
    Quantity, ///< LongLong
    Status,   ///< Int; shown as "S" and the number
    Price,    ///< Double; shown with two decimals
    Name,     ///< String
    ColumnCount
};

constexpr qint64 noQuantity = std::numeric_limits<qint64>::max();
constexpr int noStatus = std::numeric_limits<int>::max();
constexpr double noPrice = std::numeric_limits<double>::max();

struct Record
{
    qint64 quantity = 0;
    int status = 0;
    double price = 0;
    QString name;
    bool blank = false; ///< without any value: 0 as a number, no raw text, shown as "~"
};

/// What is shown of a record, and matched by filters.
QString shownText(const Record &record, int column);

/// A row whose record can be changed in place, as a host may do.
class ValueRow : public ZB::IBaseHpfTableData
{
public:
    ValueRow(std::string rowKey, Record firstRecord) : keyText(std::move(rowKey)), current(std::move(firstRecord)) {}

    void setRecord(const Record &record);
    Record record() const;

    QString getDisplayQString(int column) override;
    QString getQString(int column) override;
    int getInt(int column) override;
    double getDouble(int column) override;
    qint64 getLongLong(int column) override;
    const QColor *getColor(int column) override;
    std::string key() override { return keyText; }

    std::function<void()> onGetDouble; ///< called before a price is read
    std::atomic<int> textsMade{0};
    boost::shared_ptr<void> keptAlive; ///< what else goes with the row, such as its model

private:
    const std::string keyText;
    mutable std::mutex mutex;
    Record current; ///< guarded by the mutex
};

class ValueModel : public ZB::IBaseHpfTableModel
{
public:
    explicit ValueModel(bool append = true) : IBaseHpfTableModel(append) {}
    ~ValueModel() override;

    int columnCount() const override { return ColumnCount; }
    QString columnHeader(int column) const override;
    QVariant::Type columnType(int column) const override;
    QString getStatDispalyQString(int column) const override;
    bool columnFlashChange(int column) const override { return column == Price; }
    const QColor *getBackgroundColor(int column) const override;
    utils::CFlags<utils::EFormatNumberFlag> columnFlag(int column) const override;
    void clear() override { clearRows(); }
    void onTimer() override { ++timerCalls; }
    int customSort(const Row &a, const Row &b) const override;
    int textContext(int) const override { return context; }

    using IBaseHpfTableModel::_addStatColumnData;
    using IBaseHpfTableModel::_resetStatMap;
    using IBaseHpfTableModel::columnsChanged;

    void filter(int column, int type, const QSet<QString> &values);
    void narrow(int column, int type, const QSet<QString> &values);

    std::function<int(const Record &, const Record &)> compareRecords; ///< the custom order; unset: the host's
    std::function<void(const Record &, bool)> onRow; ///< told of rows that come (true) or are replaced
    std::function<void()> onDestruction;
    std::atomic<bool> textColumns{false}; ///< every column is a text column
    std::atomic<int> context{0};          ///< of the texts of every column
    int timerCalls = 0;

protected:
    void initColumns(const std::vector<int> &) override {}
    void _addData(const Row &row) override;
    void _updateData(const Row &row) override;
};

using RowPtr = boost::shared_ptr<ValueRow>;

RowPtr makeRow(const std::string &key, qint64 quantity, int status = 0, double price = 0,
               const QString &name = QString());

/// Adds rows a to d with quantities 3, none, 1, 2.
void fillFour(ValueModel &model);

/// Keys in the shown order, and in the order of all rows, separated by blanks.
QString shownKeys(const ZB::IBaseHpfTableModel &model);
QString allKeys(const ZB::IBaseHpfTableModel &model);

} // namespace modeltest
