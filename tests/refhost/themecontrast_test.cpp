#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <algorithm>
#include <cmath>

#include "theme/themeservice.h"
#include "zb/cuiresource.h"

using namespace refhost;

namespace {

QColor color(const QString &key)
{
    return *ZB::CUiResource::instance()->getColor(key);
}

QColor laidOver(const QColor &top, const QColor &bottom)
{
    const auto mixed = [&top](double above, double below) { return above * top.alphaF() + below * (1 - top.alphaF()); };
    return QColor::fromRgbF(mixed(top.redF(), bottom.redF()), mixed(top.greenF(), bottom.greenF()),
                            mixed(top.blueF(), bottom.blueF()));
}

/// Relative luminance and contrast as the Web Content Accessibility Guidelines 2.1 define them.
double luminance(const QColor &value)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(value.redF()) + 0.7152 * linear(value.greenF()) + 0.0722 * linear(value.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

/// A place where text stands: the colour keys of the text, and the keys that lie below it, the lowest first.
struct Place
{
    QStringList texts;
    QStringList below;
};

QList<Place> places()
{
    const auto keys = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    const QStringList inCells = keys("clr_text_default clr_text_second clr_table_text_default clr_table_text_second "
                                     "clr_global_rise clr_global_fall clr_global_equal clr_text_link");
    const QStringList plain = keys("clr_text_default clr_text_second");
    QList<Place> all;
    for (const char *row : {"clr_table_background", "clr_table_background_odd", "clr_table_number_background",
                            "clr_table_background_selected", "clr_table_background_selected_no_focus",
                            "clr_table_stat_background", "clr_table_search_hit", "clr_table_column_header_nomal"})
        all << Place{inCells, {QLatin1String(row)}};
    for (const char *row : {"clr_table_background", "clr_table_background_odd"})
        for (const char *flash : {"clr_table_flash_rise", "clr_table_flash_fall", "clr_table_flash_equal"})
            all << Place{inCells, {QLatin1String(row), QLatin1String(flash)}};
    for (const char *row : {"clr_table_background_selected", "clr_table_background_selected_no_focus"})
        all << Place{keys("clr_table_text_selected"), {QLatin1String(row)}};
    for (const char *state : {"clr_table_column_header_nomal", "clr_table_column_header_hover",
                              "clr_table_column_header_press", "clr_table_column_header_disable"})
        all << Place{keys("clr_table_header_text clr_text_default"), {QLatin1String(state)}};
    for (const char *row : {"clr_table_background", "clr_table_background_odd", "clr_table_background_selected"})
        all << Place{keys("clr_table_text_default"),
                     {QLatin1String(row), QStringLiteral("clr_task_progress_background")}};
    for (const char *state : {"clr_background_raised", "clr_background_hover", "clr_background_pressed",
                              "clr_btn_background_color", "clr_tooltip_background", "clr_lineedit_background"})
        all << Place{plain + keys("clr_btn_text_color clr_btn_s_nonormal_0 clr_lineedit_btn_text_normal"),
                     {QLatin1String(state)}};
    all << Place{keys("clr_lineedit_btn_text_normal"), {QStringLiteral("ic_clr_syntax_edit_highlight")}};
    all << Place{keys("clr_lineedit_btn_text_normal"), {QStringLiteral("clr_table_background")}};
    const QStringList quoted = keys("clr_table_text_default clr_global_rise clr_global_fall clr_global_equal");
    for (const char *band : {"clr_bidoffer_price_background", "clr_quote_ask_backgroud", "clr_quote_bid_backgroud",
                             "clr_quote_one_ask_background", "clr_quote_one_bid_background",
                             "clr_quote_lastprice_backgroud", "clr_quote_one_stock_price_back"})
        all << Place{quoted, {QLatin1String(band)}};
    for (const char *side : {"ask", "bid"})
        all << Place{
            keys("clr_global_equal"),
            {QStringLiteral("clr_quote_one_%1_background").arg(QLatin1String(side)),
             side[0] == 'a' ? QStringLiteral("clr_table_item_bg_fall") : QStringLiteral("clr_table_item_bg_rise")}};
    for (const char *band : {"clr_quote_ask_backgroud", "clr_quote_bid_backgroud", "clr_quote_one_ask_background",
                             "clr_quote_one_bid_background"}) {
        all << Place{keys("clr_table_text_second"), {QLatin1String(band)}};
        all << Place{keys("clr_table_text_second"), {QLatin1String(band), QStringLiteral("clr_table_item_bg_stale")}};
    }
    for (const char *band :
         {"clr_bidoffer_price_background", "clr_quote_lastprice_backgroud", "clr_quote_one_stock_price_back"})
        all << Place{keys("clr_table_text_second clr_text_error"), {QLatin1String(band)}};
    for (const char *fill : {"clr_global_rise_fill", "clr_rise_fill_hover", "clr_rise_fill_press",
                             "clr_global_fall_fill", "clr_fall_fill_hover", "clr_fall_fill_press", "clr_accent_fill",
                             "clr_accent_fill_hover", "clr_accent_fill_press"})
        all << Place{keys("clr_operation_direction_text clr_text_on_fill"), {QLatin1String(fill)}};
    return all;
}

} // namespace

TEST(ThemeContrast, OfTextIsEnoughOnEverythingThatItStandsOn)
{
    constexpr double enough = 4.5;
    ThemeService &service = ThemeService::instance();
    QStringList tooWeak;
    int measured = 0;
    for (const QString &theme : {QStringLiteral("dark"), QStringLiteral("light")}) {
        service.setTheme(theme);
        for (const RiseFall pair : {RiseFall::RedUp, RiseFall::GreenUp, RiseFall::OrangeBlue}) {
            service.setRiseFall(pair);
            for (const Place &place : places()) {
                QColor below = color(place.below.first());
                for (const QString &key : place.below)
                    below = laidOver(color(key), below);
                for (const QString &text : place.texts) {
                    ++measured;
                    const double ratio = contrast(color(text), below);
                    if (ratio < enough)
                        tooWeak << QStringLiteral("%1 %2: %3 on %4 has %5")
                                       .arg(theme)
                                       .arg(static_cast<int>(pair))
                                       .arg(text, place.below.join(QLatin1Char('+')))
                                       .arg(ratio, 0, 'f', 2);
                }
            }
        }
    }
    service.setTheme(QStringLiteral("dark"));
    service.setRiseFall(RiseFall::RedUp);
    EXPECT_GT(measured, 500);
    EXPECT_EQ(tooWeak.join(QLatin1Char('\n')).toStdString(), "");
}
