#include "pagemodel/chpfpagedatamodel.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>
#include <log4cxx/logger.h>

#include "kdservice/keyhash.h"
#include "pagemodel/pagemodelcore.h"
#include "utils/clogcenter.h"

namespace KV {

namespace {

constexpr int debugId = 911;

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
auto CHpfPageDataModel::change(Change work)
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

template <typename Read>
auto CHpfPageDataModel::read(Read work) const
{
    const boost::shared_lock<boost::shared_mutex> lock(mutex);
    return work(const_cast<const PageModelCore &>(*core));
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
    return read([](const PageModelCore &c) { return c.all.size(); });
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
    return read([&](const PageModelCore &c) {
        const quint32 slot = c.rows.findHash(key);
        return slot == PageRows::noSlot ? Page() : c.rows[slot].page;
    });
}

bool CHpfPageDataModel::containData(quint64 key) const
{
    return read([&](const PageModelCore &c) { return c.rows.findHash(key) != PageRows::noSlot; });
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
    return change([&](PageModelCore &c) { return c.insertIndexIn(c.visible, page); });
}

int CHpfPageDataModel::getAllDataInsertIndex(const Page &page)
{
    return change([&](PageModelCore &c) { return c.insertIndexIn(c.all, page); });
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
    return read([](const PageModelCore &c) { return c.pageCount; });
}

int CHpfPageDataModel::startIndex() const
{
    return read([](const PageModelCore &c) { return c.startIndex; });
}

bool CHpfPageDataModel::isIndexAtShowRegion(int index) const
{
    return read([&](const PageModelCore &c) { return c.isIndexAtShowRegion(index); });
}

void CHpfPageDataModel::setAppendSeq(bool append)
{
    change([&](PageModelCore &c) { c.appendSeq = append; });
}

bool CHpfPageDataModel::defaultSeqAscending() const
{
    return read([](const PageModelCore &c) { return c.appendSeq; });
}

void CHpfPageDataModel::sortByColumnID(int column, int order)
{
    change([&](PageModelCore &c) { c.sortByColumnID(column, order); });
}

void CHpfPageDataModel::reverseSortByColumn(int column)
{
    change([&](PageModelCore &c) {
        if (column != c.sortColumn)
            c.sortByColumnID(column, 1);
        else if (c.sortOrder == 0 || c.sortOrder == 1)
            c.sortByColumnID(column, 1 - c.sortOrder);
    });
}

void CHpfPageDataModel::clearSort()
{
    change([](PageModelCore &c) { c.clearSort(); });
}

int CHpfPageDataModel::sortColumn() const
{
    return read([](const PageModelCore &c) { return c.sortColumn; });
}

int CHpfPageDataModel::sortOrder() const
{
    return read([](const PageModelCore &c) { return c.sortOrder; });
}

void CHpfPageDataModel::setCodeSortColumn(int column)
{
    change([&](PageModelCore &c) {
        c.codeColumn = column;
        c.columnsChanged();
    });
}

void CHpfPageDataModel::filterColumn(const ColumnFilters &filters)
{
    change([&](PageModelCore &c) { c.filterColumn(filters); });
}

CHpfPageDataModel::ColumnFilters CHpfPageDataModel::columnFilters() const
{
    return read([](const PageModelCore &c) { return c.filter.columnFilters(); });
}

void CHpfPageDataModel::clearFilter(bool rebuild)
{
    change([&](PageModelCore &c) { c.clearFilter(rebuild); });
}

void CHpfPageDataModel::setFilter(const QString &codeSearch)
{
    change([&](PageModelCore &c) { c.filter.setCodeSearch(codeSearch); });
}

void CHpfPageDataModel::setExFilterSource(int source)
{
    change([&](PageModelCore &) { filterSource = source; });
}

void CHpfPageDataModel::setExFilterStatus(int status)
{
    change([&](PageModelCore &c) { c.filter.setStatus(status); });
}

int CHpfPageDataModel::exFilterSource() const
{
    return read([&](const PageModelCore &) { return filterSource; });
}

int CHpfPageDataModel::exFilterStatus() const
{
    return read([](const PageModelCore &c) { return c.filter.statusMode(); });
}

QStringList CHpfPageDataModel::getMenuItems(int column) const
{
    return read([&](const PageModelCore &c) { return c.menuItems(column); });
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
    change([&](PageModelCore &c) {
        c.columns.setTraderType(traderType);
        c.columnsChanged();
    });
}

void CHpfPageDataModel::setColumnFieldDesMap(const QMap<int, kdservice::FieldDes *> &map)
{
    change([&](PageModelCore &c) {
        c.columns.setFieldDesMap(map);
        c.columnsChanged();
    });
}

void CHpfPageDataModel::setColumnIDPropertyMap(const QMap<int, CHpfDataColumnProperty> &map)
{
    change([&](PageModelCore &c) { c.columns.setPropertyMap(map); });
}

void CHpfPageDataModel::setFieldColumnIDMap(const QMap<int, int> &map)
{
    change([&](PageModelCore &c) {
        c.columns.setFieldColumnMap(map);
        c.columnsChanged();
    });
}

QMap<int, kdservice::FieldDes *> CHpfPageDataModel::getColumnFieldDesMap() const
{
    return read([](const PageModelCore &c) { return c.columns.fieldDesMap(); });
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
    return read([&](const PageModelCore &c) { return c.columns.fieldIdOf(column); });
}

QVariant::Type CHpfPageDataModel::columnType(int column) const
{
    return read([&](const PageModelCore &c) { return c.columns.type(column); });
}

bool CHpfPageDataModel::getValue(int column, const boost::shared_ptr<kdservice::IData> &record, QVariant &value) const
{
    return record && read([&](const PageModelCore &c) { return c.columns.value(*record, column, value); });
}

bool CHpfPageDataModel::getIDataStringByColID(int column, const boost::shared_ptr<kdservice::IData> &record,
                                              QString &text, OriginData &origin) const
{
    return record && read([&](const PageModelCore &c) { return c.columns.origin(*record, column, text, origin); });
}

void CHpfPageDataModel::setColumnStatEnable(int column, bool enable)
{
    change([&](PageModelCore &c) { c.setColumnStatEnable(column, enable); });
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
