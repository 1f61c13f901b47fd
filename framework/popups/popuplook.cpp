#include "popups/popuplook.h"

#include <QtGui/QFontInfo>

#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

QColor opaque(QColor color)
{
    color.setAlpha(255);
    return color;
}

} // namespace

QColor mixed(const QColor &from, const QColor &to, int share)
{
    const auto part = [share](int a, int b) { return a + (b - a) * share / 1000; };
    return QColor(part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue()));
}

PopupLook PopupLook::fromResources()
{
    CUiResource *resource = CUiResource::instance();
    const auto color = [resource](const char *key) { return *resource->getColor(QLatin1String(key)); };
    PopupLook look;
    look.font = *resource->getFont(QStringLiteral("fnt_table_text_default"));
    look.numberFont = *resource->getFont(QStringLiteral("fnt_table_number_default"));
    look.background = opaque(color("clr_table_background"));
    look.raised = opaque(color("clr_table_column_header_nomal"));
    look.border = opaque(color("clr_table_split_line"));
    look.text = opaque(color("clr_text_default"));
    look.dimText = opaque(color("clr_table_header_text"));
    look.hover = opaque(color("clr_table_column_header_hover"));
    look.pressed = opaque(color("clr_table_column_header_press"));
    look.accent = opaque(color("clr_task_progress_background"));
    look.accentText = look.background;
    look.selected = opaque(color("clr_table_background_selected"));
    look.link = opaque(color("clr_text_link"));
    look.warning = opaque(color("clr_global_rise"));
    return look;
}

QString PopupLook::sheet() const
{
    return CStyleSheetCenter::getStyle(QStringLiteral("QDialog")) +
           QStringLiteral("* { font-family: \"%3\"; font-size: %4px; }"
                          "QPushButton[link=\"true\"] { min-width: 0; }"
                          "QLabel[dim=\"true\"] { color: %1; }"
                          "QLabel[title=\"true\"] { font-weight: bold; }"
                          "QLineEdit[failed=\"true\"] { border-color: %2; }")
               .arg(dimText.name(), warning.name(), font.family(), QString::number(QFontInfo(font).pixelSize()));
}

} // namespace ZB
