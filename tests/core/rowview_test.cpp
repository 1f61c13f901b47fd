#include "rows/rowview.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <random>

using core::Arrangement;
using core::ColumnSum;
using core::RowValues;
using core::RowView;
using core::ValueKind;
namespace SortKey = core::SortKey;

namespace {

constexpr double noReal = std::numeric_limits<double>::max();
constexpr qint64 noInteger = std::numeric_limits<qint64>::max();
const core::SlotSort::CancelFlag goOn{false};

/// A row as a plain model keeps it.
struct PlainRow
{
    qint64 arrival = 0;
    qint64 integer = 0;
    double real = 0;
    QString text;
    bool passes = true;
};

struct Field
{
    ValueKind kind;
    bool descending;
};

/// Below 0 when a goes in front of b by one field, absent values last.
int compareBy(const Field &field, const PlainRow &a, const PlainRow &b)
{
    int order = 0;
    bool absentA = false;
    bool absentB = false;
    if (field.kind == ValueKind::Integer) {
        absentA = a.integer == noInteger;
        absentB = b.integer == noInteger;
        order = (a.integer > b.integer) - (a.integer < b.integer);
    } else if (field.kind == ValueKind::Real) {
        absentA = std::isnan(a.real) || a.real == noReal;
        absentB = std::isnan(b.real) || b.real == noReal;
        order = (a.real > b.real) - (a.real < b.real);
    } else {
        order = a.text.compare(b.text);
    }
    if (absentA || absentB)
        return int(absentA) - int(absentB);
    return field.descending ? -order : order;
}

class PlainView
{
public:
    explicit PlainView(std::vector<Field> sortFields) : fields(std::move(sortFields)) {}

    std::string lines() const
    {
        std::vector<std::pair<quint32, PlainRow>> sorted(rows.begin(), rows.end());
        std::sort(sorted.begin(), sorted.end(), [this](const auto &a, const auto &b) {
            for (const Field &field : fields) {
                const int order = compareBy(field, a.second, b.second);
                if (order != 0)
                    return order < 0;
            }
            return a.second.arrival < b.second.arrival;
        });
        std::string result;
        for (const auto &[slot, row] : sorted)
            result += std::to_string(slot) + (row.passes ? "+\n" : "\n");
        return result;
    }

    qint64 integerSum() const
    {
        qint64 sum = 0;
        for (const auto &entry : rows) {
            if (entry.second.passes && entry.second.integer != noInteger)
                sum += entry.second.integer;
        }
        return sum;
    }

    std::map<quint32, PlainRow> rows;

private:
    std::vector<Field> fields;
};

RowValues valuesOf(const PlainRow &row, const std::vector<Field> &fields)
{
    RowValues values;
    for (const Field &field : fields) {
        if (field.kind == ValueKind::Integer) {
            values.sortKeys.append(SortKey::ofInteger(row.integer, field.descending));
        } else if (field.kind == ValueKind::Real) {
            values.sortKeys.append(SortKey::ofReal(row.real, field.descending));
        } else {
            values.sortKeys.append(SortKey::ofText(row.text, field.descending));
            values.texts.append(row.text);
        }
    }
    values.sums.append(ColumnSum::bitsOf(row.integer));
    values.sums.append(ColumnSum::bitsOf(row.real));
    values.passes = row.passes;
    return values;
}

Arrangement arrangementOf(const std::vector<Field> &fields)
{
    Arrangement arrangement;
    for (const Field &field : fields)
        arrangement.sort.push_back({field.kind, field.descending});
    arrangement.sums = {ValueKind::Integer, ValueKind::Real};
    return arrangement;
}

std::string lines(const RowView &view)
{
    std::string result;
    view.rows().forEach(0, view.rows().size(), [&](const core::ChunkedSequence::Entry &entry) {
        result += std::to_string(entry.slot) + (entry.marked ? "+\n" : "\n");
    });
    return result;
}

PlainRow randomRow(std::mt19937_64 &random, qint64 arrival)
{
    static const double reals[] = {0.0, -0.0, 1.5, -2.25, 1e300, noReal, std::nan(""), HUGE_VAL, 15.93};
    static const QString texts[] = {"", "a", "ab", "600519", "600519A", "600519B", "贵州茅台", "贵州茅台股"};
    PlainRow row;
    row.arrival = arrival;
    row.integer = random() % 8 == 0 ? noInteger : static_cast<qint64>(random() % 7) - 3;
    row.real = reals[random() % std::size(reals)];
    row.text = texts[random() % std::size(texts)];
    row.passes = random() % 3 != 0;
    return row;
}

const std::vector<std::vector<Field>> arrangements = {
    {},
    {{ValueKind::Real, false}},
    {{ValueKind::Real, true}},
    {{ValueKind::Text, false}},
    {{ValueKind::Text, true}, {ValueKind::Integer, true}},
    {{ValueKind::Integer, false}, {ValueKind::Text, true}, {ValueKind::Real, true}},
};

} // namespace

