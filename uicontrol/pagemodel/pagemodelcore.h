#pragma once

#include <deque>
#include <fmt/format.h>
#include <memory>
#include <string>
#include <vector>

#include "pagemodel/cupdatepagedataresult.h"
#include "pagemodel/pagefilter.h"
#include "pagemodel/pagelist.h"
#include "pagemodel/pagestatistics.h"
#include "pagemodel/pagework.h"

namespace KV {

/// What a paged model does under its lock: records, both lists, page, filters and sums. Not thread-safe.
class PageModelCore
{
public:
    using Page = boost::shared_ptr<CHpfPageData>;
    using Result = boost::shared_ptr<CUpdatePageDataResult>;

    /// owner: named in log messages.
    PageModelCore(const void *owner, int dataTypeId, kdservice::EVxTraderType traderType, bool append);
    ~PageModelCore();

    PageModelCore(const PageModelCore &) = delete;
    PageModelCore &operator=(const PageModelCore &) = delete;

    /// @name Changes; `countChanged` is raised as CHpfPageDataModel::totalCountChange() tells
    /// @{
    Result addData(const Page &page);
    void removeData(quint32 slot);
    void clear();
    /// Columns or trader type have changed: the sums are taken anew, and the present sort is asked for anew. No work
    /// may be under way.
    void columnsChanged();
    void setColumnStatEnable(int column, bool enable);
    /// @}

    /// @name Sorts and filters; they are only asked for, and carried out by stepWork()
    /// @{
    void filterColumn(const PageColumnFilters &filters);
    void clearFilter(bool rebuild);
    void sortByColumnID(int column, int order);
    void clearSort();
    /// Asks for the present sort anew where it is one by the code, or is to be one. No work may be under way.
    void setCodeColumn(int column);
    void setStatus(int mode);
    void setCodeSearch(const QString &text);
    bool hasWork() const { return !works.empty(); }
    /// True when nothing is left to do.
    bool stepWork(const PageDeadline &deadline);
    int workProgress() const;
    /// Takes back what is not carried out.
    void cancelWork();
    /// What was asked for last, carried out or not.
    int wantedColumn() const { return askedColumn; }
    int wantedOrder() const { return askedOrder; }
    const PageFilter &wantedFilter() const { return askedFilter; }
    /// @}

    /// @name For the work on sorts and filters
    /// @{
    void takeSort(int column, int order);
    void takeFilter(const PageFilter &carriedOut);
    const PageComparator &visibleOrder() const { return visibleComparator; }
    /// @}

    /// @name What became of a record that was tested for the visible list; nothing unless the log is on
    /// @{
    void logNotPassed(quint32 slot);
    void logUnsorted(quint32 slot, bool append);
    void logInsert(quint32 slot, int index, int size);
    /// @}

    /// Whether a visible index is on the page.
    bool isIndexAtShowRegion(qint64 index) const
    {
        return startIndex <= index && index < qint64(startIndex) + pageCount;
    }
    /// The slot of the record's key in the list, as its index; -1 when the model does not hold it there.
    int indexIn(const PageList &list, const Page &page) const;
    /// Where the record would be put; it may be in the list already.
    int insertIndexIn(const PageList &list, const Page &page);
    /// The slots of the page, in order.
    std::vector<quint32> pageSlots() const;
    /// For tests: lists, index and sums agree.
    bool checkConsistency() const;

    /// @name What a change leaves behind, to be taken after each one and dealt with without the lock
    /// @{
    /// Host records are destroyed by who drops this last.
    struct Remains
    {
        PageRow row;                    ///< that was replaced or removed
        std::unique_ptr<PageRows> rows; ///< that were cleared
    };
    Remains takeRemains() { return std::exchange(remains, {}); }
    /// Messages, when the log is on.
    std::vector<std::string> takeMessages() { return std::exchange(messages, {}); }
    static bool detailsWanted();
    static void writeDetails(const std::vector<std::string> &messages);
    /// @}

