#include <QtTest/QTest>
#include <algorithm>
#include <random>
#include <set>

#include "framework/tablefixture.h"

namespace tabletest {

namespace {

/// Chooses rows as a user does while rows change, come and go under sorts and filters, and remembers the keys of those
/// that should be chosen.
class TableSelectionTest : public TableTest
{
protected:
    void changeSomething()
    {
        switch (random() % 12) {
        case 0:
            table->setSortColumns({{random() % 2 == 0 ? Price : Quantity, static_cast<int>(random() % 2)}});
            break;
        case 1:
            filterSides();
            break;
        case 2:
            model->clearFilter();
            break;
        case 3:
        case 4:
            remove(randomKey());
            break;
        case 5:
        case 6:
            chooseOne();
            break;
        case 7:
        case 8:
            toggleNext();
            break;
        default:
            put(randomKey());
        }
        settle();
    }

    void compare() const
    {
        std::set<std::string> expected;
        for (const std::string &key : chosen)
            if (model->indexOfKey(key) >= 0)
                expected.insert(key);
        std::set<std::string> selected;
        for (const auto &row : table->selectedDatas())
            selected.insert(row->key());
        ASSERT_EQ(selected, expected);
        if (model->indexOfKey(current) >= 0) {
            ASSERT_TRUE(table->currentData()) << current;
            ASSERT_EQ(table->currentData()->key(), current);
        }
    }

    void put(const std::string &key)
    {
        model->put({key, QStringLiteral("600000"), QStringLiteral("浦发银行"), static_cast<int>(random() % 2),
                    static_cast<double>(random() % 50), static_cast<qint64>(random() % 50)});
    }

    std::mt19937 random;

private:
    static constexpr unsigned keyCount = 60;

    std::string randomKey() { return "k" + std::to_string(random() % keyCount); }

    void remove(const std::string &key)
    {
        model->removeDataByKey(key);
        chosen.erase(key); // the row that comes back under this key is another one
        if (key == current)
            current.clear();
    }

    void filterSides()
    {
        QPair<ZB::EFilterType, QSet<QString>> sides(ZB::FilterExact, {QStringLiteral("买入")});
        model->filterColumn(Side, sides);
    }

    void chooseOne()
    {
        if (model->size() == 0)
            return;
        current = model->getData(static_cast<int>(random() % static_cast<unsigned>(model->size())))->key();
        chosen = {current};
        table->selectKey(current);
    }

    /// Ctrl+Down goes on without choosing, Ctrl+Space takes the row in or out.
    void toggleNext()
    {
        const int here = model->indexOfKey(current);
        if (here < 0)
            return;
        current = model->getData(std::min(here + 1, model->size() - 1))->key();
        QTest::keyClick(grid(), Qt::Key_Down, Qt::ControlModifier);
        QTest::keyClick(grid(), Qt::Key_Space, Qt::ControlModifier);
        if (!chosen.insert(current).second)
            chosen.erase(current);
    }

    std::set<std::string> chosen;
    std::string current;
};

TEST_F(TableSelectionTest, ChosenRowsStayChosenThroughAnyChanges)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    random.seed(seed);
    for (int i = 0; i < 40; ++i)
        put("k" + std::to_string(i));
    settle();
    for (int step = 0; step < 600; ++step) {
        changeSomething();
        compare();
        if (HasFatalFailure())
            FAIL() << "step " << step;
    }
}

} // namespace

} // namespace tabletest