TEST(RowView, AgreesWithSortingEverythingAfterAnyChanges)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    for (const auto &fields : arrangements) {
        std::mt19937_64 random(seed);
        RowView view(arrangementOf(fields));
        PlainView plain(fields);
        qint64 newest = 0;
        qint64 oldest = 0;
        for (int step = 0; step < 6000; ++step) {
            const auto slot = static_cast<quint32>(random() % 1500);
            const auto known = plain.rows.find(slot);
            if (known == plain.rows.end()) {
                const PlainRow row = randomRow(random, random() % 4 == 0 ? --oldest : ++newest);
                const auto effect = view.add(slot, row.arrival, valuesOf(row, fields));
                EXPECT_EQ(effect == RowView::Effect::Order, row.passes);
                plain.rows[slot] = row;
            } else if (random() % 3 == 0) {
                const auto effect = view.remove(slot);
                EXPECT_EQ(effect == RowView::Effect::Order, known->second.passes);
                plain.rows.erase(known);
            } else {
                known->second = randomRow(random, known->second.arrival);
                view.change(slot, valuesOf(known->second, fields));
            }
            if (step % 600 == 599) {
                ASSERT_TRUE(view.checkConsistency()) << "step " << step;
                ASSERT_EQ(lines(view), plain.lines()) << "step " << step;
                ASSERT_EQ(view.sum(0).toInteger(), plain.integerSum());
            }
        }
        // The same rows in a view made at once.
        RowView made(arrangementOf(fields));
        std::vector<quint32> slots;
        core::KeptRows kept;
        view.copyKept(7, 5000, kept);
        for (int i = 0; i < 5000; ++i) {
            const auto slot = static_cast<quint32>(i + 7);
            ASSERT_EQ(kept.contains(i), plain.rows.count(slot) != 0) << slot;
            if (kept.contains(i)) {
                made.adopt(slot, kept.words(i), kept.texts(i), kept.passes(i));
                slots.push_back(slot);
            }
        }
        // Those in front of the copied run, and one that is taken back.
        for (quint32 slot = 0; slot < 7; ++slot) {
            if (plain.rows.count(slot) != 0) {
                view.copyKept(slot, 1, kept);
                made.adopt(slot, kept.words(0), kept.texts(0), kept.passes(0));
                slots.push_back(slot);
            }
        }
        made.adopt(4000, kept.words(0), kept.texts(0), true);
        made.remove(4000);
        ASSERT_TRUE(made.order(slots, nullptr, goOn));
        const std::atomic<bool> calledOff{true};
        EXPECT_FALSE(made.place(slots, &calledOff));
        EXPECT_EQ(made.rows().size(), 0);
        ASSERT_TRUE(made.place(slots));
        ASSERT_TRUE(made.checkConsistency());
        EXPECT_EQ(lines(made), plain.lines());
        EXPECT_EQ(ColumnSum::bitsOf(made.sum(1).toDouble()), ColumnSum::bitsOf(view.sum(1).toDouble()));
    }
}

