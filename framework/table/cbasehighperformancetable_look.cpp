#include "popups/pagingbar.h"
#include "table/cbasehighperformancetable_p.h"

namespace ZB {

void CBaseHighPerformanceTable::setBackgroundColor(const QString &background, const QString &numberBackground)
{
    d->look.background = background;
    d->look.numberBackground = numberBackground;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setSplitLine(const QString &color, int horizontalWidth, int verticalWidth,
                                             const QString &sortColor, const QString &inactiveSortColor)
{
    d->look.splitLine = color;
    d->look.horizontalLine = horizontalWidth;
    d->look.verticalLine = verticalWidth;
    d->look.sortLine = sortColor;
    d->look.inactiveSortLine = inactiveSortColor;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setHeaderHeight(int height)
{
    d->look.headerHeight = height;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setItemHeight(int height)
{
    d->look.itemHeight = height;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setHeaderTextInfo(const QString &color, const QString &font)
{
    d->look.headerText = color;
    d->look.headerFont = font;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setNumberTextInfo(const QString &color, const QString &font, int alignment)
{
    d->look.numberText = color;
    d->look.numberFont = font;
    d->look.numberAlignment = Qt::Alignment(alignment);
    d->lookChanged();
}

void CBaseHighPerformanceTable::setSelectedBackground(const QString &focused, const QString &unfocused)
{
    d->look.selected = focused;
    d->look.selectedNoFocus = unfocused;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setSelectedTextColor(const QString &color)
{
    d->look.selectedText = color;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setStatInfo(const QString &borderColor, int borderWidth, int rowHeight,
                                            const QString &background, const QString &titleBackground,
                                            const QString &textColor, const QString &font, int textMargin)
{
    d->look.statisticsBorder = borderColor;
    d->look.statisticsBorderWidth = borderWidth;
    d->look.statisticsHeight = rowHeight;
    d->look.statisticsBackground = background;
    d->look.statisticsTitleBackground = titleBackground;
    d->look.statisticsText = textColor;
    d->look.statisticsFont = font;
    d->look.statisticsMargin = textMargin;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setHeaderButtonColors(const QString &normal, const QString &hover,
                                                      const QString &pressed, const QString &disabled)
{
    d->look.header = normal;
    d->look.headerHover = hover;
    d->look.headerPressed = pressed;
    d->look.headerDisabled = disabled;
    d->lookChanged();
}

void CBaseHighPerformanceTable::setEmptyText(const QString &text)
{
    d->setEmptyText(text);
}

void CBaseHighPerformanceTable::themeChanged()
{
    d->lookStale = true;
    d->applyLook();
    d->closePopup();
    if (d->model)
        d->model->onResourceChanged();
    CBaseWidget::themeChanged();
}

void CBaseHighPerformanceTable::scaleChanged()
{
    CBaseWidget::scaleChanged();
}

void CBaseHighPerformanceTable::Private::lookApplied(const PopupLook &around)
{
    pagingBar->setLook(around);
}

void CBaseHighPerformanceTable::setRowMarks(const QVector<CTableRowMark> &marks)
{
    d->setRowMarks(marks);
}

QVector<CTableRowMark> CBaseHighPerformanceTable::rowMarks() const
{
    return d->frame.marks;
}

} // namespace ZB
