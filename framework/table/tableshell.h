#pragma once

#include <QtCore/QPointer>
#include <memory>
#include <vector>

#include "grid/gridview.h"
#include "popups/popupframe.h"
#include "table/settingstore.h"
#include "table/tablearrangement.h"
#include "table/tablecommand.h"
#include "table/tablefind.h"
#include "table/tablelook.h"
#include "table/tableoverlay.h"
#include "table/tablerows.h"
#include "table/tabletransfer.h"

class QKeyEvent;
class QMenu;

namespace ZB {

class ColumnPopup;
class FindBar;

/// What every table has around its rows, whichever family it belongs to: the grid, columns and their arrangement, look,
/// menus, search, copying, export, settings. A table keeps one, derived for its family, behind its private pointer and
/// answers what only the family knows. GUI thread.
class TableShell
{
public:
    enum class WidthOrigin
    {
        Default,
        Fitted,
        Program,
        Arranged, ///< by settings that repeat what the program has given
        User
    };

    /// What the table knows of a column beside what the grid shows.
    struct Column
    {
        TableColumnInfo info;
        WidthOrigin width = WidthOrigin::Default;
        bool widthGiven = false; ///< by the program: info.defaultWidth is what it has set
    };

    TableShell(QWidget *table, int tableId, int menuFlags, std::unique_ptr<TableRows> rows);
    virtual ~TableShell();

    TableShell(const TableShell &) = delete;
    TableShell &operator=(const TableShell &) = delete;

    /// @name What the family answers
    /// @{
    /// Whether there are columns to arrange and rows to take out.
    virtual bool isShowing() const = 0;
    virtual QVector<QPair<int, int>> currentSorts() const = 0;
    /// By the user. adding: as a further sort column.
    virtual void sortBy(int column, int order, bool adding) = 0;
    /// The same by a menu that names the order.
    virtual void sortFromMenu(int column, int order);
    /// Sort columns in falling weight, each with its order.
    virtual void setSorts(const QVector<QPair<int, int>> &sorts) = 0;
    virtual void clearSort() = 0;
    virtual void openFilter(int column, const QRect &header) = 0;
    virtual void takeFilter(int column, int type, QSet<QString> values) = 0;
    virtual bool hasFilters() const = 0;
    /// By column.
    virtual QMap<int, FilterConditions> currentFilters() const = 0;
    /// Filters a filterable column as settings say; no conditions take its filter off. False, with nothing changed, for
    /// conditions that the table cannot carry out: here, several of one column.
    virtual bool restoreFilter(int column, const FilterConditions &conditions);
    virtual void clearFilters() = 0;
    virtual bool canPause() const = 0;
    virtual bool isPaused() const = 0;
    virtual void setPaused(bool paused) = 0;
    /// Whether the statistics row has something to show.
    virtual void updateStatistics() = 0;
    virtual bool exportTo(const QString &path) = 0;
    virtual CBaseTableSettingParam tableSetting() = 0;
    virtual void applySetting(const CBaseTableSettingParam &setting) = 0;
    /// @}

    /// @name Columns
    /// @{
    bool hasColumn(int column) const;
    template <typename Change>
    void changeColumn(int column, Change change);
    std::vector<TableColumnInfo> columnInfos() const;
    /// A number column that is aligned as one: states and times of number type stand at the left or in the middle.
    void updateNumeric(int column);
    void setColumnWidth(int column, int pixels);
    void setColumnVisible(int column, bool visible);
    /// By the user. A column that nobody has given a width yet gets one that fits as it comes into sight.
    void showColumn(int column, bool visible);
    void setFrozenColumns(int count);
    /// Columns whose width the user has chosen stay; those that settings leave as the program made them get no
    /// narrower.
    void fitVisibleColumns();
    void fitAll();
    /// Columns whose numbers no longer fit, but for those whose width the user has chosen.
    void widenForNumbers(const QSet<int> &cut);
    void orderOffered(const std::vector<int> &offered);
    void resetColumns();
    /// What stands in the middle of a table without rows; while filters are on, followed by how they are taken off.
    void setEmptyText(const QString &text);
    /// The header's marks of sorts and filters.
    void showMarks(const QVector<QPair<int, int>> &sorts, const QList<int> &filteredColumns);
    /// A filter on a column that is hidden has no header to stand in: it is told over the rows, and a click takes it
    /// off.
    void showHiddenFilters();
    /// After a mark has come into a header whose text was whole before or was not.
    void widenForHeader(int column, bool wasCut);
    /// @}

