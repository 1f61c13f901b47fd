#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QVector>
#include <boost/shared_ptr.hpp>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "kdservice/evxtradertype.h"
#include "kdservice/idata.h"
#include "uicontrolexport.h"
#include "zb/coddevenrowtable.h"

class QElapsedTimer;

namespace ZB {
class CComboPushButton;
class CRadioButtonGroup;
} // namespace ZB

namespace KV {

class CFieldFormat;
class ColumnTotals;

/// A table of some thousand records that it keeps itself, under their keys: positions, accounts, templates. Every
/// record that passes the filters has a row; columns come from the host's catalogue. What stands in a cell is worked
/// out when the cell is first seen.
///
/// A record that changes is handed in again, as the same object or as another one under its key. One that stops passing
/// the filters keeps its row, as it was shown last, until the records are filtered anew.
///
/// Threading: GUI thread. Row ids stay with their record until it loses its row or all records are filtered anew.
/// Derived tables change what is shown by the protected virtuals; showDataFieldImpl() is called for a cell when it is
/// needed, showData() for every record that gets a row or is handed in whole. They may add, remove and filter records
/// meanwhile.
class UICONTROL_API CDataTable : public ZB::COddEvenRowTable
{
    Q_OBJECT

public:
    using RecordPtr = boost::shared_ptr<kdservice::IData>;
    /// By key.
    using Records = std::map<std::string, RecordPtr>;
    using ColumnFilter = QPair<ZB::EFilterType, QSet<QString>>;

    /// A record that is handed in for one of its fields.
    struct FieldChange
    {
        RecordPtr record;
        int field = -1;
    };

    /// tableId: under which the user's settings are kept. metaID: the records' type. Columns are those of TraderStock
    /// until setTradeType().
    CDataTable(int tableId, int metaID, QWidget *parent);
    ~CDataTable() override;

    /// @name Records. Functions that give a row answer with -1 for none. The flag asks for repainting at once instead
    /// of with the next frame; setImmediateUpdate(false) takes it back for all calls.
    /// @{
    /// Stores the record and shows it, if it passes.
    int updateData(const RecordPtr &record, bool flag);
    /// Many at once, with one sort; the rows of those that are new. Empty pointers are skipped.
    QVector<int> updateDatas(const QVector<RecordPtr> &list);
    /// Shows a stored record again; an unknown key is refused (-1).
    int refreshData(const RecordPtr &record, bool flag);
    /// The same for one of its fields; costs about a microsecond.
    int updateDataField(const RecordPtr &record, int field, bool flag);
    /// The same for many, in their order and repainted with the next frame; the row of each when its turn came. An
    /// update costs about half of one that comes alone.
    QVector<int> updateDataFields(const QVector<FieldChange> &list);
    /// Shows every stored record again, those too that have begun to pass; one that has stopped keeps its row. Costs a
    /// repaint.
    void refreshDatas();
    /// These answer with the row that was removed. A record without a row is not removed: it stays stored (-1).
    int removeData(const RecordPtr &record);
    int removeDataByID(int row);
    int removeDataByKey(std::string key);
    /// Removes all records and rows. Columns and filters stay.
    virtual void clear();
    void setImmediateUpdate(bool immediate);
    /// @}

    /// @name What is stored
    /// @{
    /// Records, with a row or without; rowCount() has the rows.
    int size() const;
    Records getAllDatas() const;
    int keyToRowID(std::string key) const;
    /// Empty pointers for rows and keys that there are not; a row that shows no record is asked for as the empty key.
    RecordPtr getData(int row);
    RecordPtr getDataConst(int row) const;
    RecordPtr getDataByKey(std::string key);
    /// @}

    /// @name Columns
    /// @{
    /// -1 when absent.
    int fieldID2columnID(int field) const;
    int columnID2fieldID(int column) const;
    /// A column at the end whose cells a derived table sets. id: under which fieldID2columnID() finds it; below 0 for
    /// none. Returns the column.
    int addExtraColumn(int id, const QString &header);
    /// Puts a widget over the cell of the row that is being built or that showData() is called for, or else of the row
    /// that came last; the table owns it from then on.
    void addComboPushButton(int column, ZB::CComboPushButton *button);
    void addRadioButtonGroup(int column, ZB::CRadioButtonGroup *group);
    bool isColBoldFont(int column) const;
    int getMetaID() const;
    kdservice::EVxTraderType getTradeType() const;
    /// Makes the columns anew for another kind of trader; the user's filters go, but for those that only come back from
    /// the settings now. Records, the columns' arrangement, columns of addExtraColumn() and filters of onFilter() on
    /// columns that are still there stay.
    void setTradeType(kdservice::EVxTraderType type);
    /// @}

