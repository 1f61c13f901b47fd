#include <QtGui/QMouseEvent>
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

    /// Rows are changed, come and go, and are sorted and filtered; nobody chooses anything.
    void changeRows()
    {
        const auto choice = random() % 10;
        if (choice == 0)
            table->setSortColumns({{Price, static_cast<int>(random() % 2)}});
        else if (choice == 1)
            filterSides();
        else if (choice == 2)
            model->clearFilter();
        else if (choice == 3)
            removed.insert(removeOne());
        else
            put(randomKey());
        settle();
    }

    /// A block from one cell to another, both on the screen.
    void dragBlock(Qt::KeyboardModifiers modifiers)
    {
        const int shown = std::min(model->size(), grid()->visibleRowCount());
        const auto some = [this](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
        const int rows[] = {some(shown), some(shown)};
        const int columns[] = {some(ColumnCount - 1), ColumnCount - 1};
        QPoint places[2];
        for (int end = 0; end < 2; ++end)
            places[end] = grid()->cellRect(idAt(rows[end]), columns[end]).center();
        QTest::mousePress(grid(), Qt::LeftButton, modifiers, places[0]);
        QMouseEvent move(QEvent::MouseMove, places[1], Qt::NoButton, Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(grid(), &move);
        QTest::mouseRelease(grid(), Qt::LeftButton, modifiers, places[1]);
        for (int row = std::min(rows[0], rows[1]); row <= std::max(rows[0], rows[1]); ++row)
            for (int column = columns[0]; column <= columns[1]; ++column)
                cells.insert({model->getData(row)->key(), column});
    }

    void compareCells() const
    {
        std::set<std::pair<std::string, int>> expected;
        for (const auto &cell : cells)
            if (model->indexOfKey(cell.first) >= 0 && removed.count(cell.first) == 0)
                expected.insert(cell);
        std::set<std::pair<std::string, int>> selected;
        for (const ZB::GridCells &block : grid()->selectedCells())
            for (const ZB::GridRowId row : block.rows)
                for (const int column : block.columns)
                    selected.insert({keyOf(row), column});
        ASSERT_EQ(selected, expected);
    }

    void put(const std::string &key)
    {
        model->put({key, QStringLiteral("600000"), QStringLiteral("浦发银行"), static_cast<int>(random() % 2),
                    static_cast<double>(random() % 50), static_cast<qint64>(random() % 50)});
    }

    std::mt19937 random;

private:
    static constexpr unsigned keyCount = 60;

    ZB::GridRowId idAt(int row) const
    {
        std::vector<ZB::GridRowId> ids;
        grid()->source()->rowIds(row, 1, ids);
        return ids.at(0);
    }
    std::string keyOf(ZB::GridRowId id) const
    {
        return model->getData(static_cast<int>(grid()->source()->rowOf(id)))->key();
    }
    std::string removeOne()
    {
        const std::string key = randomKey();
        remove(key);
        return key;
    }

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

    std::set<std::pair<std::string, int>> cells;
    std::set<std::string> removed; ///< since the cells were chosen
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

TEST_F(TableSelectionTest, BlocksOfCellsStayOnTheirRecordsThroughAnyChanges)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    random.seed(seed);
    for (int i = 0; i < 40; ++i)
        put("k" + std::to_string(i));
    settle();
    grid()->scrollToRow(0);
    settle();
    dragBlock(Qt::NoModifier);
    dragBlock(Qt::ControlModifier);
    dragBlock(Qt::ControlModifier);
    for (int step = 0; step < 300; ++step) {
        compareCells();
        if (HasFatalFailure())
            FAIL() << "step " << step;
        changeRows();
    }
}

} // namespace

} // namespace tabletest