TEST(RowView, AnUntouchedOrderReportsNoEffect)
{
    const std::vector<Field> fields = {{ValueKind::Real, false}};
    RowView view(arrangementOf(fields));
    PlainRow row;
    row.real = 5;
    view.add(0, 0, valuesOf(row, fields));
    row.integer = 7;
    EXPECT_EQ(view.change(0, valuesOf(row, fields)), RowView::Effect::None);
    EXPECT_EQ(view.sum(0).toInteger(), 7);
    row.real = -5;
    EXPECT_EQ(view.change(0, valuesOf(row, fields)), RowView::Effect::Order);
    row.passes = false;
    EXPECT_EQ(view.change(0, valuesOf(row, fields)), RowView::Effect::Order);
    EXPECT_EQ(view.sum(0).toInteger(), 0);
    row.real = 9;
    EXPECT_EQ(view.change(0, valuesOf(row, fields)), RowView::Effect::None);
    EXPECT_EQ(view.remove(0), RowView::Effect::None);
}

TEST(RowView, CountsRowsAnewAfterUncountingAll)
{
    RowView view(arrangementOf({}));
    PlainRow row;
    row.integer = 10;
    for (quint32 slot = 0; slot < 3; ++slot)
        view.add(slot, slot, valuesOf(row, {}));
    row.passes = false;
    view.add(3, 3, valuesOf(row, {}));
    EXPECT_EQ(view.sum(0).toInteger(), 30);
    view.uncountAll();
    EXPECT_EQ(view.sum(0).toInteger(), 0);
    row.integer = 5;
    view.count(1, valuesOf(row, {}).sums);
    view.count(1, valuesOf(row, {}).sums);
    view.count(3, valuesOf(row, {}).sums);
    EXPECT_EQ(view.sum(0).toInteger(), 5);
    view.remove(2);
    EXPECT_EQ(view.sum(0).toInteger(), 5);
    row.passes = true;
    view.change(3, valuesOf(row, {}));
    EXPECT_EQ(view.sum(0).toInteger(), 10);
    EXPECT_TRUE(view.checkConsistency());
}

TEST(RowView, RowsOfACustomOrderWaitAtTheEndUntilTheyAreMerged)
{
    Arrangement arrangement;
    arrangement.sort = {{ValueKind::Custom, true}, {ValueKind::Integer, false}};
    RowView view(arrangement);
    // Custom: by the last digit of the slot, descending.
    const auto compare = [](quint32 a, quint32 b) { return static_cast<int>(a % 10) - static_cast<int>(b % 10); };
    const auto put = [&](quint32 slot, qint64 value) {
        RowValues values;
        values.sortKeys.append(0);
        values.sortKeys.append(SortKey::ofInteger(value, false));
        if (view.contains(slot))
            view.change(slot, values);
        else
            view.add(slot, slot, values);
    };
    for (const quint32 slot : {1, 12, 2, 22, 3})
        put(slot, 50 - slot);
    EXPECT_EQ(lines(view), "1+\n12+\n2+\n22+\n3+\n");
    EXPECT_EQ(view.misplacedSlots(), (std::vector<quint32>{1, 12, 2, 22, 3}));

    RowView settled(arrangement);
    std::vector<quint32> slots;
    view.rows().copySlots(slots);
    core::KeptRows kept;
    view.copyKept(0, 23, kept);
    for (const quint32 slot : slots)
        settled.adopt(slot, kept.words(static_cast<int>(slot)), nullptr, true);
    ASSERT_TRUE(settled.order(slots, compare, goOn));
    EXPECT_EQ(slots, (std::vector<quint32>{3, 22, 12, 2, 1}));
    settled.place(slots);
    EXPECT_TRUE(settled.misplacedSlots().empty());

    EXPECT_TRUE(settled.mergeMisplaced(slots, {22, 1, 22, 77, 5000}, compare, goOn));
    EXPECT_EQ(slots, (std::vector<quint32>{3, 22, 12, 2, 1}));
    settled.remove(12);
    EXPECT_EQ(lines(settled), "3+\n22+\n2+\n1+\n");
}
