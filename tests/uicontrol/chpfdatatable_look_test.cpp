#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "tablewindow.h"
#include "theme/themeservice.h"

using namespace testrecords;
using refhost::ThemeService;

namespace {

/// A theme in which every colour of a table is another one, so that none can stand in for another.
QByteArray distinctTheme()
{
    QByteArray colours;
    int number = 0;
    for (const char *key :
         {"background", "number_background", "split_line", "sort_split_line", "sort_noactive_split_line", "header_text",
          "text_default", "background_selected", "background_selected_no_focus", "text_selected", "stat_border",
          "stat_background", "stat_title_background", "column_header_nomal", "column_header_hover",
          "column_header_press", "column_header_disable"}) {
        ++number;
        colours += QStringLiteral("%1\"clr_table_%2\": \"#0000%3\"")
                       .arg(number == 1 ? "" : ",\n", QLatin1String(key))
                       .arg(number, 2, 16, QLatin1Char('0'))
                       .toUtf8();
    }
    return "{\"name\": \"distinct\", \"title\": \"t\", \"base\": \"dark\", \"colours\": {" + colours +
           "}, \"fonts\": {\"fnt_table_text_default\": {\"family\": \"text\", \"size\": 13},"
           "\"fnt_table_number_default\": {\"family\": \"number\", \"size\": 14},"
           "\"fnt_table_stat_text_default\": {\"family\": \"number\", \"size\": 15}},"
           "\"sizes\": {\"siz_standard_table_header_height\": 31, \"siz_standard_table_item_height\": 27,"
           "\"siz_standard_table_stat_text_margin\": 5}}";
}

std::string text(const ZB::GridLook &look)
{
    const auto number = [](const QColor &color) { return std::to_string(color.blue()) + ' '; };
    std::string lines = "background " + number(look.background) + number(look.numberBackground);
    lines += "\nlines " + number(look.line) + number(look.sortLine) + number(look.inactiveSortLine) +
             std::to_string(look.horizontalLine) + ' ' + std::to_string(look.verticalLine);
    lines += "\nheights " + std::to_string(look.headerHeight) + ' ' + std::to_string(look.rowHeight);
    lines += "\nheader " + number(look.headerText) + std::to_string(look.headerFont.pixelSize());
    lines += "\nnumbers " + number(look.rowNumberText) + std::to_string(look.rowNumberFont.pixelSize()) + ' ' +
             std::to_string(look.rowNumberAlignment);
    lines += "\nselected " + number(look.selected) + number(look.selectedNoFocus) + number(look.selectedText);
    lines += "\nstatistics " + number(look.statisticsBorderColor) + std::to_string(look.statisticsBorder) + ' ' +
             std::to_string(look.statisticsHeight) + ' ' + number(look.statisticsBackground) +
             number(look.statisticsTitleBackground) + number(look.statisticsText) +
             std::to_string(look.statisticsFont.pixelSize()) + ' ' + std::to_string(look.statisticsMargin);
    lines += "\nbuttons " + number(look.header) + number(look.headerHover) + number(look.headerPressed) +
             number(look.headerDisabled);
    return lines;
}

class HpfDataTableLook : public TableWindow
{
protected:
    HpfDataTableLook()
    {
        QFile file(folder.filePath(QStringLiteral("distinct.json")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(distinctTheme());
        file.close();
        EXPECT_EQ(ThemeService::instance().loadFile(file.fileName()).toStdString(), "");
    }
    ~HpfDataTableLook() override
    {
        ThemeService::instance().setScale(1.0);
        ThemeService::instance().setTheme(QStringLiteral("dark"));
    }

private:
    QTemporaryDir folder;
};

} // namespace

TEST_F(HpfDataTableLook, EveryPartOfTheTableHasItsOwnThemeItemAndFollowsTheScale)
{
    ASSERT_TRUE(ThemeService::instance().setTheme(QStringLiteral("distinct")));
    settle();
    EXPECT_EQ(text(grid()->look()), "background 1 2 \n"
                                    "lines 3 4 5 1 1\n"
                                    "heights 31 27\n"
                                    "header 6 13\n"
                                    "numbers 7 14 132\n"
                                    "selected 8 9 10 \n"
                                    "statistics 11 0 27 12 13 7 15 5\n"
                                    "buttons 14 15 16 17 ");
    ThemeService::instance().setScale(2.0);
    settle();
    EXPECT_EQ(grid()->look().headerHeight, 62);
    EXPECT_EQ(grid()->look().rowHeight, 54);
    EXPECT_EQ(grid()->look().statisticsMargin, 10);
}
