#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <algorithm>
#include <map>
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
    TableSelectionTest()
    {
        for (int i = 0; i < 40; ++i)
            put("k" + std::to_string(i));
        settle();
    }

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

    /// The rows on the screen, by their keys, with their upper edges.
    std::map<std::string, int> places() const
    {
        std::map<std::string, int> found;
        std::vector<ZB::GridRowId> ids;
        grid()->source()->rowIds(grid()->firstVisibleRow(), grid()->visibleRowCount() + 2, ids);
        for (const ZB::GridRowId id : ids)
            if (const QRect cell = grid()->cellRect(id, Code); cell.isValid())
                found[keyOf(id)] = cell.top();
        return found;
    }

    /// Sorts, filters, goes to another place: the view may be elsewhere afterwards, between two rows too.
    void lookElsewhere()
    {
        switch (random() % 4) {
        case 0:
            table->setSortColumns({{Price, static_cast<int>(random() % 2)}});
            break;
        case 1:
            table->setSortColumns({});
            break;
        case 2:
            filterSides();
            break;
        default:
            model->clearFilter();
        }
        settle();
        if (model->size() > 0)
            grid()->scrollToRow(static_cast<int>(random() % static_cast<unsigned>(model->size())));
        const QPoint middle = grid()->rect().center();
        QWheelEvent wheel(middle, grid()->mapToGlobal(middle), QPoint(0, -static_cast<int>(random() % 60)), QPoint(),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(grid(), &wheel);
        settle();
    }

    /// One record comes, goes or changes. Where that is out of sight, all rows stay where they are on the screen;
    /// otherwise most do, since the others make room. Not at the followed edge, and not where the view would have to
    /// go beyond the first or the last row.
    void changeOneAndCompare()
    {
        const auto before = places();
        const bool follows = grid()->follow() != ZB::GridFollow::None && grid()->isAtFollowedEdge();
        const std::string key = randomKey();
        if (random() % 4 == 0)
            remove(key);
        else
            put(key);
        settle();
        const auto after = places();
        const bool atEnd = model->size() == 0 || after.count(model->getData(model->size() - 1)->key()) > 0;
        const bool inSight = before.count(key) > 0 || after.count(key) > 0;
        if (follows || atEnd || (inSight && grid()->firstVisibleRow() == 0))
            return;
        std::string moved;
        int left = 0;
        int stayed = 0;
        for (const auto &[row, top] : before) {
            if (row == key || model->indexOfKey(row) < 0)
                continue;
            ++left;
            const auto now = after.find(row);
            if (now != after.end() && now->second == top)
                ++stayed;
            else
                moved += ' ' + row;
        }
        ++compared;
        if (!inSight)
            ASSERT_EQ(stayed, left) << "moved:" << moved << " when " << key << " changed out of sight";
        else
            ASSERT_GE(stayed * 2, left) << "moved:" << moved << " when " << key << " changed in sight";
    }

    void put(const std::string &key)
    {
        model->put({key, QStringLiteral("600000"), QStringLiteral("浦发银行"), static_cast<int>(random() % 2),
                    static_cast<double>(random() % 50), static_cast<qint64>(random() % 50)});
    }

    const unsigned seed = std::random_device()();
    const ::testing::ScopedTrace trace{__FILE__, __LINE__, seed};
    std::mt19937 random{seed};
    int compared = 0;

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
        table->selectKey("unknown");
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
    for (int step = 0; step < 600; ++step) {
        changeSomething();
        compare();
        if (HasFatalFailure())
            FAIL() << "step " << step;
    }
}

TEST_F(TableSelectionTest, BlocksOfCellsStayOnTheirRecordsThroughAnyChanges)
{
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

TEST_F(TableSelectionTest, TheViewStaysOnItsRowsWhileOthersChange)
{
    for (int step = 0; step < 500; ++step) {
        if (step % 5 == 0)
            lookElsewhere();
        changeOneAndCompare();
        if (HasFatalFailure())
            FAIL() << "step " << step;
    }
    EXPECT_GT(compared, 50);
}

} // namespace

} // namespace tabletest
