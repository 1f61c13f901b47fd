#include "window/ladderheader.h"

#include <QtGui/QPainter>

#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int headerHeight = 36;
constexpr int margin = 8;

} // namespace

LadderHeader::LadderHeader(QWidget *parent) : QWidget(parent)
{
    applyLook();
}

LadderHeader::~LadderHeader() = default;

void LadderHeader::setInstrument(const QString &code, const QString &name)
{
    if (code == shownCode && name == shownName)
        return;
    shownCode = code;
    shownName = name;
    setToolTip(name);
    update();
}

void LadderHeader::themeChanged()
{
    applyLook();
}

void LadderHeader::applyLook()
{
    setFixedHeight(ZB::scaled(headerHeight));
    update();
}

/// Recordings often know no names: the code stands in the name's place then.
void LadderHeader::paintEvent(QPaintEvent *)
{
    ZB::CUiResource *resources = ZB::CUiResource::instance();
    QPainter painter(this);
    painter.fillRect(rect(), *resources->getColor(QStringLiteral("clr_background")));
    QRect room = rect().adjusted(ZB::scaled(margin), 0, -ZB::scaled(margin), 0);
    if (!shownName.isEmpty()) {
        painter.setFont(*resources->getFont(QStringLiteral("fnt_table_number_default")));
        painter.setPen(*resources->getColor(QStringLiteral("clr_text_second")));
        painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter, shownCode);
        room.setRight(room.right() - painter.fontMetrics().horizontalAdvance(shownCode) - ZB::scaled(margin));
    }
    painter.setFont(*resources->getFont(QStringLiteral("fnt_quote_stockname")));
    painter.setPen(*resources->getColor(QStringLiteral("clr_text_default")));
    const QString title = shownName.isEmpty() ? shownCode : shownName;
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(title, Qt::ElideRight, room.width()));
}

} // namespace terminal
