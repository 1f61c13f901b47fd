#include "pagemodel/pagemenugatherer.h"

#include <algorithm>

#include "pagemodel/chpfpagedatamodel.h"
#include "pagemodel/pagemodelcore.h"

namespace KV {

namespace {

constexpr quint32 slotsPerPiece = 256; ///< read under one lock

} // namespace

PageMenuGatherer::PageMenuGatherer(const CHpfPageDataModel &pageModel, int columnId)
    : model(pageModel), menuColumn(columnId)
{
}

bool PageMenuGatherer::step(int milliseconds)
{
    const PageDeadline deadline(milliseconds);
    while (!allRead) {
        allRead = !readPiece();
        if (deadline.isDue())
            return false;
    }
    finished = finished || menu->arrange(deadline);
    return finished;
}

bool PageMenuGatherer::readPiece()
{
    const boost::shared_lock<boost::shared_mutex> lock(model.mutex);
    const PageColumns &columns = model.core->columns;
    if (!menu || columnsRevision != columns.revision()) {
        menu.emplace(columns, menuColumn);
        columnsRevision = columns.revision();
        next = 0;
    }
    const PageRows &rows = model.core->rows;
    limit = rows.slotLimit();
    for (const quint32 end = std::min(limit, next + slotsPerPiece); next < end; ++next)
        if (rows[next].record)
            menu->add(*rows[next].record);
    return next < limit;
}

int PageMenuGatherer::progress() const
{
    return finished ? 1000 : static_cast<int>(999 * qint64(next) / std::max<qint64>(1, limit));
}

} // namespace KV
