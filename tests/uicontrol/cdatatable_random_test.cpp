#include <random>

#include "recordwindow.h"

namespace {

using namespace testrecords;

/// The same table as plainly as it can be: what is stored, and which key stands in which row as what record.
class PlainTable
{
public:
    explicit PlainTable(bool &onlyBuys, int &leastLots) : buys(onlyBuys), lots(leastLots) {}

    bool passes(const RecordPtr &record) const
    {
        return (!buys || record->getInt(TicketSide) == '0') && record->getInt(TicketLots) >= lots;
    }

    void update(const RecordPtr &record)
    {
        const std::string key = record->getKey();
        stored[key] = record;
        if (!passes(record))
            return;
        for (auto &row : rows)
            if (row.first == key) {
                row.second = record->getInt(TicketLots);
                return;
            }
        rows.emplace_back(key, record->getInt(TicketLots));
    }

    void remove(const std::string &key)
    {
        for (std::size_t at = 0; at < rows.size(); ++at)
            if (rows[at].first == key) {
                rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(at));
                stored.erase(key);
                return;
            }
    }

    void filter()
    {
        rows.clear();
        for (const auto &[key, record] : stored)
            if (passes(record))
                rows.emplace_back(key, record->getInt(TicketLots));
    }

    /// "key=lots" by row, sorted by lots where asked for.
    std::string shown(int sort) const
    {
        auto sorted = rows;
        if (sort >= 0)
            std::stable_sort(sorted.begin(), sorted.end(), [sort](const auto &a, const auto &b) {
                return sort == 0 ? a.second < b.second : a.second > b.second;
            });
        std::string text;
        for (const auto &[key, number] : sorted)
            text += key + '=' + std::to_string(number) + ' ';
        return text;
    }

    std::map<std::string, RecordPtr> stored;
    std::vector<std::pair<std::string, int>> rows;

private:
    bool &buys;
    int &lots;
};

class CDataTableRandom : public RecordWindow
{
protected:
    std::string shownByTable() const
    {
        std::string text;
        for (const int row : table->rows())
            text += table->getData(row)->getKey() + '=' + table->cellText(row, ColumnLots).toStdString() + ' ';
        return text;
    }

    /// Each map and its reverse, what is stored, and the table's own rows.
    void checkMaps(const PlainTable &plain)
    {
        ASSERT_EQ(table->size(), static_cast<int>(plain.stored.size()));
        ASSERT_EQ(table->rowCount(), static_cast<int>(plain.rows.size()));
        for (const auto &[key, record] : plain.stored)
            ASSERT_EQ(table->getDataByKey(key), record);
        for (const auto &[key, lots] : plain.rows) {
            const int row = table->keyToRowID(key);
            ASSERT_TRUE(table->hasRow(row));
            ASSERT_EQ(table->getData(row)->getKey(), key);
        }
    }
};

} // namespace

TEST_F(CDataTableRandom, MapsAndRowsAgreeWithAPlainTableAfterAnySequence)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    const auto anyTicket = [&below] { return fullTicket("k" + std::to_string(below(40)), below(12)); };
    bool onlyBuys = false;
    int leastLots = 0;
    int sort = -1;
    PlainTable plain(onlyBuys, leastLots);

    for (int step = 0; step < 1500; ++step) {
        const int action = below(40);
        if (action < 20) {
            const auto ticket = anyTicket();
            const bool isStored = plain.stored.count(ticket->getKey()) > 0;
            plain.update(ticket);
            if (isStored && below(3) == 0)
                table->updateDataField(ticket, TicketLots, below(10) == 0);
            else
                table->updateData(ticket, below(10) == 0);
        } else if (action < 27) {
            QVector<RecordPtr> batch;
            for (int i = below(9); i >= 0; --i) {
                batch.append(anyTicket());
                plain.update(batch.back());
            }
            table->updateDatas(batch);
        } else if (action < 33) {
            const std::string key = "k" + std::to_string(below(40));
            plain.remove(key);
            table->removeDataByKey(key);
        } else if (action < 35) {
            onlyBuys = below(2) == 0;
            filter(ColumnSide, ZB::FilterExact, onlyBuys ? QSet<QString>{"买入"} : QSet<QString>());
            plain.filter();
        } else if (action < 37) {
            leastLots = below(3) * 3;
            table->onFilter(ColumnLots, 7, QString::number(leastLots));
            plain.filter();
        } else if (action < 39) {
            sort = below(3) - 1;
            table->setSortColumns(sort < 0 ? QVector<QPair<int, int>>() : QVector<QPair<int, int>>{{ColumnLots, sort}});
        } else if (below(5) == 0) {
            table->clear();
            plain.stored.clear();
            plain.rows.clear();
        }
        ASSERT_EQ(shownByTable(), plain.shown(sort)) << "step " << step;
        ASSERT_NO_FATAL_FAILURE(checkMaps(plain)) << "step " << step;
    }
}