    /// Puts the sums of these fields into the statistics row; those of all columns are put there by themselves a moment
    /// after something has changed. Costs about 30 ns for each row of each field; those that come by themselves only
    /// when rows have come or gone.
    void updateStatData(const std::map<int, kdservice::FieldDes *> &fields);
    /// Sums what has changed now, where the table's timer may leave it for later. Reads every row when rows have come
    /// or gone, else only what has changed.
    void updateSums();

    /// Gives rows anew to all records that pass, in the order of their keys; row ids begin anew.
    virtual void filterColumn();
    /// FilterExcept, which the filter box of this table never asks for, lets no record pass.
    void onFilterTrigger(int column, int type, QSet<QString> &values) override;
    /// The filters of the user's choice are part of it. Those of onFilter() are not: a derived table sets them.
    ZB::CBaseTableSettingParam getTableSetting() override;
    void setTableSetting(const ZB::CBaseTableSettingParam &setting) override;
    void onTimer() override;

protected:
    /// Drops all columns, rows and filters of the user's and makes the columns of these record types. Called by
    /// setTradeType(); the constructor calls this class's own, whatever overrides it.
    virtual void initColumns(const std::vector<int> &metaIds);
    /// The record types that make up the columns: the table's own, and the numbers among `further` that the catalogue
    /// knows fields of for this trader, ascending.
    std::vector<int> getMetaIDs(int metaId, kdservice::EVxTraderType type, const QSet<QString> &further) const;
    /// Settings made for other column ids, turned into the present ones; what has none is dropped. newIds: by old id.
    void resetTableColumnID(const QMap<int, int> &newIds, ZB::CBaseTableFrameSetting &frame,
                            QList<ZB::CBaseTableColumnSetting> &columns) const;

    /// The row has this record now: its cells from a column on are due.
    virtual void showData(const RecordPtr &record, int row, int firstColumn);
    /// Finds who holds the field and shows it.
    void showDataField(bool flag, const RecordPtr &record, int row, int column, int field);
    /// Sets the text and colour of one cell. record: the record that has the field itself. flag: it has changed since
    /// the row came.
    virtual void showDataFieldImpl(bool flag, const RecordPtr &record, int row, int column,
                                   const kdservice::FieldDes *field, int fieldId, int tradeType);
    /// Shows a stored record where it belongs: in its row if it still passes, in a new one if it has none.
    int testShowData(const RecordPtr &record, bool flag);
    /// Text of a field as cells and filters have it; false, and `text` untouched, when the record does not have it.
    bool getDataByFieldID(const RecordPtr &record, int field, QString &text) const;

    /// Whether a record passes all filters, the user's and those of onFilter().
    bool passData(const RecordPtr &record) const;
    /// A derived table's own filter on a column, asked for each record with what onFilter() was given for the column;
    /// lets everything pass unless overridden.
    virtual bool passFilter(const RecordPtr &record, int column, int type, QString text) const;
    /// Sets the arguments of passFilter() for a column, whose meaning is the derived table's, and filters.
    void onFilter(int column, int type, QString text);
    /// What filterColumn() does here.
    void reFilterDatas();
    void showFilterMenu(int column, QRect header) override;
    void takeColumnFilter(int column, ZB::EFilterType type, const QSet<QString> &values) override;
    QMap<int, ZB::FilterConditions> filterConditions() const override;

    void showCell(int row, int column) override;
    QVariant cellValue(int row, int column) const override;
    /// Events 69 and 70 go on with the record's key as their text.
    bool handleEvent(int event, int first, int second, QString text, void *data) override;

private:
    struct CustomFilter
    {
        int type = 0;
        QString text;
    };

    /// One record, with its row or -1. What a change of one field needs of the row is here, beside the record.
    struct Stored
    {
        RecordPtr record;
        int row = -1;
        bool isShown = false;    ///< it is what the row was given to show last
        bool hasChanged = false; ///< since the row came
    };
    using Entry = std::pair<const std::string, Stored>;
    class Index;
    class FieldBatch;
    struct FieldRoute;
    /// No entry for a row that a derived table has added on its own.
    struct ShownRow
    {
        int row;
        bool hasChanged; ///< since it came; of a row with an entry, the entry knows
        Entry *entry;
        RecordPtr shown; ///< what it was given to show last, unless that is the entry's record
    };

    struct ExtraColumn
    {
        int id;
        QString header;
        int column;
    };
    struct NewRecord
    {
        Entry *entry;
        RecordPtr record;
    };

