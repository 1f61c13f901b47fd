#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QPair>
#include <QtCore/QTimer>
#include <QtCore/QVector>
#include <atomic>
#include <boost/shared_ptr.hpp>
#include <memory>
#include <vector>

#include "kdservice/evxtradertype.h"
#include "kdservice/idata.h"
#include "model/chpfdatacolumnproperty.h"
#include "uicontrolexport.h"
#include "zb/cbasehighperformancetable.h"

namespace KV {

class CHpfDataModel;
class CHpfExtraDataModel;
class CHpfPageDataModel;
class CHpfThreadDataModel;
class PageMenuGatherer;

/// The table over a high-volume model: one row per record, columns from the host's catalogue.
///
/// Threading: GUI thread; the model may be loaded on any thread.
/// Paging: with a page model, header clicks sort that one, filter boxes filter it, page requests (event 277) move its
/// page, and the total is its size. The host brings the rows of the page into the data model: after each of these, and
/// with the table's timer, the data model's onTimer() is called, which is the time to do so. Ownership: shares its
/// models; the data model is one of its own until another CHpfDataModel is given to setDataModel(). Rows and model hold
/// each other, so the table clears its model when it is destroyed, and ends a load of it. A model that is replaced
/// keeps its rows for whoever holds it; the one that the table made goes with them when nobody does.
class UICONTROL_API CHpfDataTable : public ZB::CBaseHighPerformanceTable
{
    Q_OBJECT

public:
    using RecordPtr = boost::shared_ptr<kdservice::IData>;
    using RowPtr = boost::shared_ptr<ZB::IBaseHpfTableData>;
    /// Records with the colour key of their whole row; an empty key is the default colour.
    using ColoredRecords = QList<QPair<RecordPtr, QString>>;

    /// tableId: under which the user's settings are kept. metaId: the records' type. paged: the table shows one page
    /// and asks for others by event 277.
    CHpfDataTable(int tableId, int metaId, QWidget *parent, kdservice::EVxTraderType traderType, bool paged);
    ~CHpfDataTable() override;

    /// Shows a model. A CHpfDataModel that a boost::shared_ptr owns is adopted: every operation follows it from then
    /// on. With any other model, which the caller keeps alive, or none, the operations on data do nothing and answer
    /// with nothing.
    void setDataModel(ZB::IBaseHpfTableModel *model) override;
    /// Empty when the model is none of the library's.
    const boost::shared_ptr<CHpfDataModel> &getDataModel() const;
    /// Null in the same case.
    CHpfExtraDataModel *getExtraDataModel() const;
    /// An empty pointer takes the present one away. From then on the table carries out the model's long sorts and
    /// filters in slices, between the events of the window. Headers show the order and the filters that the model has,
    /// the paging bar its page and its size.
    void setPageModel(const boost::shared_ptr<CHpfPageDataModel> &model);

    /// One more column at the end; returns its number, -1 without a model. extra: its values come from the extra-data
    /// model, with `cellText` in cells without a value.
    int addColumn(const CHpfDataColumnProperty &property, bool extra, bool visible, const QString &cellText);
    /// -1 for a field without a column.
    int getColumnIdByFileId(int fieldId) const;
    void setColumnStatEnable(int column, bool enable);

    /// @name Records: added, or updated under their keys. The flag asks for redrawing now instead of with the next
    /// frame, which costs a repaint a call. Empty pointers are skipped.
    /// @{
    void updateData(const RecordPtr &record, bool redraw);
    void updateDatas(const std::vector<RecordPtr> &records, bool redraw);
    void updateDatas(const QVector<RecordPtr> &records, bool redraw);
    void updateDatas(const QList<RecordPtr> &records, bool redraw);
    void updateDataFixColor(const RecordPtr &record, const QString &colorKey, bool redraw);
    void updateDataFixColor(const ColoredRecords &records, bool redraw);
    /// Rows of a table sorted by time.
    void updateDataFixColorForSortTime(const RecordPtr &record, const QString &colorKey, bool redraw);
    void updateDataFixColorForSortTime(const ColoredRecords &records, bool redraw);
    /// From the page model too, where there is one. Unknown keys are ignored.
    void removeDataByKey(const QString &key, bool refresh);
    void removeDatasByKey(const QVector<QString> &keys, bool refresh);
    /// All rows; a page model keeps its records.
    void clear() override;
    /// @}

    /// @name Rows
    /// @{
    /// Filtered or not, in the present order; a copy of as many pointers.
    QList<RowPtr> getAllDatas() const;
    /// The row shown at an index, or an empty pointer.
    RowPtr getData(int row) const;
    RowPtr getDataByKey(const QString &key) const;
    /// Rows that pass the filters.
    int count() const;
    /// @}

