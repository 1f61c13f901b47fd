#include "dialog/dialoglook.h"

#include <QtCore/QSize>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QFontInfo>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

const char lookProperty[] = "look";
const char scaleProperty[] = "fittedScale";
constexpr int fullScale = 1000;

QString fontRule(const char *key)
{
    const QFont font = *ZB::CUiResource::instance()->getFont(QLatin1String(key));
    return QStringLiteral("font-family: \"%1\"; font-size: %2px; font-weight: %3;")
        .arg(font.family())
        .arg(QFontInfo(font).pixelSize())
        .arg(font.bold() ? QStringLiteral("bold") : QStringLiteral("normal"));
}

QString colorRule(const char *key)
{
    return QStringLiteral("color: %1;").arg(ZB::CUiResource::instance()->getColor(QLatin1String(key))->name());
}

} // namespace

QString dialogStyleSheet()
{
    return ZB::CStyleSheetCenter::getStyle(QStringLiteral("QDialog")) +
           QStringLiteral("* { %1 } QLabel { %2 }").arg(fontRule("fnt_default_normal"), colorRule("clr_text_default")) +
           QStringLiteral("QLabel[look=\"title\"] { %1 }").arg(fontRule("fnt_quote_stockname")) +
           QStringLiteral("QLabel[look=\"bold\"] { %1 }").arg(fontRule("fnt_default_bold")) +
           QStringLiteral("QLabel[look=\"dim\"] { %1 }").arg(colorRule("clr_text_second")) +
           QStringLiteral("QLabel[look=\"warning\"] { %1 %2 }")
               .arg(fontRule("fnt_default_bold"), colorRule("clr_text_default")) +
           QStringLiteral("QLabel[look=\"error\"] { %1 }").arg(colorRule("clr_text_error"));
}

void setLabelLook(QLabel *label, const QString &look)
{
    if (label->property(lookProperty).toString() == look)
        return;
    label->setProperty(lookProperty, look);
    label->style()->unpolish(label);
    label->style()->polish(label);
}

QLabel *plainLabel(const QString &text, const QString &look, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    setLabelLook(label, look);
    return label;
}

QPushButton *dialogButton(const QString &text, bool isLink, QWidget *parent)
{
    auto *made = new QPushButton(text, parent);
    made->setFlat(isLink);
    made->setAutoDefault(false);
    return made;
}

/// The least size is still that of the old measures: the layout sets the new one when it comes to it.
void fitToScale(QWidget *window, const QSize &usual)
{
    const int scale = ZB::scaled(fullScale);
    const int former = window->property(scaleProperty).toInt();
    if (scale == former)
        return;
    window->setProperty(scaleProperty, scale);
    window->setMinimumSize(0, 0);
    window->resize(former == 0 ? usual * scale / fullScale : window->size() * scale / former);
}

} // namespace KV
