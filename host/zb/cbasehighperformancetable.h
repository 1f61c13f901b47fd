#pragma once

#include <QtCore/QStringList>
#include <boost/shared_ptr.hpp>
#include <memory>

#include "zb/cbasewidget.h"
#include "zb/ctablerowmark.h"
#include "zb/etableflag.h"
#include "zb/ibasehpftablemodel.h"
#include "zb/ibasetable.h"

namespace ZB {

class CBaseTableColumnWidgetDelegate;

/// The host's table over a high-volume model: header, rows, statistics row, selection, filters, settings, export. It
/// paints what is on the screen; no cost depends on the number of rows.
///
/// Threading: GUI thread. The model may change on any thread; the table shows the change with its next frame.
/// Ownership: shares its model. Columns are model columns; what they look like is set per column below and stays with
/// the column until the next setDataModel.
///
/// Events it delivers: 33 (header sort click; first the order after the click, 0 for ascending, second the column), 277
/// (page request; first 0, second the page's first index, text the rows per page), 69 (a row was double-clicked, or
/// Enter pressed on it; first the column, second the shown row, text its key), 70 (the current row changed; first the
/// column, second the shown row or -1, text its key).
class HOST_API CBaseHighPerformanceTable : public CBaseWidget, public IBaseTable
{
    Q_OBJECT

public:
    /// tableId: under which the user's settings are kept. menuFlags: bits of ETableMenu.
    CBaseHighPerformanceTable(int tableId, QWidget *parent, int menuFlags);
    ~CBaseHighPerformanceTable() override;

    int tableId() const override;

    /// Bits of ETableFlag, none at first; there is no way to take one back.
    void addTableFlag(int flag);
    int tableFlags() const;

    /// @name Model and columns; alignments are values of Qt::Alignment, columns that there are not are ignored
    /// @{
    /// Shows a model; null takes the present one away. The caller keeps the model alive until another one is installed
    /// or the table is gone. All columns start anew, without marks and column sets; the user's settings come back at
    /// the next turn of the event loop, so columns are to be set up before that.
    virtual void setDataModel(IBaseHpfTableModel *model);
    /// The same for a model that the table shares.
    void installDataModel(const boost::shared_ptr<IBaseHpfTableModel> &model);
    boost::shared_ptr<IBaseHpfTableModel> baseDataModel() const;
    /// The model has one more column at its end: its number.
    void addTableColumn(int column);
    void setColumnAlignment(int column, int alignment);
    void setStatColumnAlignment(int column, int alignment);
    void setColumnBoldFont(int column, bool bold);
    void setColumnFilterable(int column, bool filterable);
    /// Whether the column is offered in the list of columns; one that is not offered is shown unless hidden.
    void setColumnInList(int column, bool offered);
    void setColumnVisible(int column, bool visible);
    bool columnVisible(int column) const;
    /// Finds the column again in saved settings; -1 for columns that are no field.
    void setColumnFieldId(int column, int fieldId);
    /// Pixels at the present scale, above 0; the column follows later changes of the scale. 0 for an unknown column.
    void setColumnWidth(int column, int pixels);
    int columnWidth(int column) const;
    /// The table shares the delegate; an empty pointer takes it away.
    void setColumnDelegate(int column, const boost::shared_ptr<CBaseTableColumnWidgetDelegate> &delegate);
    bool columnFilterable(int column) const override;
    /// @}

    /// @name Look. Texts are resource keys, but for setEmptyText(); sizes are pixels at the present scale, to be set
    /// again when that changes
    /// @{
    void setBackgroundColor(const QString &background, const QString &numberBackground);
    void setSplitLine(const QString &color, int horizontalWidth, int verticalWidth, const QString &sortColor,
                      const QString &inactiveSortColor);
    void setHeaderHeight(int height);
    void setItemHeight(int height);
    void setHeaderTextInfo(const QString &color, const QString &font);
    void setNumberTextInfo(const QString &color, const QString &font, int alignment);
    void setSelectedBackground(const QString &focused, const QString &unfocused);
    void setSelectedTextColor(const QString &color);
    void setStatInfo(const QString &borderColor, int borderWidth, int rowHeight, const QString &background,
                     const QString &titleBackground, const QString &textColor, const QString &font, int textMargin);
    void setHeaderButtonColors(const QString &normal, const QString &hover, const QString &pressed,
                               const QString &disabled);
    /// What stands in the middle of a table without rows; nothing unless set.
    void setEmptyText(const QString &text);
    /// @}

