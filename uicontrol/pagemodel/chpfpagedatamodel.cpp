#include "pagemodel/chpfpagedatamodel.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>
#include <log4cxx/logger.h>

#include "kdservice/keyhash.h"
#include "pagemodel/pagemenugatherer.h"
#include "pagemodel/pagemodelcore.h"
#include "utils/clogcenter.h"

namespace KV {

namespace {

constexpr int debugId = 911;
constexpr int doneAtOnce = 4096;  ///< records; about a millisecond's work
constexpr int finishedAtOnce = 2; ///< milliseconds under the lock while a reader waits

bool detailsWanted()
{
    return utils::CLogCenter::instance()->isDebugIdEnabled(debugId) && utils::getLogger("KDDbgFile")->isDebugEnabled();
}

void writeDetails(const std::vector<std::string> &messages)
{
    if (messages.empty())
        return;
    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    for (const std::string &message : messages)
        LOG4CXX_DEBUG(logger, fmt::format("[dbg_id={0}] {1}", debugId, message));
}

} // namespace

/// Runs a change under the exclusive lock, and writes its messages when the lock is gone.
template <typename Change>
auto CHpfPageDataModel::change(Change work) const
{
    const bool logging = logDetail && detailsWanted();
    boost::unique_lock<boost::shared_mutex> lock(mutex);
    core->logging = logging;
    const auto finish = [&] {
        if (std::exchange(core->countChanged, false))
            countChanged = true;
        const std::vector<std::string> messages = core->takeMessages();
        lock.unlock();
        writeDetails(messages);
    };
    if constexpr (std::is_void_v<decltype(work(*core))>) {
        work(*core);
        finish();
    } else {
        auto result = work(*core);
        finish();
        return result;
    }
}

/// A change that sorts and filters which are under way would not notice.
template <typename Change>
auto CHpfPageDataModel::settledChange(Change work)
{
    return change([&](PageModelCore &c) {
        c.stepWork(PageDeadline());
        return work(c);
    });
}

/// Asks for a sort or a filter.
template <typename Ask>
void CHpfPageDataModel::ask(Ask work)
{
    change([&](PageModelCore &c) {
        work(c);
        const int milliseconds = workPerCall;
        if (milliseconds < 0 || (milliseconds > 0 && c.all.size() <= doneAtOnce))
            c.stepWork(PageDeadline());
        else if (milliseconds > 0)
            c.stepWork(PageDeadline(milliseconds));
    });
}

/// Reads the lists as they are.
template <typename Read>
auto CHpfPageDataModel::shownRead(Read work) const
{
    const boost::shared_lock<boost::shared_mutex> lock(mutex);
    return work(const_cast<const PageModelCore &>(*core));
}

/// Reads the lists as they were asked for.
template <typename Read>
auto CHpfPageDataModel::read(Read work) const
{
    for (;;) {
        {
            const boost::shared_lock<boost::shared_mutex> lock(mutex);
            if (!core->hasWork())
                return work(const_cast<const PageModelCore &>(*core));
        }
        finishWork();
    }
}

/// Piece by piece, so that other threads get in between.
void CHpfPageDataModel::finishWork() const
{
    while (!change([](PageModelCore &c) { return c.stepWork(PageDeadline(finishedAtOnce)); })) {
    }
}

CHpfPageDataModel::CHpfPageDataModel(int dataType, kdservice::EVxTraderType traderType, bool appendSeq)
    : core(std::make_unique<PageModelCore>(this, dataType, traderType, appendSeq))
{
}

CHpfPageDataModel::~CHpfPageDataModel() = default;

CHpfPageDataModel::Result CHpfPageDataModel::addData(const boost::shared_ptr<kdservice::IData> &record)
{
    return record ? addData(boost::make_shared<CHpfPageData>(record)) : Result();
}

CHpfPageDataModel::Result CHpfPageDataModel::addData(const Page &page)
{
    if (!page || !page->getIData())
        return Result();
    return change([&](PageModelCore &c) { return c.addData(page); });
}

void CHpfPageDataModel::removeDataByKey(quint64 key)
{
    change([&](PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        if (slot != PageRows::noSlot)
            c.removeData(slot);
    });
}

void CHpfPageDataModel::removeDataByKey(const std::string &key)
{
    change([&](PageModelCore &c) {
        const quint32 slot = c.rows.find(key, kdservice::hashOfKey(key));
        if (slot != PageRows::noSlot)
            c.removeData(slot);
    });
}

void CHpfPageDataModel::clear()
{
    change([](PageModelCore &c) { c.clear(); });
}

int CHpfPageDataModel::size() const
{
    return read([](const PageModelCore &c) { return c.visible.size(); });
}

int CHpfPageDataModel::originalSize() const
{
    return shownRead([](const PageModelCore &c) { return c.all.size(); });
}

bool CHpfPageDataModel::totalCountChange()
{
    return countChanged.exchange(false);
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::pagesOf(const std::vector<quint32> &slotList) const
{
    QList<Page> pages;
    pages.reserve(static_cast<int>(slotList.size()));
    for (const quint32 slot : slotList)
        pages.append(core->rows[slot].page);
    return pages;
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getShowDatas() const
{
    return read([&](const PageModelCore &c) { return pagesOf(c.visible.slotsInOrder()); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getAllDatas() const
{
    return read([&](const PageModelCore &c) { return pagesOf(c.all.slotsInOrder()); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getPageDatas() const
{
    return read([&](const PageModelCore &c) { return pagesOf(c.pageSlots()); });
}

QList<CHpfPageDataModel::Page> CHpfPageDataModel::getShownPage() const
{
    return shownRead([&](const PageModelCore &c) { return pagesOf(c.pageSlots()); });
}

int CHpfPageDataModel::shownSize() const
{
    return shownRead([](const PageModelCore &c) { return c.visible.size(); });
}

quint64 CHpfPageDataModel::shownRevision() const
{
    return shownRead([](const PageModelCore &c) { return c.revision; });
}

CHpfPageDataModel::Page CHpfPageDataModel::getData(int index) const
{
    return read([&](const PageModelCore &c) {
        return index >= 0 && index < c.visible.size() ? c.rows[c.visible.at(index)].page : Page();
    });
}

CHpfPageDataModel::Page CHpfPageDataModel::getDataFromAll(int index) const
{
    return read([&](const PageModelCore &c) {
        return index >= 0 && index < c.all.size() ? c.rows[c.all.at(index)].page : Page();
    });
}

CHpfPageDataModel::Page CHpfPageDataModel::getDataByKey(quint64 key) const
{
    return shownRead([&](const PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        return slot == PageRows::noSlot ? Page() : c.rows[slot].page;
    });
}

bool CHpfPageDataModel::containData(quint64 key) const
{
    return shownRead([&](const PageModelCore &c) { return c.rows.findHash(key) != PageRows::noSlot; });
}

std::string CHpfPageDataModel::getDataKeyByIndex(int index) const
{
    return read([&](const PageModelCore &c) {
        return index >= 0 && index < c.visible.size() ? c.rows.key(c.visible.at(index)) : std::string();
    });
}

int CHpfPageDataModel::getDataIndex(const Page &page) const
{
    return read([&](const PageModelCore &c) { return c.indexIn(c.visible, page); });
}

int CHpfPageDataModel::getAllDataIndex(const Page &page) const
{
    return read([&](const PageModelCore &c) { return c.indexIn(c.all, page); });
}

int CHpfPageDataModel::getDataIndexByKey(quint64 key) const
{
    return read([&](const PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        return slot == PageRows::noSlot ? -1 : c.visible.indexOf(slot);
    });
}

int CHpfPageDataModel::getDataInsertIndex(const Page &page)
{
    return settledChange([&](PageModelCore &c) { return c.insertIndexIn(c.visible, page); });
}

int CHpfPageDataModel::getAllDataInsertIndex(const Page &page)
{
    return settledChange([&](PageModelCore &c) { return c.insertIndexIn(c.all, page); });
}

void CHpfPageDataModel::setPageCount(int rows)
{
    change([&](PageModelCore &c) { c.pageCount = rows; });
}

void CHpfPageDataModel::setStartIndex(int index)
{
    change([&](PageModelCore &c) { c.startIndex = index; });
}

int CHpfPageDataModel::pageCount() const
{
    return shownRead([](const PageModelCore &c) { return c.pageCount; });
}

int CHpfPageDataModel::startIndex() const
{
    return shownRead([](const PageModelCore &c) { return c.startIndex; });
}

bool CHpfPageDataModel::isIndexAtShowRegion(int index) const
{
    return shownRead([&](const PageModelCore &c) { return c.isIndexAtShowRegion(index); });
}

void CHpfPageDataModel::setAppendSeq(bool append)
{
    change([&](PageModelCore &c) { c.appendSeq = append; });
}

bool CHpfPageDataModel::defaultSeqAscending() const
{
    return shownRead([](const PageModelCore &c) { return c.appendSeq; });
}

void CHpfPageDataModel::sortByColumnID(int column, int order)
{
    ask([&](PageModelCore &c) { c.sortByColumnID(column, order); });
}

void CHpfPageDataModel::reverseSortByColumn(int column)
{
    ask([&](PageModelCore &c) {
        const int order = c.wantedOrder();
        if (column != c.wantedColumn())
            c.sortByColumnID(column, 1);
        else if (order == 0 || order == 1)
            c.sortByColumnID(column, 1 - order);
    });
}

void CHpfPageDataModel::clearSort()
{
    ask([](PageModelCore &c) { c.clearSort(); });
}

int CHpfPageDataModel::sortColumn() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedColumn(); });
}

int CHpfPageDataModel::sortOrder() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedOrder(); });
}

void CHpfPageDataModel::setCodeSortColumn(int column)
{
    settledChange([&](PageModelCore &c) {
        c.codeColumn = column;
        c.columnsChanged();
    });
}

void CHpfPageDataModel::setWorkPerCall(int milliseconds)
{
    workPerCall = milliseconds;
}

bool CHpfPageDataModel::isPending() const
{
    return shownRead([](const PageModelCore &c) { return c.hasWork(); });
}

bool CHpfPageDataModel::step(int milliseconds)
{
    return change([&](PageModelCore &c) { return c.stepWork(PageDeadline(milliseconds)); });
}

int CHpfPageDataModel::progress() const
{
    return shownRead([](const PageModelCore &c) { return c.workProgress(); });
}

bool CHpfPageDataModel::cancel()
{
    return change([](PageModelCore &c) {
        const bool pending = c.hasWork();
        c.cancelWork();
        return pending;
    });
}

void CHpfPageDataModel::filterColumn(const ColumnFilters &filters)
{
    ask([&](PageModelCore &c) { c.filterColumn(filters); });
}

CHpfPageDataModel::ColumnFilters CHpfPageDataModel::columnFilters() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedFilter().columnFilters(); });
}

