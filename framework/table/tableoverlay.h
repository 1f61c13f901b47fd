#pragma once

#include <QtCore/QObject>

namespace ZB {

class GridBadge;
class GridView;
class TaskStrip;
struct PopupLook;

/// The signs that stand over a table's rows: that it is paused, how many rows wait at the edge, and how far long works
/// are. They belong to the grid and are placed anew when it or one of them changes.
class TableOverlay : public QObject
{
    Q_OBJECT

public:
    explicit TableOverlay(GridView *grid);

    GridBadge *pauseBadge() const;
    GridBadge *unseenBadge() const;
    /// Tells of filters whose columns are hidden.
    GridBadge *filterBadge() const;
    /// A sort, a filter or a load that is being carried out.
    TaskStrip *workStrip() const;
    /// An export or a large copy.
    TaskStrip *transferStrip() const;
    /// Stops one work whose progress is on the screen, a sort or a filter before an export; false when there is none.
    bool cancelWork();

    void setLook(const PopupLook &look);
    /// Empty texts hide the badges.
    void setPauseText(const QString &text);
    void setUnseenText(const QString &text, bool atTop);
    void setFilterText(const QString &text);
    void place();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    GridView *grid;
    GridBadge *pause;
    GridBadge *unseen;
    GridBadge *filter;
    TaskStrip *work;
    TaskStrip *transfer;
    bool unseenAtTop = false;
};

} // namespace ZB
