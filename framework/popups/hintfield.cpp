#include "popups/hintfield.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFrame>

#include "zb/cuiresource.h"

namespace ZB {

HintField::HintField(const QString &hint, QWidget *parent) : QLineEdit(parent), shownHint(hint)
{
    setAccessibleName(hint);
}

QString HintField::hint() const
{
    return shownHint;
}

void HintField::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (!text().isEmpty())
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect inside = style()->subElementRect(QStyle::SE_LineEditContents, &option, this).adjusted(2, 0, -2, 0);
    QPainter painter(this);
    painter.setPen(*CUiResource::instance()->getColor(QStringLiteral("clr_table_header_text")));
    painter.drawText(inside, Qt::AlignVCenter, fontMetrics().elidedText(shownHint, Qt::ElideRight, inside.width()));
}

} // namespace ZB
