#pragma once

#include <QtCore/QString>
#include <QtCore/Qt>

#include "grid/gridlook.h"

namespace ZB {

/// What a table looks like, as resource keys and sizes. The defaults are the keys of the standard table.
struct TableLook
{
    QString background = QStringLiteral("clr_table_background");
    QString numberBackground = QStringLiteral("clr_table_number_background");
    QString splitLine = QStringLiteral("clr_table_split_line");
    QString sortLine = QStringLiteral("clr_table_sort_split_line");
    QString inactiveSortLine = QStringLiteral("clr_table_sort_noactive_split_line");
    int horizontalLine = 1;
    int verticalLine = 1;
    int headerHeight = 0; ///< pixels at the present scale, as the next two; 0 for the theme's own size
    int itemHeight = 0;
    QString headerText = QStringLiteral("clr_table_header_text");
    QString headerFont = QStringLiteral("fnt_table_text_default");
    QString numberText = QStringLiteral("clr_table_text_default");
    QString numberFont = QStringLiteral("fnt_table_number_default");
    Qt::Alignment numberAlignment = Qt::AlignCenter;
    QString selected = QStringLiteral("clr_table_background_selected");
    QString selectedNoFocus = QStringLiteral("clr_table_background_selected_no_focus");
    QString selectedText = QStringLiteral("clr_table_text_selected");
    QString statisticsBorder = QStringLiteral("clr_table_stat_border");
    int statisticsBorderWidth = 0;
    int statisticsHeight = 0;
    QString statisticsBackground = QStringLiteral("clr_table_stat_background");
    QString statisticsTitleBackground = QStringLiteral("clr_table_stat_title_background");
    QString statisticsText = QStringLiteral("clr_table_text_default");
    QString statisticsFont = QStringLiteral("fnt_table_stat_text_default");
    int statisticsMargin = -1; ///< -1 for the theme's own size
    QString header = QStringLiteral("clr_table_column_header_nomal");
    QString headerHover = QStringLiteral("clr_table_column_header_hover");
    QString headerPressed = QStringLiteral("clr_table_column_header_press");
    QString headerDisabled = QStringLiteral("clr_table_column_header_disable");
    bool oddEvenRows = false;

    /// The colours, fonts and sizes behind the keys in the present theme and scale. GUI thread.
    GridLook resolved() const;
};

} // namespace ZB
