#include "table/tableoverlay.h"

#include <QtCore/QEvent>

#include "grid/gridview.h"
#include "popups/gridbadge.h"
#include "popups/taskstrip.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

void setBadge(GridBadge *badge, const QString &text)
{
    badge->setText(text);
    badge->setVisible(!text.isEmpty());
    badge->raise();
}

} // namespace

TableOverlay::TableOverlay(GridView *gridView)
    : grid(gridView), pause(new GridBadge(gridView)), unseen(new GridBadge(gridView)), filter(new GridBadge(gridView)),
      work(new TaskStrip(gridView)), transfer(new TaskStrip(gridView))
{
    pause->setStrong(true);
    filter->setToolTip(QStringLiteral("单击清除隐藏列的筛选"));
    for (QWidget *part : {static_cast<QWidget *>(grid), static_cast<QWidget *>(work), static_cast<QWidget *>(transfer)})
        part->installEventFilter(this);
}

GridBadge *TableOverlay::pauseBadge() const
{
    return pause;
}

GridBadge *TableOverlay::unseenBadge() const
{
    return unseen;
}

GridBadge *TableOverlay::filterBadge() const
{
    return filter;
}

TaskStrip *TableOverlay::workStrip() const
{
    return work;
}

TaskStrip *TableOverlay::transferStrip() const
{
    return transfer;
}

void TableOverlay::setLook(const PopupLook &look)
{
    pause->setLook(look);
    unseen->setLook(look);
    filter->setLook(look);
    work->setLook(look);
    transfer->setLook(look);
    place();
}

void TableOverlay::setPauseText(const QString &text)
{
    setBadge(pause, text);
    place();
}

void TableOverlay::setUnseenText(const QString &text, bool atTop)
{
    unseenAtTop = atTop;
    setBadge(unseen, text);
    place();
}

void TableOverlay::setFilterText(const QString &text)
{
    if (filter->text() == text)
        return;
    setBadge(filter, text);
    place();
}

/// Between header and statistics row, clear of the scroll bars.
void TableOverlay::place()
{
    const GridLook &look = grid->look();
    const int gap = scaled(8);
    const int bars = scaled(14);
    const int top = look.headerHeight + gap;
    int bottom = grid->height() - bars - gap - (grid->statisticsVisible() ? look.statisticsHeight : 0);
    unseen->move((grid->width() - unseen->width()) / 2, unseenAtTop ? top : bottom - unseen->height());
    filter->move(gap, bottom - filter->height());
    pause->move(grid->width() - pause->width() - bars - gap, top);
    for (TaskStrip *strip : {work, transfer}) {
        if (!strip->isVisibleTo(grid))
            continue;
        bottom -= strip->height();
        strip->move(grid->width() - strip->width() - bars - gap, bottom);
        bottom -= gap;
    }
}

bool TableOverlay::cancelWork()
{
    for (TaskStrip *strip : {work, transfer})
        if (strip->isVisibleTo(grid)) {
            Q_EMIT strip->cancelRequested();
            return true;
        }
    return false;
}

bool TableOverlay::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && watched != grid)
        static_cast<QWidget *>(watched)->raise();
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        place();
    return QObject::eventFilter(watched, event);
}

} // namespace ZB
