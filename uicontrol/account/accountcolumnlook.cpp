#include "account/accountcolumnlook.h"

#include "zb/cuiresource.h"

namespace KV {

AccountColumnLook AccountColumnLook::fromResources()
{
    ZB::CUiResource *resource = ZB::CUiResource::instance();
    const auto color = [resource](const char *key) { return *resource->getColor(QLatin1String(key)); };
    AccountColumnLook look;
    look.font = *resource->getFont(QStringLiteral("fnt_table_text_default"));
    look.background = color("clr_table_background");
    look.border = color("clr_border");
    look.text = color("clr_text_default");
    look.dimText = color("clr_text_second");
    look.hover = color("clr_background_hover");
    look.selected = color("clr_table_background_selected");
    look.accent = color("clr_accent");
    look.fill = color("clr_accent_fill");
    look.onFill = color("clr_text_on_fill");
    look.disabledFill = color("clr_text_disabled");
    look.locked = *resource->getPixmap(QStringLiteral("img_lock"));
    look.unlocked = *resource->getPixmap(QStringLiteral("img_unlock"));
    return look;
}

} // namespace KV
