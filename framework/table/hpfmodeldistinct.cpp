#include <QtCore/QElapsedTimer>
#include <numeric>
#include <optional>
#include <utility>

#include "rows/steppedsort.h"
#include "table/hpfmodelaccess.h"
#include "table/hpfmodelstate.h"

namespace ZB {

namespace {

constexpr quint32 slotsPerPiece = 256; ///< between two looks at the clock

/// A text that was found, with the value of the first row that had it.
struct Found
{
    HpfDistinctTexts::Value value;
    quint64 sortKey = 0;
    QString sortText;
};

int compare(const Found &a, const Found &b)
{
    if (a.sortKey != b.sortKey)
        return a.sortKey < b.sortKey ? -1 : 1;
    const int bySortText = a.sortText.compare(b.sortText);
    return bySortText != 0 ? bySortText : a.value.text.compare(b.value.text);
}

/// The filters that were asked for last, whether they are carried out yet or not.
std::shared_ptr<const HpfModelPlan> newestPlan(const IBaseHpfTableModel &model, const HpfModelState &state)
{
    const std::shared_ptr<const HpfModelPlan> present = state.presentPlan();
    const HpfModelWish wish = state.wish();
    if (wish.filters == present->wish().filters)
        return present;
    return std::make_shared<const HpfModelPlan>(model, wish, present.get());
}

} // namespace

struct HpfDistinctTexts::Private
{
    Private(const IBaseHpfTableModel &model, HpfModelState &modelState, const HpfModelColumn &countedColumn)
        : state(modelState), column(countedColumn), ownTexts(model.textContext(countedColumn.number()) < 0),
          reader(newestPlan(model, modelState))
    {
        const auto &filters = reader.plan()->filters();
        for (std::size_t i = 0; i < filters.size(); ++i) {
            if (filters[i]->source().number() != column.number())
                otherFilters.push_back(i);
        }
    }

    void count(IBaseHpfTableData &row)
    {
        for (const std::size_t filter : otherFilters) {
            if (!reader.passesFilter(row, filter))
                return;
        }
        const int *const known = ownTexts ? nullptr : places.find(column, row);
        const int place = known ? *known : placeOf(row);
        if (place < 0)
            return;
        if (!known && !ownTexts)
            places.remember(place);
        ++found[static_cast<std::size_t>(place)].value.count;
    }

    /// -1 when there are too many different texts already.
    int placeOf(IBaseHpfTableData &row)
    {
        const QString text = row.getFilterQString(column.number());
        const auto known = placeOfText.constFind(text);
        if (known != placeOfText.constEnd())
            return known.value();
        if (found.size() == static_cast<std::size_t>(maximumValues)) {
            truncated = true;
            return -1;
        }
        Found added;
        added.value.text = text;
        added.sortKey = column.sortKey(row, false, added.sortText);
        found.push_back(added);
        const int place = static_cast<int>(found.size()) - 1;
        placeOfText.insert(text, place);
        return place;
    }

    /// Reads on; true when every row has been looked at.
    bool gather(const QElapsedTimer &timer, int milliseconds)
    {
        while (!order) {
            piece.clear();
            slotLimit = state.rowsOfSlots(nextSlot, slotsPerPiece, piece);
            for (const IBaseHpfTableModel::Row &row : piece)
                count(*row);
            nextSlot += slotsPerPiece;
            if (nextSlot >= slotLimit)
                beginSort();
            else if (timer.hasExpired(milliseconds))
                break;
        }
        piece.clear();
        return order.has_value();
    }

    void beginSort()
    {
        std::vector<quint32> unsorted(found.size());
        std::iota(unsorted.begin(), unsorted.end(), 0u);
        order.emplace(std::move(unsorted));
    }

    /// A hundred thousand texts are not sorted within one slice.
    bool sort(const QElapsedTimer &timer, int milliseconds)
    {
        const bool sorted = order->step([this](quint32 a, quint32 b) { return compare(found[a], found[b]); },
                                        [&] { return timer.hasExpired(milliseconds); });
        if (sorted) {
            values.reserve(found.size());
            for (const quint32 place : order->take())
                values.push_back(std::move(found[place].value));
        }
        return sorted;
    }

    HpfModelState &state;
    const HpfModelColumn column;
    const bool ownTexts; ///< of every row, whatever its value
    HpfModelPlan::Reader reader;
    std::vector<std::size_t> otherFilters;
    HpfAnswersByValue<int> places;
    QHash<QString, int> placeOfText;
    std::vector<Found> found;
    std::optional<core::SteppedSort> order; ///< of `found`, once everything has been read
    std::vector<IBaseHpfTableModel::Row> piece;
    quint32 nextSlot = 0;
    quint32 slotLimit = 0;
    std::vector<Value> values;
    bool truncated = false;
    bool finished = false;
};

HpfDistinctTexts::HpfDistinctTexts(const IBaseHpfTableModel &model, int column)
    : d(std::make_unique<Private>(model, HpfModelAccess::stateOf(model),
                                  HpfModelColumn(column, model.columnType(column))))
{
}

HpfDistinctTexts::~HpfDistinctTexts() = default;

bool HpfDistinctTexts::step(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    if (!d->finished && d->gather(timer, milliseconds))
        d->finished = d->sort(timer, milliseconds);
    return d->finished;
}

int HpfDistinctTexts::progress() const
{
    if (d->finished || d->slotLimit == 0)
        return d->finished ? 1000 : 0;
    return static_cast<int>(qMin(quint64(999), quint64(d->nextSlot) * 1000 / d->slotLimit));
}

const std::vector<HpfDistinctTexts::Value> &HpfDistinctTexts::values() const
{
    return d->values;
}

bool HpfDistinctTexts::isTruncated() const
{
    return d->truncated;
}

} // namespace ZB