    /// @name Contents
    /// @{
    /// Redraws what has changed since the last time, now instead of with the next frame, and clears the model's mark.
    virtual void updateTable();
    /// Called on the table's timer (every 100 ms while visible). Calls the model's unless overridden.
    virtual void onTimer();
    /// Clears the model, whoever else shows it.
    virtual void clear();
    virtual void clearFilter();
    void onFilterTrigger(int column, int type, QSet<QString> &values) override;
    /// The distinct texts of a column that the filter box offers, in reading order. Gathers them at once, from all
    /// rows, unless the box of that column is open and has.
    virtual QStringList getMenuItems(int column);
    /// Works for about as many milliseconds on what getMenuItems() is going to answer; called again and again while the
    /// filter box of a column is open. Returns how far it is in thousandths: 1000, as ever unless overridden, when
    /// there is nothing to wait for. anew: the box has just been opened.
    virtual int gatherMenuItems(int column, bool anew, int milliseconds);
    /// The filters that headers and filter boxes tell of, by column: the model's, unless somebody else filters.
    virtual QMap<int, FilterConditions> columnFilters() const;
    /// Sort columns in falling weight with their order (0 ascending).
    virtual void setSortColumns(const QVector<QPair<int, int>> &columns);
    /// @}

    /// @name Selection; rows are shown rows. A key that is unknown or filtered out changes nothing.
    /// @{
    QList<boost::shared_ptr<IBaseHpfTableData>> selectedDatas() const;
    boost::shared_ptr<IBaseHpfTableData> currentData() const;
    void selectKey(const std::string &key);
    void scrollToKey(const std::string &key);
    /// Copies what is selected (rows, or cells where cells are selected) as tab-separated text. Many rows are gathered
    /// in the background, with progress and a way to stop.
    void copySelection(bool withHeader);
    /// Opens the search under the table; the user takes it from there.
    void openFind();
    /// The next cell (or the one before) whose text contains this, ignoring case, becomes the current one as soon as it
    /// is found: the search goes on in slices, around the end of the table.
    void find(const QString &text, bool forward);
    /// @}

    /// @name What a user arranges; each of it is part of the table's settings
    /// @{
    /// Columns at the left that do not scroll, counted on the screen.
    void setFrozenColumns(int count);
    int frozenColumns() const;
    /// Rules that tint rows which stand out, such as large orders; the first that applies counts.
    void setRowMarks(const QVector<CTableRowMark> &marks);
    QVector<CTableRowMark> rowMarks() const;
    /// Arrangements of columns under a name. Saving replaces one of the same name; applying answers false for a name
    /// that there is not.
    QStringList columnSets() const;
    void saveColumnSet(const QString &name);
    bool applyColumnSet(const QString &name);
    void removeColumnSet(const QString &name);
    /// @}

    /// How far work on the whole of the rows is, in thousandths; 1000 when there is none. Long work is shown with a way
    /// to stop it, which takes it back.
    virtual int workProgress() const;
    virtual void cancelWork();
    /// What the present work is, for the sign that shows it.
    virtual QString workText() const;
    /// Of the present work. Where it is another one, another work has taken the place of the former, however far that
    /// was: the time until it is shown begins anew. 0 for the sorts and the filters of the table itself.
    virtual quint64 workNumber() const;

    /// Holds the rows as they are shown now, while the model goes on; a sign says so and counts what has come. A sort,
    /// a filter and another page end it.
    void setPaused(bool paused);
    bool isPaused() const;

    /// @name Paging; for tables with the flag TablePaged
    /// @{
    /// A value of EPagingQueryType. The bar below the rows shows for PagingByIndex only.
    void setPagingQueryType(int type);
    int pagingQueryType() const;
    /// Rows on all pages together.
    void setTotalCount(int count);
    int totalCount() const;
    /// Who carries out a page request tells what is shown now, out of how many rows, instead of setTotalCount(): a
    /// request that did not come from this table then stands, as one of its user does.
    void setShownPage(int firstRow, int rowCount, int totalCount);
    /// Without a sort and with rows that are appended: the last page is a full one and goes along with new rows while
    /// the view is at its end; each step is a page request. Off at first.
    void setFollowsLastPage(bool follows);
    /// @}

    /// Settings are saved a moment after the user has changed something, filters included, and come back once the
    /// program has set its columns up. Filters are those of columnFilters() on filterable columns; one whose column is
    /// gone is dropped, which the log tells.
    CBaseTableSettingParam getTableSetting() override;
    void setTableSetting(const CBaseTableSettingParam &setting) override;
    bool exportData(QString path) override;

    /// Makes the columns as wide as their header and the rows on the screen need, within bounds. Columns whose width
    /// the user has chosen keep it.
    void fitVisibleColumns();

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void themeChanged() override;
    void scaleChanged() override;

protected:
    /// Carries out a filter of settings; none takes the column's filter off. Goes through onFilterTrigger(), and
    /// further conditions of a column narrow in the model. Tables that cannot have such a filter answer false.
    virtual bool restoreFilter(int column, const FilterConditions &conditions);
    /// For derived tables that keep part of the settings: it has changed; and, in the destructor, the last moment at
    /// which getTableSetting() can still tell it.
    void settingsChanged();
    void saveSettingsNow();

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace ZB
