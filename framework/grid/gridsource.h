#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <vector>

#include "frameworkexport.h"

class QColor;
class QPixmap;

namespace ZB {

/// Names one row for as long as it exists, wherever it stands and whatever it shows; never used again for another row.
using GridRowId = quint64;
constexpr GridRowId NoGridRow = 0;

/// One shown row: who it is, and a number that differs whenever any of its cells may show something else than before.
struct GridRow
{
    GridRowId id = NoGridRow;
    quint32 version = 0;
};

/// A stretch of the shown rows, taken at one moment.
struct GridWindow
{
    qint64 rowCount = 0;       ///< of the whole table at that moment
    qint64 first = 0;          ///< where the stretch begins
    std::vector<GridRow> rows; ///< may be shorter than asked for
};

/// What one cell shows. Pointers stay the source's and hold until its next fetch. A null colour means the grid's own, a
/// null icon none.
struct GridContent
{
    QString text;
    QString unit; ///< drawn in a slot of its own behind the text (%, 万, 亿)
    const QColor *color = nullptr;
    const QColor *background = nullptr;
    const QPixmap *icon = nullptr;
};

/// How a cell whose text has changed flashes.
enum class GridFlash
{
    None,
    Rise,
    Fall,
    Equal ///< changed without a direction
};

/// Of a number of this type that is more by `change` than before. An absent number is the greatest of its type: one
/// that comes or goes has no direction.
FRAMEWORK_API GridFlash flashOfChange(double change, QVariant::Type type);

/// What a GridView shows. Implemented by each table family over its own rows.
///
/// Threading: called on the GUI thread only, while the rows behind it may change on any thread; answers come from the
/// last finished order, without waiting. Rows are positions in the shown order, 64-bit; columns are model columns from
/// 0, whatever their place on the screen.
/// Ownership: the table owns both view and source; the source outlives the view or is taken away first.
class FRAMEWORK_API GridSource
{
public:
    GridSource();
    virtual ~GridSource();

    GridSource(const GridSource &) = delete;
    GridSource &operator=(const GridSource &) = delete;

    /// Differs whenever anything may look different than before. Cheap: asked with every frame.
    virtual quint64 revision() const = 0;
    /// Differs when every cell must be asked again, whatever its row's version says (columns, theme, another model).
    virtual quint64 epoch() const = 0;

    virtual qint64 rowCount() const = 0;
    /// Takes the rows [first, first + count) that exist, and keeps hold of them for content() until the next call of
    /// fetch(). Costs what the stretch costs, not what the table does.
    virtual void fetch(qint64 first, int count, GridWindow &window) = 0;
    /// Brings the rows of the last fetch up to date without moving any: same rows, same places, present versions. A row
    /// that has gone keeps its content and version. `window` is the one that fetch() filled.
    virtual void refetch(GridWindow &window) = 0;
    /// Whether an order that was asked for is still to come. Never unless overridden.
    virtual bool isSettling() const;
    /// Where a row is shown, -1 when it is not (removed or filtered out).
    virtual qint64 rowOf(GridRowId id) const = 0;
    /// The same for many; rows[i] belongs to ids[i]. Calls rowOf() for each unless overridden.
    virtual void rowsOf(const std::vector<GridRowId> &ids, std::vector<qint64> &rows) const;
    /// Appends the ids of the rows [first, first + count) that exist. May be asked for all rows (select all).
    virtual void rowIds(qint64 first, qint64 count, std::vector<GridRowId> &ids) const = 0;

    /// Fills in one cell of the last fetch; `content` comes in empty. windowRow: index into GridWindow::rows.
    virtual void content(int windowRow, int column, GridContent &content) = 0;
    /// Asked after the text of a cell has changed while its row stayed in sight. No flash unless overridden.
    virtual GridFlash flash(int windowRow, int column);
    /// A text for the tool tip besides a text that is cut off (what an icon means); empty unless overridden.
    virtual QString tip(int windowRow, int column) const;
    /// What a cell of any shown row reads, its unit behind it; empty for rows and columns that there are not. For those
    /// who look elsewhere than at the last fetch, as screen readers do. Empty unless overridden.
    virtual QString cellText(qint64 row, int column) const;

    virtual int columnCount() const = 0;
    virtual QString headerText(int column) const = 0;
    /// The text under a column in the statistics row; empty for none.
    virtual QString statisticsText(int column) const;
};

} // namespace ZB
