#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <atomic>
#include <boost/shared_ptr.hpp>
#include <boost/thread/shared_mutex.hpp>
#include <memory>
#include <string>
#include <vector>

#include "kdservice/evxtradertype.h"
#include "model/chpfdatacolumnproperty.h"
#include "pagemodel/chpfpagedata.h"
#include "pagemodel/cupdatepagedataresult.h"
#include "pagemodel/origindata.h"
#include "uicontrolexport.h"
#include "zb/efiltertype.h"

namespace kdservice {
class IData;
struct FieldDes;
} // namespace kdservice

namespace KV {

class PageModelCore;

/// Every record of one kind in order, and the page of them that a table shows. Keeps two ordered lists: all records,
/// and the visible ones that pass the filters; a page is the slice of the visible list from the start index, of at most
/// page count rows. Every add tells which row enters and which row leaves that page.
///
/// Threading: every operation may come from any thread; changes lock exclusively, reads share. Log messages are written
/// after the lock is released.
/// Order: without a sort column that of arrival. With one, by its values as they were when the records were handed in,
/// missing values (the largest of a type, NaN) last in both directions, doubles equal within 1e-05; ties among orders
/// and among deals by the host's sequence of entry, then by key. Order 0 is ascending, any other descending. Cost: a
/// change takes logarithmic time, at a million records some microseconds; sorts and filters read every record.
/// Slices: with setWorkPerCall(), long sorts and filters are only asked for, and step() carries them out a while at a
/// time. Meanwhile records come and go in the lists as they are, whose page getShownPage() tells, and every other read
/// of a list finishes the work first.
class UICONTROL_API CHpfPageDataModel
{
public:
    using Page = boost::shared_ptr<CHpfPageData>;
    using Result = boost::shared_ptr<CUpdatePageDataResult>;
    using ColumnFilters = QMap<int, QPair<ZB::EFilterType, QSet<QString>>>;

    /// dataType: meta id of the records; it decides which filters apply. appendSeq: without a sort, new records go to
    /// the end, otherwise to the front.
    CHpfPageDataModel(int dataType, kdservice::EVxTraderType traderType, bool appendSeq);
    virtual ~CHpfPageDataModel();

    CHpfPageDataModel(const CHpfPageDataModel &) = delete;
    CHpfPageDataModel &operator=(const CHpfPageDataModel &) = delete;

    /// @name Records
    /// @{
    /// A new key is added, a key on the visible list updated, a key that the filters hid replaced. Empty for an empty
    /// pointer or a page record without a record. A removal in front of the page (an update that no longer passes)
    /// moves the whole page by one row, which no result can tell: refill the page when the leaving key was not on it.
    Result addData(const boost::shared_ptr<kdservice::IData> &record);
    Result addData(const Page &page);
    /// By 64-bit key; of several keys with the same hash, one. The form by text is exact.
    void removeDataByKey(quint64 key);
    void removeDataByKey(const std::string &key);
    void clear();

    int size() const;         ///< of the visible list
    int originalSize() const; ///< of all records
    /// Whether the number of records changed since the last call. There is one mark for all who ask.
    bool totalCountChange();

    /// All of the visible list, and of all records, in order: copies of as many pointers.
    QList<Page> getShowDatas() const;
    QList<Page> getAllDatas() const;
    /// The records of the page, in order: at most page count.
    QList<Page> getPageDatas() const;
    /// Empty when out of range or unknown.
    Page getData(int index) const;
    Page getDataFromAll(int index) const;
    Page getDataByKey(quint64 key) const;
    bool containData(quint64 key) const;
    /// The key of the record at a visible index; empty when out of range.
    std::string getDataKeyByIndex(int index) const;

    /// Indexes in the visible and in the all list, -1 for records that are not there; the insert forms tell where a
    /// record would be put under the present sort.
    int getDataIndex(const Page &page) const;
    int getAllDataIndex(const Page &page) const;
    int getDataIndexByKey(quint64 key) const;
    int getDataInsertIndex(const Page &page);
    int getAllDataInsertIndex(const Page &page);
    /// @}

    /// @name Page: 100 rows from index 0 at first; nothing is recomputed until the next add, update or read. What of a
    /// page lies outside of the list holds nothing, as does a page of 0 rows or less.
    /// @{
    /// Rows of a page, not a number of pages.
    void setPageCount(int rows);
    void setStartIndex(int index);
    int pageCount() const;
    int startIndex() const;
    /// Whether an index into the visible list lies on the page, be there a record or not.
    bool isIndexAtShowRegion(int index) const;
    /// @}

    /// @name Order
    /// @{
    /// Where records without a sort go, from now on: to the end (true) or to the front.
    void setAppendSeq(bool append);
    bool defaultSeqAscending() const;
    /// 0 ascending, any other order descending.
    void sortByColumnID(int column, int order);
    /// Another column than the present one sorts descending (order 1); the present one turns 1 into 0 and 0 into 1 and
    /// leaves any other order alone.
    void reverseSortByColumn(int column);
    /// Both lists keep their order; new records follow the order of arrival.
    void clearSort();
    /// What was asked for last, carried out or not; -1 without a sort.
    int sortColumn() const;
    int sortOrder() const;
    /// A column under which orders compare by their code, shorter ones first; -1 for none. Where the present sort is by
    /// that column, or was by the former one, the records are sorted again before it returns.
    void setCodeSortColumn(int column);
    /// @}

