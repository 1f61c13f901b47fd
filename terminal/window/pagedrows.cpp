#include "window/pagedrows.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <limits>
#include <utility>

#include "kdservice/idata.h"
#include "model/chpfdata.h"
#include "pagemodel/chpfpagedatamodel.h"

namespace terminal {

namespace {

constexpr qint64 gap = qint64(1) << 32; ///< between places: room for rows to come in between

} // namespace

class PagedRows::PlacedRow : public KV::CHpfData
{
public:
    PlacedRow(const RecordPtr &pageRecord, boost::shared_ptr<CHpfDataModel> model, qint64 place)
        : KV::CHpfData(pageRecord, model->fieldColumnMap(), model), placeOnPage(place)
    {
    }

    const qint64 placeOnPage;
};

PagedRows::PagedRows(int metaId, kdservice::EVxTraderType traderType)
    : KV::CHpfDataModel(metaId, traderType),
      pageModel(boost::make_shared<KV::CHpfPageDataModel>(metaId, traderType, /* appendSeq */ true))
{
    pageModel->setFieldColumnIDMap(fieldColumnMap());
    pageModel->setColumnIDPropertyMap(columnPropertyMap());
    pageModel->setColumnFieldDesMap(columnFieldDesMap());
    pageModel->setExFilterStatus(0);
    for (int column = 0; column < columnCount(); ++column)
        pageModel->setColumnStatEnable(column, columnStatEnable(column));
    setSortColumns({{SortCustom, 0}});
}

PagedRows::~PagedRows() = default;

void PagedRows::take(const QVector<Record> &records)
{
    for (const Record &record : records)
        if (const auto result = pageModel->addData(record))
            apply(*result);
    sumsTouched = true;
    settlePage();
}

void PagedRows::apply(const KV::CUpdatePageDataResult &result)
{
    if (!result.leaveKey.empty()) {
        if (shown.erase(result.leaveKey) > 0)
            gone.insert(result.leaveKey);
        touched = true; // one that was not on the page may have stood in front of it, and all of the page has moved
    }
    if (!result.enterKey.empty()) {
        gone.erase(result.enterKey);
        shown[result.enterKey].fresh = true;
        touched = true;
    }
}

/// The sums may be others though no row of the page is: of another list, or of one that records were taken off.
void PagedRows::onTimer()
{
    const int size = pageModel->shownSize();
    const bool otherSize = std::exchange(summedSize, size) != size;
    sumsTouched = sumsTouched || otherSize || readRevision != pageModel->shownRevision();
    readPage(pageModel->getShownPage());
    if (std::exchange(sumsTouched, false))
        setUpdated(true);
}

void PagedRows::settlePage()
{
    if (!touched)
        return;
    const PageList page = pageModel->getShownPage();
    if (readRevision == pageModel->shownRevision() && isWhole(page)) {
        removeGone();
        handIn(page);
    } else {
        ++refillCount;
        readPage(page);
    }
}

/// Whether the rows are the page's. Not so when a record has left in front of the page, or the page was changed without
/// a step of the timer.
bool PagedRows::isWhole(const PageList &page) const
{
    return page.size() == static_cast<int>(shown.size()) &&
           std::all_of(page.begin(), page.end(),
                       [this](const auto &each) { return shown.count(each->getIData()->getKey()) > 0; });
}

void PagedRows::readPage(const PageList &page)
{
    readRevision = pageModel->shownRevision();
    std::unordered_map<std::string, Shown> before;
    before.swap(shown);
    for (const auto &each : page) {
        const std::string key = each->getIData()->getKey();
        const auto known = before.find(key);
        Shown &row = shown[key];
        if (known == before.end())
            continue;
        row = known->second;
        row.fresh = row.fresh || row.record != each->getIData().get();
        before.erase(known);
    }
    for (const auto &row : before)
        gone.insert(row.first);
    removeGone();
    handIn(page);
}

void PagedRows::removeGone()
{
    QVector<std::string> keys;
    for (const std::string &key : gone)
        if (shown.count(key) == 0)
            keys.append(key);
    gone.clear();
    if (!keys.isEmpty())
        removeDatasByKey(keys);
}

void PagedRows::handIn(const PageList &page)
{
    touched = false;
    std::vector<Shown *> order;
    for (const auto &each : page)
        order.push_back(&shown[each->getIData()->getKey()]);
    place(order);
    QVector<Row> rows;
    const auto self = boost::static_pointer_cast<CHpfDataModel>(shared_from_this());
    for (int index = 0; index < page.size(); ++index) {
        Shown &row = *order[static_cast<size_t>(index)];
        const Record record = page[index]->getIData();
        if (std::exchange(row.fresh, false)) {
            row.record = record.get();
            rows.append(boost::make_shared<PlacedRow>(record, self, row.place));
        }
    }
    if (rows.isEmpty())
        return;
    updateDatas(rows);
    size(); // puts the rows in order now
}

/// Rows that are still in order stay where they are; the others get places between them.
void PagedRows::place(const std::vector<Shown *> &rows)
{
    qint64 last = std::numeric_limits<qint64>::min();
    for (Shown *row : rows) {
        row->fresh = row->fresh || row->place <= last;
        last = row->fresh ? last : row->place;
    }
    bool fits = true;
    for (size_t first = 0; first < rows.size() && fits; ++first) {
        size_t behind = first;
        while (behind < rows.size() && rows[behind]->fresh)
            ++behind;
        fits = placeRun(rows, first, behind);
        first = behind;
    }
    if (fits)
        return;
    for (Shown *row : rows)
        row->fresh = true;
    placeRun(rows, 0, rows.size());
}

/// Places the rows from `first` up to `behind` between their neighbours; false when there is no room.
bool PagedRows::placeRun(const std::vector<Shown *> &rows, size_t first, size_t behind)
{
    const auto count = static_cast<qint64>(behind - first);
    qint64 before = first > 0 ? rows[first - 1]->place : 0;
    if (first == 0 && behind < rows.size())
        before = rows[behind]->place - (count + 1) * gap;
    const qint64 step = behind < rows.size() ? (rows[behind]->place - before) / (count + 1) : gap;
    for (size_t i = first; i < behind; ++i)
        rows[i]->place = before += step;
    return step > 0;
}

int PagedRows::customSort(const Row &a, const Row &b) const
{
    const auto *placedA = dynamic_cast<const PlacedRow *>(a.get());
    const auto *placedB = dynamic_cast<const PlacedRow *>(b.get());
    if (!placedA || !placedB)
        return 0;
    return placedA->placeOnPage < placedB->placeOnPage ? -1 : placedA->placeOnPage > placedB->placeOnPage ? 1 : 0;
}

QString PagedRows::getStatDispalyQString(int column) const
{
    if (!pageModel->isPending())
        lastSums[column] = sumText(column);
    return lastSums.value(column);
}

QString PagedRows::sumText(int column) const
{
    switch (columnType(column)) {
    case QVariant::Int:
    case QVariant::LongLong:
        return statText(column, pageModel->getStatColumnLongLong(column));
    case QVariant::Double:
        return statText(column, pageModel->getStatColumnDouble(column));
    default:
        return QString();
    }
}

} // namespace terminal
