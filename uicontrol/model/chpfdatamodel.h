#pragma once

#include <atomic>
#include <boost/smart_ptr/enable_shared_from_this.hpp>
#include <boost/thread/shared_mutex.hpp>
#include <memory>

#include "kdservice/evxtradertype.h"
#include "kdservice/fielddes.h"
#include "model/chpfdatacolumnproperty.h"
#include "uicontrolexport.h"
#include "zb/ibasehpftablemodel.h"

namespace KV {

class CColumnPlan;
class CHpfExtraDataModel;
struct ColumnMaps;

/// The model behind a high-volume table: rows are CHpfData over records of one type, seen by one kind of trader. The
/// columns come from the host's catalogue, and further ones from addColumn(); rows, order, filters and sums are the
/// host model's.
///
/// Threading: columns are read on any thread and changed on the GUI thread; rows as in the base.
/// Ownership: made and held as boost::shared_ptr; its rows hold it too, so clear() comes before the last release.
class UICONTROL_API CHpfDataModel : public ZB::IBaseHpfTableModel, public boost::enable_shared_from_this<CHpfDataModel>
{
public:
    /// metaId: the records' type; with -1 the model has no columns until setMetaID. New rows go to the end until
    /// setAppendSeq() says otherwise.
    CHpfDataModel(int metaId, kdservice::EVxTraderType traderType);
    ~CHpfDataModel() override;

    int columnCount() const override;
    /// The column's name up to its hyphen; a name with none or with several hyphens as it is.
    QString columnHeader(int column) const override;
    QVariant::Type columnType(int column) const override;
    QString getStatDispalyQString(int column) const override;
    bool columnFlashChange(int column) const override;
    const QColor *getBackgroundColor(int column) const override;
    int textContext(int column) const override;
    /// The field's flags, with digits in groups for numbers when the user wants so.
    ZB::CFlags<utils::EFormatNumberFlag> columnFlag(int column) const override;
    /// Removes every row and ends the statistics of the extra columns.
    void clear() override;
    void onTimer() override;

    /// One more column at the end; returns its number. extra: its values come from the extra-data model, with two
    /// decimals and with `name` as the text of cells without a value.
    int addColumn(const CHpfDataColumnProperty &property, const QString &name, bool extra);

    /// Starts or stops summing a column: an extra column in the extra-data model, any other in the base. Stands in
    /// front of the base's function, which is not virtual and knows no extra columns.
    void setColumnStatEnable(int column, bool enable);
    /// Takes every row out of the sums and counts it in again. Rows that are handed in are counted without it.
    void resetStatData();
    /// Lets the sums of the extra columns count the rows that pass the filters. Costs about 1 us per row with extra
    /// values, nothing without such sums.
    void reCalcExStat();

    /// A change removes all rows and makes the columns anew. Columns of addColumn() go with it; their values stay.
    void setMetaID(int metaId);
    int getMetaID() const;
    void setTradeType(kdservice::EVxTraderType traderType);
    kdservice::EVxTraderType tradeType() const;

    /// @name The column maps; valid on the GUI thread until the columns change. Other threads take
    /// fieldColumnMapCopy().
    /// @{
    const QMap<int, int> &fieldColumnMap() const;
    const QMap<int, CHpfDataColumnProperty> &columnPropertyMap() const;
    /// Entries behind the last column are left from a wider set of columns.
    const QMap<int, kdservice::FieldDes *> &columnFieldDesMap() const;
    /// @}
    QMap<int, int> fieldColumnMapCopy() const;
    /// Both: false, and `out` untouched, when there is none.
    bool getColumnProperty(const int &column, CHpfDataColumnProperty &out) const;
    bool getFieldDesID(int column, kdservice::FieldDes **out) const;
    /// Never null; lives as long as the model.
    CHpfExtraDataModel *getExtraDataModel() const;

    /// Whether cells without a colour of their own take the one that their field asks for: the side of an order, the
    /// sign of a change, a price against its base, absent values dimmed. Off at first. Costs a read of the field per
    /// painted cell and nothing per row.
    void setFieldColors(bool on);
    bool fieldColors() const { return fieldColorsOn.load(std::memory_order_relaxed); }

    /// What the rows share, for the present columns. Costs one atomic read, but for the first time after a change of
    /// the columns. Valid as long as the model.
    const CColumnPlan &columnPlan() const
    {
        const CColumnPlan *ready = plan.load(std::memory_order_acquire);
        return ready != nullptr ? *ready : makePlan();
    }
    /// getExtraDataModel() for those who need no null check.
    CHpfExtraDataModel &extraData() const { return *extraDataModel; }

protected:
    void initColumns(const std::vector<int> &metaIds) override;
    QVariant::Type dataTypeToQtType(kdservice::EXT_DATA_TYPE type) const;
    /// What the statistics row says under a column whose sum is this; empty for the largest value of the type.
    QString statText(int column, qint64 sum) const;
    QString statText(int column, double sum) const;

private:
    struct NewColumn;

    void dropColumns();
    NewColumn columnOf(kdservice::FieldDes &field) const;
    void storeColumns(const std::vector<NewColumn> &columns);
    void forgetPlan();
    const CColumnPlan &makePlan() const;
    void useKnownPlan();
    ColumnMaps presentMaps() const;
    const kdservice::FieldDes *fieldOf(int column) const;

    mutable boost::shared_mutex mutex; ///< guards everything up to the mark below
    QMap<int, int> columnOfField;
    QMap<int, CHpfDataColumnProperty> properties;
    QMap<int, kdservice::FieldDes *> fields;
    QList<int> addedExtraColumns; ///< descriptions that addColumn() gave to the extra-data model
    quint64 columnsVersion = 0;
    /// Plans of all column sets so far, equal sets once: rows and other threads may still be using an older one.
    mutable std::vector<std::unique_ptr<CColumnPlan>> plans;
    // Up to here.

    mutable std::atomic<const CColumnPlan *> plan; ///< null until somebody needs it
    const std::unique_ptr<CHpfExtraDataModel> extraDataModel;
    const QColor *const background;
    std::atomic<int> meta;
    std::atomic<kdservice::EVxTraderType> trader;
    std::atomic<bool> fieldColorsOn;
};

} // namespace KV