void CHpfPageDataModel::clearFilter(bool rebuild)
{
    ask([&](PageModelCore &c) { c.clearFilter(rebuild); });
}

void CHpfPageDataModel::setFilter(const QString &text)
{
    change([&](PageModelCore &c) { c.setCodeSearch(text); });
}

QString CHpfPageDataModel::codeSearch() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedFilter().codeText(); });
}

void CHpfPageDataModel::setExFilterSource(int source)
{
    change([&](PageModelCore &) { filterSource = source; });
}

void CHpfPageDataModel::setExFilterStatus(int status)
{
    change([&](PageModelCore &c) { c.setStatus(status); });
}

int CHpfPageDataModel::exFilterSource() const
{
    return shownRead([&](const PageModelCore &) { return filterSource; });
}

int CHpfPageDataModel::exFilterStatus() const
{
    return shownRead([](const PageModelCore &c) { return c.wantedFilter().statusMode(); });
}

QStringList CHpfPageDataModel::getMenuItems(int column) const
{
    PageMenuGatherer gatherer(*this, column);
    while (!gatherer.step(1000)) {
    }
    return gatherer.items();
}

void CHpfPageDataModel::setLogDetail(bool on)
{
    logDetail = on;
}

bool CHpfPageDataModel::checkConsistency() const
{
    return read([](const PageModelCore &c) { return c.checkConsistency(); });
}

