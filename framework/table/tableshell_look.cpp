#include <QtCore/QTimer>
#include <cmath>

#include "popups/findbar.h"
#include "table/tableshell.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int markShare = 200; ///< thousandths of a mark's colour in the row's background
constexpr int highlightShare = 600;

/// A row's background under a mark. The search's highlight is a background already, the other colours are made for
/// texts; in tables it is the one that coloured numbers can be read on.
QColor markTint(const QColor &background, const QString &colorKey)
{
    CUiResource *resources = CUiResource::instance();
    if (colorKey == QLatin1String("ic_clr_syntax_edit_highlight"))
        return mixed(background, *resources->getColor(QStringLiteral("clr_table_search_hit")), highlightShare);
    return mixed(background, *resources->getColor(colorKey), markShare);
}

} // namespace

/// Setters come in rows: one look is made of them when the events that are under way have been dealt with.
void TableShell::lookChanged()
{
    if (lookStale)
        return;
    lookStale = true;
    QTimer::singleShot(0, widget, [this] { applyLook(); });
}

void TableShell::applyLook()
{
    if (!lookStale)
        return;
    lookStale = false;
    const GridLook grown = look.resolved();
    if (appliedScale > 0 && appliedScale != grown.scale)
        for (int column = 0; column < int(columns.size()); ++column)
            grid->setColumnWidth(column, int(std::lround(grid->column(column).width * grown.scale / appliedScale)));
    appliedScale = grown.scale;
    grid->setLook(grown);
    rows->setPlainBackground(grown.background);
    applyMarks();
    const PopupLook around = PopupLook::fromResources();
    findBar->setLook(around);
    overlay.setLook(around);
    lookApplied(around);
    rows->touch();
    grid->refresh();
}

void TableShell::lookApplied(const PopupLook &) {}

void TableShell::applyMarks()
{
    const QColor background = *CUiResource::instance()->getColor(look.background);
    std::vector<QColor> tints;
    for (const CTableRowMark &mark : qAsConst(frame.marks))
        tints.push_back(markTint(background, mark.colorKey));
    rows->setRowMarks(frame.marks, std::move(tints));
    grid->refresh();
}

void TableShell::setRowMarks(const QVector<CTableRowMark> &marks)
{
    frame.marks = marks;
    applyMarks();
    saveSoon();
}

} // namespace ZB
