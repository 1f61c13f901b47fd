#pragma once

#include <map>
#include <unordered_map>
#include <vector>

#include "table/tablerows.h"

namespace ZB {

class CBaseTableColumnSimpleTextDelegate;

/// Shows a model to a grid. Reads the last finished order and never waits for a sort or a filter; can hold a picture of
/// all rows while the model goes on (pause). GUI thread; the model is the table's and outlives its stay here.
class TableSource : public TableRows
{
public:
    TableSource();
    ~TableSource() override;

    /// Null shows nothing. Ends a pause. shared: the same model, or empty when it is not shared with the table.
    void setModel(IBaseHpfTableModel *model, const SharedModel &shared);
    void touch() override;

    /// @name Pause
    /// @{
    /// Keeps the rows as they are now, with their order; while a sort or a filter is under way, as they are when it is
    /// finished. Very many rows of a shared model are taken in the background, and shown as they were a moment later;
    /// `taken` is called when they are there.
    void pause(const std::function<void()> &taken);
    /// Takes the rows of a model that is not shared, if a pause waits for them and nothing is under way any more.
    void takeWhenSettled();
    void resume();
    bool isPaused() const;
    /// Rows that the model has got since the pause began.
    qint64 arrivalsSincePause() const;
    /// @}

    void setRowMarks(const QVector<CTableRowMark> &marks, std::vector<QColor> tints) override;
    /// A background that a model gives to its columns counts only where it differs from this.
    void setPlainBackground(const QColor &background) override;
    QVariant::Type columnType(int column) const override;

    /// @name Rows as they are shown, paused or not
    /// @{
    void fetchRows(qint64 first, int count, std::vector<HpfShownRow> &rows) const override;
    Row rowOfId(GridRowId id) const override;
    GridRowId idAt(qint64 row) const override;
    RowTaker allRows() const override;
    RowTaker rowsOfIds(std::vector<GridRowId> ids) const override;
    /// @}

    quint64 revision() const override;
    quint64 epoch() const override;
    qint64 rowCount() const override;
    void fetch(qint64 first, int count, GridWindow &window) override;
    void refetch(GridWindow &window) override;
    bool isSettling() const override;
    qint64 rowOf(GridRowId id) const override;
    void rowsOf(const std::vector<GridRowId> &ids, std::vector<qint64> &rows) const override;
    void rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const override;
    void content(int windowRow, int column, GridContent &content) override;
    GridFlash flash(int windowRow, int column) override;
    QString tip(int windowRow, int column) const override;
    int columnCount() const override;
    QString headerText(int column) const override;
    QString statisticsText(int column) const override;

private:
    static constexpr int unknownMark = -2;

    /// Where each row is shown, by id.
    using PlacesOfIds = std::vector<std::pair<quint64, int>>;

    struct Pause
    {
        RowSnapshot rows;                          ///< empty until they have been taken; the model is shown so long
        std::shared_ptr<const PlacesOfIds> places; ///< made with the rows
        quint64 arrivals = 0;
        quint64 data = 0;
    };

    const std::vector<HpfShownRow> *heldRows() const;
    static std::shared_ptr<const PlacesOfIds> placesOf(const RowSnapshot &rows);
    static qint64 placeOf(GridRowId id, const PlacesOfIds &places);

    void takeWindow(qint64 first, GridWindow &window);
    const QColor *columnBackground(int column);
    int markOf(std::size_t windowRow);
    bool isFlashing(const HpfShownRow &shown, int column) const;
    GridFlash direction(const IBaseHpfTableModel::Row &row, GridRowId id, int column) const;

    IBaseHpfTableModel *model = nullptr;
    SharedModel sharedModel;
    std::vector<HpfShownRow> window; ///< the rows of the last fetch
    std::vector<HpfShownRow> before; ///< those of the fetch before it: tells in which direction a value changed
    std::vector<int> windowMarks;    ///< index of the rule of each row of the window, -1 for none

    std::shared_ptr<Pause> holding; ///< there during a pause

    QVector<CTableRowMark> marks;
    std::vector<QColor> markTints;
    QColor plainBackground;
    std::map<int, QColor> columnBackgrounds;

    mutable quint64 touches = 1;
    mutable quint64 lastData = 0;
    mutable quint64 lastMarks = 0;
    mutable std::unordered_map<int, QString> statisticsTexts; ///< as they were when no work was pending
};

} // namespace ZB