void CHpfPageDataModel::setTraderType(kdservice::EVxTraderType traderType)
{
    settledChange([&](PageModelCore &c) {
        c.columns.setTraderType(traderType);
        c.columnsChanged();
    });
}

void CHpfPageDataModel::setColumnFieldDesMap(const QMap<int, kdservice::FieldDes *> &map)
{
    settledChange([&](PageModelCore &c) {
        c.columns.setFieldDesMap(map);
        c.columnsChanged();
    });
}

void CHpfPageDataModel::setColumnIDPropertyMap(const QMap<int, CHpfDataColumnProperty> &map)
{
    settledChange([&](PageModelCore &c) { c.columns.setPropertyMap(map); });
}

void CHpfPageDataModel::setFieldColumnIDMap(const QMap<int, int> &map)
{
    settledChange([&](PageModelCore &c) {
        c.columns.setFieldColumnMap(map);
        c.columnsChanged();
    });
}

QMap<int, kdservice::FieldDes *> CHpfPageDataModel::getColumnFieldDesMap() const
{
    return shownRead([](const PageModelCore &c) { return c.columns.fieldDesMap(); });
}

bool CHpfPageDataModel::getFieldDesID(int column, kdservice::FieldDes **field) const
{
    const QMap<int, kdservice::FieldDes *> map = getColumnFieldDesMap();
    const auto found = map.constFind(column);
    if (found == map.constEnd() || !*found || !field)
        return false;
    *field = *found;
    return true;
}

int CHpfPageDataModel::getFiledIdByColumn(int column) const
{
    return shownRead([&](const PageModelCore &c) { return c.columns.fieldIdOf(column); });
}

QVariant::Type CHpfPageDataModel::columnType(int column) const
{
    return shownRead([&](const PageModelCore &c) { return c.columns.type(column); });
}

bool CHpfPageDataModel::getValue(int column, const boost::shared_ptr<kdservice::IData> &record, QVariant &value) const
{
    return record && shownRead([&](const PageModelCore &c) { return c.columns.value(*record, column, value); });
}

bool CHpfPageDataModel::getIDataStringByColID(int column, const boost::shared_ptr<kdservice::IData> &record,
                                              QString &text, OriginData &origin) const
{
    return record && shownRead([&](const PageModelCore &c) { return c.columns.origin(*record, column, text, origin); });
}

void CHpfPageDataModel::setColumnStatEnable(int column, bool enable)
{
    settledChange([&](PageModelCore &c) { c.setColumnStatEnable(column, enable); });
}

int CHpfPageDataModel::getStatColumnInt(int column) const
{
    return read([&](const PageModelCore &c) { return c.statistics.sumInt(column); });
}

qint64 CHpfPageDataModel::getStatColumnLongLong(int column) const
{
    return read([&](const PageModelCore &c) { return c.statistics.sumLong(column); });
}

double CHpfPageDataModel::getStatColumnDouble(int column) const
{
    return read([&](const PageModelCore &c) { return c.statistics.sumDouble(column); });
}

} // namespace KV
