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

    /// These answer with the row as the table does.
    int update(const RecordPtr &record)
    {
        const std::string key = record->getKey();
        stored[key] = record;
        const auto row = rowOf(key);
        if (row != rows.end()) {
            if (passes(record))
                row->lots = record->getInt(TicketLots);
            return row->id;
        }
        return passes(record) ? append(key, record) : -1;
    }

    int remove(const std::string &key)
    {
        const auto row = rowOf(key);
        if (row == rows.end())
            return -1;
        const int id = row->id;
        rows.erase(row);
        stored.erase(key);
        return id;
    }

    void filter()
    {
        rows.clear();
        nextId = 0;
        for (const auto &[key, record] : stored)
            if (passes(record))
                append(key, record);
    }

    void clear()
    {
        stored.clear();
        filter();
    }

    int idOf(const std::string &key)
    {
        const auto row = rowOf(key);
        return row == rows.end() ? -1 : row->id;
    }

    std::string sum() const
    {
        int sum = 0;
        for (const Row &row : rows)
            sum += row.lots;
        return std::to_string(sum);
    }

    /// "key=lots" by row, sorted by lots where asked for.
    std::string shown(int sort) const
    {
        auto sorted = rows;
        if (sort >= 0)
            std::stable_sort(sorted.begin(), sorted.end(), [sort](const auto &a, const auto &b) {
                return sort == 0 ? a.lots < b.lots : a.lots > b.lots;
            });
        std::string text;
        for (const Row &row : sorted)
            text += row.key + '=' + std::to_string(row.lots) + ' ';
        return text;
    }

    struct Row
    {
        std::string key;
        int lots;
        int id;
    };
    std::map<std::string, RecordPtr> stored;
    std::vector<Row> rows;

private:
    std::vector<Row>::iterator rowOf(const std::string &key)
    {
        return std::find_if(rows.begin(), rows.end(), [&key](const Row &row) { return row.key == key; });
    }

    int append(const std::string &key, const RecordPtr &record)
    {
        rows.push_back({key, record->getInt(TicketLots), nextId});
        return nextId++;
    }

    int nextId = 0;
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
    void checkMaps(PlainTable &plain)
    {
        ASSERT_EQ(table->size(), static_cast<int>(plain.stored.size()));
        ASSERT_EQ(table->rowCount(), static_cast<int>(plain.rows.size()));
        for (const auto &[key, record] : plain.stored)
            ASSERT_EQ(table->getDataByKey(key), record);
        for (const auto &[key, record] : plain.stored)
            ASSERT_EQ(table->keyToRowID(key), plain.idOf(key)) << key;
        for (const auto &row : plain.rows) {
            ASSERT_TRUE(table->hasRow(row.id));
            ASSERT_EQ(table->getData(row.id)->getKey(), row.key);
        }
        table->updateSums();
        ASSERT_EQ(table->statText(ColumnLots).toStdString(), plain.sum());
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
            const int row = plain.update(ticket);
            if (isStored && below(3) == 0)
                ASSERT_EQ(table->updateDataField(ticket, TicketLots, below(10) == 0), row) << "step " << step;
            else
                ASSERT_EQ(table->updateData(ticket, below(10) == 0), row) << "step " << step;
        } else if (action < 23) {
            QVector<KV::CDataTable::FieldChange> batch;
            QVector<int> rows;
            for (int i = below(120); i > 0; --i) {
                const RecordPtr record = below(10) == 0 ? RecordPtr() : RecordPtr(anyTicket());
                batch.append({record, below(20) - 4}); // some fields have no column, and some are summed
                batch.append({record, TicketLots});
                const bool isStored = record && plain.stored.count(record->getKey()) > 0;
                for (int change = 0; change < 2; ++change)
                    rows.append(isStored ? plain.update(record) : -1);
            }
            ASSERT_EQ(table->updateDataFields(batch), rows) << "step " << step;
        } else if (action < 27) {
            QVector<RecordPtr> batch;
            QVector<int> newRows;
            for (int i = below(9); i >= 0; --i) {
                batch.append(anyTicket());
                const bool hadRow = plain.idOf(batch.back()->getKey()) >= 0;
                if (const int row = plain.update(batch.back()); row >= 0 && !hadRow)
                    newRows.append(row);
            }
            ASSERT_EQ(table->updateDatas(batch), newRows) << "step " << step;
        } else if (action < 33) {
            const std::string key = "k" + std::to_string(below(40));
            const int row = plain.remove(key);
            if (row >= 0 && below(2) == 0)
                ASSERT_EQ(table->removeDataByID(row), row) << "step " << step;
            else
                ASSERT_EQ(table->removeDataByKey(key), row) << "step " << step;
        } else if (action < 35) {
            onlyBuys = below(2) == 0;
            if (onlyBuys && below(2) == 0)
                filter(ColumnSide, ZB::FilterContains, {"入", ""});
            else
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
            plain.clear();
        }
        ASSERT_EQ(shownByTable(), plain.shown(sort)) << "step " << step;
        ASSERT_NO_FATAL_FAILURE(checkMaps(plain)) << "step " << step;
    }
}