    /// @name Work in slices
    /// @{
    /// How long a call that asks for a sort or a filter works on it itself; the rest is left to step(). Below 0, as at
    /// first: until it is done. Some thousand records are done at once unless it is 0.
    void setWorkPerCall(int milliseconds);
    /// Whether a sort or a filter is not carried out yet.
    bool isPending() const;
    /// Works for about as many milliseconds, at a million records up to 20 more; true when nothing is pending.
    bool step(int milliseconds);
    /// How far the work is, in thousandths; 1000 when nothing is pending.
    int progress() const;
    /// Takes back the sorts and filters that are not carried out: the model says and shows what it did before them.
    /// False when nothing was pending.
    bool cancel();
    /// The records of the page in the present lists, and the length of the visible one; finish no work.
    QList<Page> getShownPage() const;
    int shownSize() const;
    /// Another one after a sort or a filter has changed the present lists.
    quint64 shownRevision() const;
    /// @}

    /// @name Filters
    /// @{
    /// Replaces the column filters and rebuilds the visible list, with the search and the status as they are now.
    void filterColumn(const ColumnFilters &filters);
    /// What was asked for last, carried out or not.
    ColumnFilters columnFilters() const;
    /// Drops the column filters. rebuild: the visible list becomes a copy of the all list, whatever search and status
    /// say.
    void clearFilter(bool rebuild);
    QString codeSearch() const;
    /// Search for a code; takes effect with the next record or rebuild, like the two below.
    void setFilter(const QString &text);
    /// Kept for the host; hides no record.
    void setExFilterSource(int source);
    /// Orders only: 0 all, 1 open, 2 filled, 3 ended without a full fill; any other none.
    void setExFilterStatus(int status);
    int exFilterSource() const;
    int exFilterStatus() const;
    /// The distinct texts of a column over all records, in ascending order of its values (numbers as numbers, no value
    /// last). Reads every record; costs about 0.1 us for each where texts follow from values, 0.5 us for prices.
    QStringList getMenuItems(int column) const;
    /// @}

    /// @name Columns. A change finishes what is under way, takes the sums anew and sorts the records again before it
    /// returns; the visible list keeps its records until they change or filterColumn() is called. The maps are those of
    /// a CHpfDataModel: columnFieldDesMap(), columnPropertyMap() and fieldColumnMap().
    /// @{
    void setTraderType(kdservice::EVxTraderType traderType);
    void setColumnFieldDesMap(const QMap<int, kdservice::FieldDes *> &map);
    void setColumnIDPropertyMap(const QMap<int, CHpfDataColumnProperty> &map);
    void setFieldColumnIDMap(const QMap<int, int> &map);
    QMap<int, kdservice::FieldDes *> getColumnFieldDesMap() const;
    /// False, and `field` untouched, for an unknown column.
    bool getFieldDesID(int column, kdservice::FieldDes **field) const;
    /// 0 for an unknown column.
    int getFiledIdByColumn(int column) const;
    QVariant::Type columnType(int column) const;
    /// The raw value of a record's cell; false when it has none.
    bool getValue(int column, const boost::shared_ptr<kdservice::IData> &record, QVariant &value) const;
    /// The text of a record's cell and what belongs to it; false when the record does not have the field.
    bool getIDataStringByColID(int column, const boost::shared_ptr<kdservice::IData> &record, QString &text,
                               OriginData &origin) const;
    /// @}

    /// @name Sums over the visible list; the largest value of the type for columns without. Enabling one reads the
    /// column of every visible record, in one go.
    /// @{
    void setColumnStatEnable(int column, bool enable);
    int getStatColumnInt(int column) const;
    qint64 getStatColumnLongLong(int column) const;
    double getStatColumnDouble(int column) const;
    /// @}

    /// Details go to the logger "KDDbgFile" while its debug id 911 is enabled.
    void setLogDetail(bool on);

    /// For tests: lists, index and sums agree.
    bool checkConsistency() const;

private:
    friend class PageMenuGatherer;

    template <typename Change>
    auto change(Change work) const;
    template <typename Change>
    void settledChange(Change work);
    template <typename Change>
    void changeColumns(Change work);
    template <typename Ask>
    void ask(Ask work);
    template <typename Read>
    auto shownRead(Read work) const;
    template <typename Read>
    auto read(Read work) const;
    void startWork(PageModelCore &c) const;
    void finishWork() const;
    QList<Page> pagesOf(const std::vector<quint32> &slotList) const;

    mutable boost::shared_mutex mutex; ///< guards `core` and `filterSource`
    std::unique_ptr<PageModelCore> core;
    int filterSource = 0;
    std::atomic<int> workPerCall{-1};
    mutable std::atomic<bool> countChanged{false};
    std::atomic<bool> logDetail{false};
};

} // namespace KV
