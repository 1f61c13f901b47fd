#include <algorithm>

#include "table/tablesource.h"
#include "threads/callqueue.h"
#include "threads/poolwork.h"

namespace ZB {

namespace {

constexpr int rowsTakenAtOnce = 50000;

struct PartOfSnapshot
{
    RowSnapshot whole; ///< goes after the rows, since it knows where the last of them has to go
    std::vector<HpfShownRow> rows;
};

} // namespace

void TableSource::pause(const std::function<void()> &taken)
{
    if (holding || !model)
        return;
    const HpfModelStatus status = HpfModelAccess::status(*model);
    holding = std::make_shared<Pause>();
    holding->arrivals = status.arrivals;
    holding->data = status.dataEpoch;
    if (!sharedModel)
        return takeWhenSettled();
    if (!status.pending && status.shown <= rowsTakenAtOnce) {
        holding->rows = takerOfAll(*model, sharedModel)();
        holding->places = placesOf(holding->rows);
        return;
    }
    using Places = std::shared_ptr<const PlacesOfIds>;
    const auto keep = [this, taken, run = std::weak_ptr<Pause>(holding)](const RowSnapshot &rows,
                                                                         const Places &places) {
        if (const auto pause = run.lock()) {
            pause->rows = rows;
            pause->places = places;
            touch();
            taken();
        }
    };
    core::runInPool([take = takerOfAll(*model, sharedModel), keep] {
        const RowSnapshot rows = take();
        const Places places = placesOf(rows);
        core::postToApplication([rows, places, keep] { keep(rows, places); });
    });
}

void TableSource::takeWhenSettled()
{
    if (!holding || holding->rows || !model || sharedModel || HpfModelAccess::status(*model).pending)
        return;
    holding->rows = takerOfAll(*model, sharedModel)();
    holding->places = placesOf(holding->rows);
    touch();
}

std::shared_ptr<const TableSource::PlacesOfIds> TableSource::placesOf(const RowSnapshot &rows)
{
    const auto places = std::make_shared<PlacesOfIds>();
    places->reserve(rows->size());
    for (const HpfShownRow &row : *rows)
        places->emplace_back(row.id, int(places->size()));
    std::sort(places->begin(), places->end());
    return places;
}

qint64 TableSource::placeOf(GridRowId id, const PlacesOfIds &places)
{
    const auto found = std::lower_bound(places.begin(), places.end(), std::make_pair(id, 0));
    return found != places.end() && found->first == id ? found->second : -1;
}

void TableSource::resume()
{
    holding.reset();
}

bool TableSource::isPaused() const
{
    return holding != nullptr;
}

qint64 TableSource::arrivalsSincePause() const
{
    return holding && model ? qint64(HpfModelAccess::status(*model).arrivals - holding->arrivals) : 0;
}

const std::vector<HpfShownRow> *TableSource::heldRows() const
{
    return holding && holding->rows ? holding->rows.get() : nullptr;
}

RowTaker TableSource::allRows() const
{
    if (heldRows())
        return [rows = holding->rows] { return rows; };
    return takerOfAll(*model, sharedModel);
}

RowTaker TableSource::rowsOfIds(std::vector<GridRowId> ids) const
{
    if (!heldRows())
        return takerOf(std::move(ids), *model, sharedModel);
    return [ids = std::move(ids), held = holding->rows, places = holding->places] {
        const auto part = std::make_shared<PartOfSnapshot>();
        part->whole = held;
        part->rows.reserve(ids.size());
        for (const GridRowId id : ids)
            if (const qint64 place = placeOf(id, *places); place >= 0)
                part->rows.push_back((*held)[std::size_t(place)]);
        return RowSnapshot(part, &part->rows);
    };
}

} // namespace ZB