    void clearFilter() override;
    /// The page model's, where there is one; the base's otherwise. A page model takes no FilterExcept: that is ignored.
    void onFilterTrigger(int column, int type, QSet<QString> &values) override;
    QMap<int, ZB::FilterConditions> columnFilters() const override;
    /// A page model is sorted by the first of them; none ends its sort.
    void setSortColumns(const QVector<QPair<int, int>> &columns) override;
    /// Whether new rows go to the end of an unsorted table or to its front.
    void setAppendSeq(bool append);
    /// A change removes all rows, filters and delegates and makes the columns anew.
    void setTradeType(kdservice::EVxTraderType traderType);
    kdservice::EVxTraderType tradeType() const;

    /// As the base; a box says when the file is there.
    bool exportData(QString path) override;
    /// The texts of the page model's records where it has the column, otherwise the base's; and those of the column's
    /// filter that no row shows at present, so that they can be taken off.
    QStringList getMenuItems(int column) override;
    int gatherMenuItems(int column, bool anew, int milliseconds) override;
    /// A load of a CHpfThreadDataModel comes first, then what is sorted and filtered; cancelWork() stops the one of
    /// which workProgress() tells. A load that is stopped leaves the rows that are in; see
    /// CHpfThreadDataModel::cancelLoad().
    int workProgress() const override;
    void cancelWork() override;
    /// Whether its user hears of loads and can stop them; so at first. Not for a stream that comes in many small
    /// batches and is to have no gaps.
    void setLoadsShown(bool shown);
    QString workText() const override;
    quint64 workNumber() const override;
    /// With a page model the filters are that one's, one condition of each column, by exact or by contained text. Saved
    /// ones are given to it as if the user had chosen them again: at once, or when setPageModel() brings one that
    /// nobody has filtered. Filters that the program gave the page model are saved with the others. Saved columns that
    /// another trader type has and this one has not are kept and come back with getTableSetting().
    ZB::CBaseTableSettingParam getTableSetting() override;
    void setTableSetting(const ZB::CBaseTableSettingParam &setting) override;

    void onTimer() override;
    void updateTable() override;
    /// Fits the column widths to the rows once per fill, as soon as the table is visible with a row that passes the
    /// filters; adjustVisibleWidth() is content with any row.
    void tryFirstAdjustVisibleWidth();
    void adjustVisibleWidth();

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void themeChanged() override;

protected:
    bool restoreFilter(int column, const ZB::FilterConditions &conditions) override;
    void showEvent(QShowEvent *event) override;

private:
    CHpfThreadDataModel *loadingModel() const;
    void leaveModel(const boost::shared_ptr<CHpfDataModel> &former);
    void applyColumnProperties(int column);
    template <typename Records>
    void takeRecords(const Records &records, bool redraw);
    template <typename RowClass>
    void takeColored(const ColoredRecords &records, bool redraw);
    void takeRow(const RowPtr &row, bool redraw);
    void recountExtraSums();
    void recount();
    bool canFit() const;
    void fitFirst();
    void sortPages(int column);
    void showPage(int firstRow, int rowCount);
    void showPages();
    void workOn();
    void markPageSort();
    bool hasPageColumn(int column) const;
    void giveWaitingFilters();
    void takeTotal();

    /// A saved column that the present model does not have.
    struct AbsentColumn
    {
        int leftFieldId = -1; ///< of the column that stood left of it; -1 for none
        ZB::CBaseTableColumnSetting setting;
    };

    boost::shared_ptr<CHpfPageDataModel> pageModel;
    QTimer pageWork; ///< while the page model sorts or filters
    std::unique_ptr<PageMenuGatherer> menuGatherer;
    boost::shared_ptr<CHpfDataModel> dataModel;
    CHpfDataModel *ownModel = nullptr; ///< the model that the constructor made, while it is shown
    bool firstFitDone = false;
    bool loadsShown = true;
    bool sortingPages = false; ///< the sort event is on its way through the base
    QList<AbsentColumn> absentColumns;
    QMap<int, ZB::FilterConditions> waitingFilters; ///< saved ones, until there is a page model

    /// What the sums of the extra columns were last counted for.
    quint64 countedChanges = 0;
    int countedRows = -1;
    int countedAllRows = -1;
    int countedExtraRows = -1;
    QMap<int, ZB::FilterConditions> countedFilters;
    QElapsedTimer sinceRecount;
    std::shared_ptr<std::atomic<bool>> recounting; ///< a worker is at it
};

} // namespace KV
