#include "window/windowlook.h"

#include "zb/cuiresource.h"

namespace terminal {

WindowLook WindowLook::fromResources()
{
    ZB::CUiResource *resource = ZB::CUiResource::instance();
    const auto color = [resource](const char *key) { return *resource->getColor(QLatin1String(key)); };
    WindowLook look;
    look.font = *resource->getFont(QStringLiteral("fnt_default_normal"));
    look.boldFont = *resource->getFont(QStringLiteral("fnt_default_bold"));
    look.numberFont = *resource->getFont(QStringLiteral("fnt_table_number_default"));
    look.background = color("clr_background");
    look.bar = color("clr_background_raised");
    look.hover = color("clr_background_hover");
    look.pressed = color("clr_background_pressed");
    look.line = color("clr_line");
    look.text = color("clr_text_default");
    look.dimText = color("clr_text_second");
    look.accent = color("clr_accent");
    look.error = color("clr_text_error");
    look.topBarHeight = ZB::scaled(36);
    look.titleHeight = ZB::scaled(28);
    look.statusBarHeight = ZB::scaled(26);
    look.gap = ZB::scaled(8);
    return look;
}

} // namespace terminal
