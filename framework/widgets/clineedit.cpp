#include "zb/clineedit.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFrame>

#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

/// Where QLineEdit itself starts to write, from the edge of its contents.
constexpr int textMargin = 2;

QColor resourceColor(const char *key)
{
    return *CUiResource::instance()->getColor(QLatin1String(key));
}

} // namespace

CLineEdit::CLineEdit(int eventId, QWidget *parent)
    : CEventWidgetT<QLineEdit>(parent), id(eventId), fontKey(QStringLiteral("fnt_default_normal"))
{
    CLineEdit::themeChanged();
}

CLineEdit::~CLineEdit() = default;

int CLineEdit::eventId() const
{
    return id;
}

void CLineEdit::setEmptyHintText(const QString &text)
{
    if (hint == text)
        return;
    hint = text;
    if (accessibleName().isEmpty())
        setAccessibleName(text);
    update();
}

QString CLineEdit::emptyHintText() const
{
    return hint;
}

void CLineEdit::setTextFontKey(const QString &key)
{
    if (fontKey == key)
        return;
    fontKey = key;
    themeChanged();
}

void CLineEdit::setBorderWidth(int pixels)
{
    if (border == pixels || pixels < 0)
        return;
    border = pixels;
    themeChanged();
}

void CLineEdit::setWarning(bool on)
{
    if (warning == on)
        return;
    warning = on;
    themeChanged();
}

void CLineEdit::themeChanged()
{
    setStyleSheet(styleText());
    setFont(*CUiResource::instance()->getFont(fontKey));
    updateGeometry();
    update();
}

/// The font stands in the sheet too: a program-wide sheet would win over setFont().
QString CLineEdit::styleText() const
{
    const QFont font = *CUiResource::instance()->getFont(fontKey);
    QString sheet = CStyleSheetCenter::getStyle(QStringLiteral("QLineEdit"));
    sheet += QStringLiteral("QLineEdit { font-family: \"%1\"; font-size: %2px; font-weight: %3; border-width: %4px; }")
                 .arg(font.family())
                 .arg(font.pixelSize())
                 .arg(font.bold() ? QStringLiteral("bold") : QStringLiteral("normal"))
                 .arg(border);
    if (border == 0)
        sheet += QStringLiteral(
            "QLineEdit, QLineEdit:disabled { background: transparent; border: none; padding: 0; min-height: 0; }");
    if (warning) // also under the keyboard, which goes to a field that is wrong
        sheet += QStringLiteral("QLineEdit, QLineEdit:hover, QLineEdit:focus { border-color: %1; }")
                     .arg(resourceColor("clr_text_error").name());
    return sheet;
}

/// Qt writes a placeholder in the colour that a style sheet gives to texts, where it reads like a text; so it is
/// written here.
void CLineEdit::paintEvent(QPaintEvent *event)
{
    CEventWidgetT<QLineEdit>::paintEvent(event);
    if (!text().isEmpty() || hint.isEmpty())
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect inside = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    QFont quiet = font(); // a hint is no heading, whatever the text is
    quiet.setBold(false);
    QPainter painter(this);
    painter.setFont(quiet);
    painter.setPen(resourceColor(isEnabled() ? "clr_lineedit_placeholder" : "clr_text_disabled"));
    const Qt::Alignment side = alignment() & Qt::AlignHorizontal_Mask; // where the text will stand
    painter.drawText(inside.adjusted(textMargin, 0, -textMargin, 0), int(Qt::AlignVCenter | side),
                     painter.fontMetrics().elidedText(hint, Qt::ElideRight, inside.width() - 2 * textMargin));
}

} // namespace ZB
