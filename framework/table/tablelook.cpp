#include "table/tablelook.h"

#include "zb/cuiresource.h"

namespace ZB {

namespace {

QColor color(const QString &key)
{
    return *CUiResource::instance()->getColor(key);
}

QFont font(const QString &key)
{
    return *CUiResource::instance()->getFont(key);
}

int size(int given, const char *key)
{
    return given > 0 ? given : CUiResource::instance()->getSize(QLatin1String(key));
}

QColor opaque(QColor mixed)
{
    mixed.setAlpha(255);
    return mixed;
}

} // namespace

GridLook TableLook::resolved() const
{
    GridLook look;
    look.scale = CUiResource::instance()->scale();
    look.textFont = font(QStringLiteral("fnt_table_text_default"));
    look.numberFont = font(QStringLiteral("fnt_table_number_default"));
    look.rowNumberFont = font(numberFont);
    look.headerFont = font(headerFont);
    look.statisticsFont = font(statisticsFont);

    look.rowHeight = size(itemHeight, "siz_standard_table_item_height");
    look.headerHeight = size(headerHeight, "siz_standard_table_header_height");
    look.statisticsHeight = size(statisticsHeight, "siz_standard_table_item_height");
    look.margin = scaled(8);
    look.statisticsMargin =
        statisticsMargin >= 0 ? statisticsMargin
                              : CUiResource::instance()->getSize(QStringLiteral("siz_standard_table_stat_text_margin"));
    look.horizontalLine = horizontalLine;
    look.verticalLine = verticalLine;
    look.statisticsBorder = statisticsBorderWidth;
    look.rowNumberAlignment = numberAlignment;
    look.oddEvenRows = oddEvenRows;

    look.background = color(background);
    look.oddBackground = color(QStringLiteral("clr_table_stat_background"));
    look.numberBackground = color(numberBackground);
    look.line = color(splitLine);
    look.sortLine = color(sortLine);
    look.inactiveSortLine = color(inactiveSortLine);
    look.text = color(QStringLiteral("clr_table_text_default"));
    look.dimText = color(headerText);
    look.rowNumberText = color(numberText);
    look.selected = color(selected);
    look.selectedNoFocus = color(selectedNoFocus);
    look.selectedText = color(selectedText);
    look.headerText = color(headerText);
    look.header = color(header);
    look.headerHover = color(headerHover);
    look.headerPressed = color(headerPressed);
    look.headerDisabled = color(headerDisabled);
    look.statisticsText = color(statisticsText);
    look.statisticsBackground = color(statisticsBackground);
    look.statisticsTitleBackground = color(statisticsTitleBackground);
    look.statisticsBorderColor = color(statisticsBorder);
    look.accent = opaque(color(QStringLiteral("clr_task_progress_background")));
    look.rise = color(QStringLiteral("clr_global_rise"));
    look.fall = color(QStringLiteral("clr_global_fall"));
    look.equal = color(QStringLiteral("clr_global_equal"));
    look.hit = color(QStringLiteral("clr_table_search_hit"));
    return look;
}

} // namespace ZB
