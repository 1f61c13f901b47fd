#pragma once

#include <QtCore/QMap>
#include <memory>

#include "desk/deskrecords.h"
#include "desk/historyfilters.h"
#include "table/chpfdatatable.h"
#include "trading/historyquery.h"

namespace trading {
class HistoryReader;
}

namespace terminal {

class HistoryRows;

/// A table over the orders or the deals of all days of a desk file: one page of them, read from the file when it is
/// asked for. Filters, sorts and sums are the file's too, found on the reader's thread while the table goes on. GUI
/// thread; nothing waits.
class HistoryTable : public KV::CHpfDataTable
{
    Q_OBJECT

public:
    HistoryTable(int tableId, trading::HistoryQuery::Kind kind, QWidget *parent = nullptr);
    ~HistoryTable() override;

    /// To be called once. Without a file the table stays empty and says why.
    void open(const QString &path);
    /// Looks for what has come since.
    void renew();
    /// Rows that the present filters find, as far as the search has got.
    qint64 total() const { return last.total; }
    /// The answer to the present question is there in whole, sums included.
    bool isSettled() const { return asked == answered && last.isComplete && (last.hasSums || !last.problem.isEmpty()); }
    /// In words: how many, how far, what is wrong.
    QString stateText() const;

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void setSortColumns(const QVector<QPair<int, int>> &columns) override;
    void onFilterTrigger(int column, int type, QSet<QString> &values) override;
    QMap<int, ZB::FilterConditions> columnFilters() const override;
    QStringList getMenuItems(int column) override;
    void clearFilter() override;

Q_SIGNALS:
    void stateChanged();

protected:
    bool restoreFilter(int column, const ZB::FilterConditions &conditions) override;

private:
    trading::HistoryQuery filteredQuery() const;
    void takeChoices(const trading::HistoryChoices &found);
    int fieldOf(int column) const;
    void ask(bool anew);
    void take(qint64 number, const trading::HistoryPage &page);
    void show(const std::vector<RecordPtr> &records);
    void applyFilters();

    const boost::shared_ptr<HistoryRows> rows;
    trading::HistoryQuery query;
    qint64 start = 0;
    int count = 100;
    HistoryFilters filters;
    trading::HistoryPage last; ///< without its rows
    std::vector<std::string> shownKeys;
    DeskRecords records;
    qint64 asked = 0;
    qint64 answered = 0;
    std::unique_ptr<trading::HistoryReader> reader; ///< none without a file
};

} // namespace terminal