    bool passFilterByCol(const RecordPtr &record, int column, const ColumnFilter &filter) const;
    bool textOfColumn(const RecordPtr &record, int column, QString &text) const;
    bool passColumnFilters(const RecordPtr &record) const;
    bool passCustomFilters(const RecordPtr &record) const;
    bool passAllBut(const RecordPtr &record, int column) const;
    const CFieldFormat *formatOfColumn(int column) const;
    void addFieldColumn(kdservice::FieldDes &field);
    int rowForWidgets() const;
    Entry *entryOf(const std::string &key) const;
    Entry &store(const RecordPtr &record);
    Entry *takeOver(const RecordPtr &record);
    void handIn(Entry &entry, const RecordPtr &record);
    int takeField(Entry &known, const FieldRoute &route, const RecordPtr &record, bool flag);
    int showField(Entry &entry, const FieldRoute &route, bool flag);
    FieldRoute routeOf(int field);
    bool isSure(const Entry &entry) const;
    int showStored(Entry &entry, bool flag);
    void giveRow(Entry &entry, int row);
    void showRow(const RecordPtr &record, int row);
    Entry *stillStored(Entry &entry, const RecordPtr &record, quint64 removalsBefore) const;
    std::vector<NewRecord> withoutRows(const std::vector<NewRecord> &passed, bool lookUp) const;
    QVector<int> showNew(const std::vector<NewRecord> &newOnes);
    /// wanted: those to visit; calls no hooks. Null for all.
    void forEachStored(const std::function<bool(const Entry &)> &wanted,
                       const std::function<void(Entry &, const RecordPtr &)> &visit);
    void forEachStoredBehind(const std::string &key, const std::function<bool(const Entry &)> &wanted,
                             const std::function<void(Entry &, const RecordPtr &)> &visit);
    void takeOrder();
    void forgetRows();
    const ShownRow *shownRow(int row) const;
    ShownRow &rowFor(int row);
    std::size_t placeOf(int row) const;
    static const RecordPtr &recordIn(const ShownRow &row);
    static bool hasChanged(const ShownRow &row);
    static void setShown(ShownRow &row, const RecordPtr &record, bool hasChanged);
    QMap<int, int> newColumnIds(const std::map<int, int> &formerFields) const;
    void keepExtraColumns(const std::vector<ExtraColumn> &former, QMap<int, int> &newIds);
    void keepCustomFilters(const std::map<int, CustomFilter> &former, const QMap<int, int> &newIds);
    void mapField(int field, int column);
    void repaint(bool flag);
    void sumAnew();
    void takeBoldColumns();
    void takeSummed(int row, const RecordPtr &record);
    void showSum(const kdservice::FieldDes &field, int column, double sum);
    double keptSumOf(int field, int column);
    double sumOf(int column) const;
    std::vector<double> numbersIn(int column) const;
    double numberIn(int row, const RecordPtr &record, int column) const;
    /// The largest double where there is none.
    static double numberOf(const kdservice::IData &record, int field);
    QString sumText(const kdservice::FieldDes &field, double sum) const;
    static void logSum(const std::vector<double> &values, double sum);

    std::map<int, ColumnFilter> columnFilters; ///< by column
    std::map<int, CustomFilter> customFilters; ///< by column
    bool immediateUpdate = true;
    std::map<int, int> fieldToColumn;
    std::unique_ptr<Index> keyToRow; ///< of all that is stored; the row stands in the entry
    std::vector<ShownRow> rowToKey;  ///< by ascending row
    std::map<std::string, Stored> records;
    std::vector<Entry *> inOrder; ///< of their keys; empty while it is stale
    quint64 additions = 0;        ///< of stored records, up to now
    quint64 removals = 0;         ///< the same: entries that were known before may be gone
    quint64 rowsForgotten = 0;    ///< how often all rows have gone
    int showingRow = -1;          ///< the one that showData() is called for
    kdservice::EVxTraderType tradeType = kdservice::TraderStock;
    std::set<int> boldColumns;
    bool boldKnown = false; ///< the columns that are bold by their fields are among them
    const int metaID;

    std::vector<int> columnMetaIds; ///< whose fields make up the columns
    std::vector<ExtraColumn> extraColumns;
    std::vector<int> fieldOfColumn;                    ///< -1 for columns that no field fills
    std::vector<CFieldFormat> formats;                 ///< by column
    std::map<int, kdservice::FieldDes *> summedFields; ///< of all columns
    std::map<int, kdservice::FieldDes *> staleSums;    ///< fields that have changed since their sums were shown
    bool allSumsStale = true;
    std::unique_ptr<ColumnTotals> totals; ///< of fields that were summed since the last row came or went
    qint64 sumsTook = 0;                  ///< milliseconds of the last automatic sums
    std::unique_ptr<QElapsedTimer> sinceSums;
};

} // namespace KV
