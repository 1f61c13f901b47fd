#include "account/caccountcolumndelegate.h"

#include <QtGui/QPainter>

#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int height = 26;
constexpr int checkWidth = 30; ///< where a click means the box
constexpr int checkSide = 14;
constexpr int lockWidth = 30;
constexpr int gripWidth = 22;
constexpr int dotSize = 2;

QRect centred(const QRect &area, const QSize &size)
{
    return QRect(area.left() + (area.width() - size.width()) / 2, area.top() + (area.height() - size.height()) / 2,
                 size.width(), size.height());
}

} // namespace

CAccountColumnDelegate::CAccountColumnDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

CAccountColumnDelegate::~CAccountColumnDelegate() = default;

void CAccountColumnDelegate::setLook(const AccountColumnLook &newLook)
{
    look = newLook;
}

int CAccountColumnDelegate::lineHeight()
{
    return ZB::scaled(height);
}

QRect CAccountColumnDelegate::partArea(const QRect &line, Part part)
{
    const int check = ZB::scaled(checkWidth);
    const int lock = ZB::scaled(lockWidth);
    const int lockLeft = line.right() + 1 - ZB::scaled(gripWidth) - lock;
    switch (part) {
    case Part::Check:
        return QRect(line.left(), line.top(), check, line.height());
    case Part::Lock:
        return QRect(lockLeft, line.top(), lock, line.height());
    default:
        return QRect(line.left() + check, line.top(), lockLeft - line.left() - check, line.height());
    }
}

CAccountColumnDelegate::Part CAccountColumnDelegate::partAt(const QRect &line, const QPoint &place)
{
    for (const Part part : {Part::Check, Part::Lock})
        if (partArea(line, part).contains(place))
            return part;
    return Part::Name;
}

QSize CAccountColumnDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return QSize(0, lineHeight());
}

void CAccountColumnDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                   const QModelIndex &index) const
{
    const bool selected = option.state & QStyle::State_Selected;
    const bool hovered = option.state & QStyle::State_MouseOver;
    const bool locked = index.data(LockedRole).toBool();
    const bool checked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    painter->save();
    painter->fillRect(option.rect, selected ? look.selected : hovered ? look.hover : look.background);
    if (selected && option.state & QStyle::State_HasFocus) {
        painter->setPen(look.accent);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    paintCheck(*painter, partArea(option.rect, Part::Check), checked, locked);
    const QRect name = partArea(option.rect, Part::Name);
    painter->setFont(look.font);
    painter->setPen(checked ? look.text : look.dimText);
    painter->drawText(name, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetrics(look.font).elidedText(index.data().toString(), Qt::ElideRight, name.width()));
    const QPixmap &image = locked ? look.locked : look.unlocked;
    if (!locked)
        painter->setOpacity(selected || hovered ? 0.8 : 0.3);
    painter->drawPixmap(centred(partArea(option.rect, Part::Lock), image.size() / image.devicePixelRatio()).topLeft(),
                        image);
    painter->setOpacity(1);
    if (!locked)
        paintGrip(*painter, option.rect);
    painter->restore();
}

void CAccountColumnDelegate::paintCheck(QPainter &painter, const QRect &area, bool checked, bool locked) const
{
    const QRectF box =
        QRectF(centred(area, QSize(ZB::scaled(checkSide), ZB::scaled(checkSide)))).adjusted(0.5, 0.5, -0.5, -0.5);
    const QColor fill = locked ? look.disabledFill : look.fill;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(checked ? fill : look.dimText);
    painter.setBrush(checked ? fill : look.background);
    painter.drawRoundedRect(box, ZB::scaled(2), ZB::scaled(2));
    if (checked) {
        const auto at = [&box](qreal x, qreal y) {
            return QPointF(box.left() + box.width() * x, box.top() + box.height() * y);
        };
        painter.setPen(QPen(look.onFill, box.width() / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF({at(0.22, 0.52), at(0.43, 0.74), at(0.80, 0.28)}));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void CAccountColumnDelegate::paintGrip(QPainter &painter, const QRect &line) const
{
    const int dot = ZB::scaled(dotSize);
    const QRect area(line.right() + 1 - ZB::scaled(gripWidth), line.top(), ZB::scaled(gripWidth), line.height());
    const QRect dots = centred(area, QSize(3 * dot, 8 * dot - 3 * dot));
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 2; ++column)
            painter.fillRect(dots.left() + 2 * column * dot, dots.top() + 2 * row * dot, dot, dot, look.dimText);
}

} // namespace KV