    PageColumns columns;
    PageRows rows;
    PageSortKeys keys; ///< of the sort column
    PageList visible;
    PageList all;
    PageFilter filter; ///< what new records are tested with
    PageStatistics statistics;
    int pageCount = 100;
    int startIndex = 0;
    int sortColumn = PageComparator::NoColumn;
    int sortOrder = 0;
    int codeColumn = PageComparator::NoColumn; ///< under which orders compare by their code
    bool appendSeq;
    bool logging = false;
    bool countChanged = false;
    quint64 revision = 0; ///< grows when a sort or a filter has changed the lists

private:
    struct Move
    {
        int from = -1;
        int to = -1;
    };

    Result updateData(quint32 slot, const Page &page);
    /// Where the record came on the visible list, -1 when it did not.
    int testAddDataToVisible(quint32 slot);
    void placeInAll(quint32 slot);
    void coverInAll(quint32 slot);
    void replace(quint32 slot, const Page &page);
    void keepRemains(quint32 slot) { remains.row = rows[slot]; }
    /// Whether a record that has changed stands between its neighbours no longer; then relocate…() moves it and tells
    /// the new index, -1 for one that stays.
    bool needRelocate(int index) const { return visible.isMisplaced(index, visibleComparator); }
    bool needAllDataRelocate(int index) const { return all.isMisplaced(index, allComparator); }
    int relocateData(int index) { return needRelocate(index) ? visible.relocate(index, visibleComparator) : -1; }
    int relocateAllData(int index) { return needAllDataRelocate(index) ? all.relocate(index, allComparator) : -1; }
    void addStatColumnData(quint32 slot) { statistics.add(slot, rows, columns); }
    void removeStatColumnData(quint32 slot) { statistics.remove(slot); }
    void updateStatColumnData(quint32 slot);
    void refreshStatColumnData();
    void resetStatMap() { statistics.removeAll(); }
    void capture(quint32 slot) { keys.capture(slot, columns); }
    /// Before a record comes into its slot, changes there, or leaves.
    void noteChange(quint32 slot, bool leaves = false)
    {
        if (hasWork())
            works.front()->note(slot, leaves);
    }
    bool filtersPending() const;
    void filterAsked();
    void ask(std::unique_ptr<PageWork> work);
    void sortAnew();
    void restartFilters();

    Result pageAfterInsert(int index, quint32 slot) const;
    Result pageAfterMove(Move move, quint32 slot) const;
    Result pageAfterRemoval(Move move, quint32 slot) const;
    std::string visibleKey(qint64 index) const;

    /// Notes a message of the model; {0} is the owner's address, then key and sequence of a slot's record.
    template <typename... Values>
    void log(const char *format, const Values &...values)
    {
        messages.push_back(fmt::format(fmt::runtime(format), values...));
    }
    template <typename... Values>
    void logSlot(const char *format, quint32 slot, const Values &...values)
    {
        log(format, owner, rows.keyView(slot), rows[slot].page->getDataSeq(), values...);
    }
    void logSort(int column, int order);
    void logInsertAll(quint32 slot, int index);
    void logCover(quint32 slot, int index);
    /// Where the record was found in the all list and came on the visible one, and whether it stays there.
    void logUpdate(quint32 slot, int allIndex, int visibleIndex, bool passes);

    const void *owner;
    int sequenceCounter = 0;
    int askedColumn = PageComparator::NoColumn;
    int askedOrder = 0;
    PageFilter askedFilter;
    PageFilter shownFilter;                      ///< what the visible list was made with
    bool filterSet = false;                      ///< `filter` was set since, and no record tested with it yet
    std::deque<std::unique_ptr<PageWork>> works; ///< one after the other
    PageComparator visibleComparator;
    PageComparator allComparator;
    Remains remains;
    std::vector<std::string> messages;
};

} // namespace KV