    /// @name Settings
    /// @{
    QList<CBaseTableColumnSetting> columnSettings() const;
    TableArrangement applyArrangement(const QList<CBaseTableColumnSetting> &saved);
    /// What getTableSetting() of every family holds, and the reverse, but for the sorts. What becomes of a filter that
    /// cannot be taken over is told in the log.
    CBaseTableSettingParam shellSetting();
    void applyShellSetting(const CBaseTableSettingParam &setting);
    void restoreNow();
    void saveSoon();
    void saveColumnSet(const QString &name);
    bool applyColumnSet(const QString &name);
    void removeColumnSet(const QString &name);
    /// @}

    /// @name Look
    /// @{
    void lookChanged();
    void applyLook();
    void applyMarks();
    void setRowMarks(const QVector<CTableRowMark> &marks);
    /// @}

    /// @name Menus and commands
    /// @{
    /// The signals of the grid that every family answers alike.
    void connectShell();
    void sortClicked(int column, Qt::KeyboardModifiers modifiers);
    /// Carries out the sort event.
    void applySort(int column, int order);
    /// True when the key was a command of the table.
    bool pressKey(const QKeyEvent &event);
    void run(TableCommand command);
    void openRowMenu(quint64 row, int column, const QPoint &position);
    void openHeaderMenu(int column, const QPoint &position);
    void openColumns(bool freezing);
    void openMarks();
    void askExport();
    void closePopup();
    /// @}

    std::vector<ExportColumn> exportColumns(const std::vector<int> &columns) const;
    void copySelection(bool withHeader);

    QWidget *const widget;
    const int id;
    const int menuFlags;
    int flags = 0;

    const std::unique_ptr<TableRows> rows;
    GridView *const grid;
    FindBar *const findBar;
    TableOverlay overlay;
    TableFind search;
    TableTransfer transfer;
    SettingStore store;

    std::vector<Column> columns;
    TableLook look;
    bool lookStale = false;
    double appliedScale = 0.0;    ///< the scale that the widths in the grid are at; 0 before the first look
    CBaseTableFrameSetting frame; ///< sorts and frozen columns live elsewhere
    QMap<QString, QList<CBaseTableColumnSetting>> columnSets;
    bool restorePending = false;
    bool restoring = false;
    bool applyingSetting = false; ///< what changes meanwhile is no change to be saved
    QPointer<PopupFrame> popup;
    QString emptyText;
    bool showsFilters = false;

protected:
    bool addingSort = false; ///< the sort event on its way comes from a click with Ctrl

    /// After the grid has its look: for what stands beside it.
    virtual void lookApplied(const PopupLook &around);

private:
    bool isOffered(const TableCommandEntry &entry) const;
    QMenu *newMenu();
    void addCommands(QMenu *menu, GridRowId row, int column);
    void addValueFilter(QMenu *menu, GridRowId row, int column);
    void addSorts(QMenu *menu, int column);
    void addFilters(QMenu *menu, int column);
    bool canFilter(int column) const;
    QVector<CBaseTableColumnFilter> filterSettings() const;
    void applyFilters(const CBaseTableSettingParam &setting, const TableArrangement &arrangement);
    void fillColumns(ColumnPopup *popup);
    void connectColumns(ColumnPopup *popup);
    void connectColumnSets(ColumnPopup *popup);
    QRect popupAnchor() const;
    void showEmptyText();
    std::vector<int> hiddenFilters() const;
};

template <typename Change>
void TableShell::changeColumn(int column, Change change)
{
    if (!hasColumn(column))
        return;
    GridColumn shown = grid->column(column);
    change(shown);
    grid->setColumn(column, shown);
}

} // namespace ZB
