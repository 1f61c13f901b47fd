#include "order/quotelook.h"

#include "zb/cuiresource.h"

namespace KV {

QuoteLook QuoteLook::fromResources()
{
    ZB::CUiResource *resources = ZB::CUiResource::instance();
    const auto color = [resources](const char *key) { return resources->getColor(QLatin1String(key)); };
    QuoteLook look{};
    look.nameFont = resources->getFont(QStringLiteral("fnt_quote_list_name"));
    look.numberFont = resources->getFont(QStringLiteral("fnt_quote_list_volumn_price"));
    look.background = color("clr_bidoffer_price_background");
    look.line = color("clr_quote_border_line");
    look.askArea = color("clr_quote_ask_backgroud");
    look.bidArea = color("clr_quote_bid_backgroud");
    look.middleBand = color("clr_quote_lastprice_backgroud");
    look.bestAsk = color("clr_quote_one_ask_background");
    look.bestBid = color("clr_quote_one_bid_background");
    look.hover = color("clr_quote_one_stock_price_back");
    look.text = color("clr_table_text_default");
    look.grey = color("clr_table_text_second");
    look.rise = color("clr_global_rise");
    look.fall = color("clr_global_fall");
    look.equal = color("clr_global_equal");
    look.askBar = color("clr_table_item_bg_fall");
    look.bidBar = color("clr_table_item_bg_rise");
    look.staleBar = color("clr_table_item_bg_stale");
    look.button = color("clr_btn_background_color");
    look.buttonHover = color("clr_background_hover");
    look.buttonBorder = color("clr_border");
    look.buttonText = color("clr_btn_text_color");
    look.cursor = color("clr_table_current_cell");
    look.warning = color("clr_text_error");
    return look;
}

} // namespace KV
