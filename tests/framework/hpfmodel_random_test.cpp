#include <gtest/gtest.h>

#include "plainmodel.h"
#include "table/hpfmodelaccess.h"

using namespace modeltest;
using ZB::HpfModelAccess;

namespace {

/// One table twice: the model under test and the plain one, changed alike.
class Twins
{
public:
    explicit Twins(quint64 seed) : random(seed)
    {
        model.compareRecords = PlainModel::compareCustom;
        for (const int column : {Quantity, Status, Price})
            model.setColumnStatEnable(column, true);
    }

    void changeSomething()
    {
        switch (random() % 40) {
        case 0:
            changeSort();
            break;
        case 1:
        case 2:
            changeFilter();
            break;
        case 3:
            plain.filters.clear();
            model.clearFilter();
            break;
        case 4:
            plain.append = !plain.append;
            model.setAppendSeq(plain.append);
            break;
        case 5:
            if (random() % 5 == 0) {
                plain.rows.clear();
                model.clear();
            }
            break;
        case 6:
        case 7:
        case 8:
            putMany();
            break;
        case 9:
            HpfModelAccess::step(model, static_cast<int>(random() % 3));
            break;
        case 10:
        case 11:
        case 12:
        case 13:
        case 14:
            removeSome();
            break;
        default:
            putOne();
        }
    }

    void compare()
    {
        ASSERT_EQ(allKeys(model), plain.allKeys());
        const QString shown = plain.shownKeys();
        ASSERT_EQ(shownKeys(model), shown);
        const QStringList keys = shown.split(' ', Qt::SkipEmptyParts);
        ASSERT_EQ(model.size(), keys.size());
        ASSERT_EQ(model.allSize(), static_cast<int>(plain.rows.size()));
        for (const int column : {Quantity, Status, Price}) {
            ASSERT_EQ(model.getStatColumnDouble(column), plain.sumOf(column)) << column;
        }
        ASSERT_EQ(model.getStatColumnLongLong(Quantity), static_cast<qint64>(plain.sumOf(Quantity)));
        compareRows(keys);
    }

private:
    void compareRows(const QStringList &keys)
    {
        std::vector<ZB::HpfShownRow> fetched;
        ASSERT_EQ(HpfModelAccess::fetch(model, 0, keys.size() + 5, fetched), keys.size());
        for (int i = 0; i < keys.size(); ++i) {
            const std::string key = keys[i].toStdString();
            const auto &row = fetched[static_cast<std::size_t>(i)];
            ASSERT_EQ(row.row->key(), key);
            ASSERT_EQ(model.indexOfKey(key), i);
            ASSERT_EQ(HpfModelAccess::indexOf(model, row.id), i);
            ASSERT_EQ(HpfModelAccess::idOfKey(model, key), row.id);
            ASSERT_EQ(model.getData(i), row.row);
            ASSERT_EQ(model.getDataByKey(keys[i]), row.row);
        }
        ASSERT_FALSE(model.getData(keys.size()));
        ASSERT_FALSE(model.getData(-1));
        for (const PlainModel::Row &row : plain.rows) {
            ASSERT_TRUE(model.containData(row.key));
            ASSERT_EQ(model.indexOfKey(row.key) >= 0, plain.passes(row.record)) << row.key;
        }
    }

    std::string randomKey() { return "k" + std::to_string(random() % 300); }

    void putOne()
    {
        const std::string key = randomKey();
        const Record record = randomRecord(random);
        plain.put(key, record);
        const auto row = boost::make_shared<ValueRow>(key, record);
        EXPECT_TRUE(random() % 2 == 0 ? model.addData(row) : model.updateData(row));
    }

    void putMany()
    {
        QVector<ZB::IBaseHpfTableModel::Row> rows;
        for (quint64 i = random() % (random() % 10 == 0 ? 700 : 20); i > 0; --i) {
            const std::string key = randomKey();
            const Record record = randomRecord(random);
            plain.put(key, record);
            rows.append(boost::make_shared<ValueRow>(key, record));
        }
        model.updateDatas(rows);
    }

    void removeSome()
    {
        QVector<std::string> keys;
        for (quint64 i = random() % 8; i > 0; --i) {
            keys.append(randomKey());
            plain.remove(keys.last());
        }
        if (keys.size() == 1)
            model.removeDataByKey(keys.first());
        else
            model.removeDatasByKey(keys);
    }

    void changeSort()
    {
        QVector<QPair<int, int>> columns;
        static constexpr int choices[] = {Quantity, Status, Price, Name, ZB::IBaseHpfTableModel::SortCustom, 17};
        for (quint64 i = random() % 4; i > 0; --i)
            columns.append({choices[random() % std::size(choices)], static_cast<int>(random() % 2)});
        plain.sort = columns;
        model.setSortColumns(columns);
    }

    void changeFilter()
    {
        const int column = static_cast<int>(random() % ColumnCount);
        const int type = random() % 3 == 0 ? 1 : 0;
        QSet<QString> values;
        for (quint64 i = random() % 6; i > 0; --i) {
            const QString text = shownText(randomRecord(random), column);
            values.insert(type == 1 ? text.left(2) : text);
        }
        if (random() % 2 == 0) {
            plain.filters[column].clear();
            model.filter(column, type, values);
        } else {
            model.narrow(column, type, values);
        }
        if (!values.isEmpty())
            plain.filters[column].append({type, values});
    }

    std::mt19937_64 random;
    ValueModel model;
    PlainModel plain;
};

} // namespace

TEST(HpfModelRandom, AgreesWithThePlainestModelAfterAnyOperations)
{
    const quint64 seed = std::random_device()();
    for (quint64 round = 0; round < 4; ++round) {
        SCOPED_TRACE(seed + round);
        Twins twins(seed + round);
        for (int step = 0; step < 1200; ++step) {
            twins.changeSomething();
            if (step % 3 == 0)
                twins.compare();
            if (::testing::Test::HasFatalFailure())
                FAIL() << "step " << step;
        }
    }
}
