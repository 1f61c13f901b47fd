#include "table/chpfprogressdelegate.h"

#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QPainter>

#include "zb/cuiresource.h"

namespace KV {

CHpfProgressDelegate::CHpfProgressDelegate(int columnId, ZB::CEventDeliverer *parent)
    : ZB::CBaseTableColumnSimpleTextDelegate(columnId, parent)
{
}

CHpfProgressDelegate::~CHpfProgressDelegate() = default;

QString CHpfProgressDelegate::getText(const QString &text) const
{
    return text;
}

/// A number's text without its unit: done and total are in the same one.
QString CHpfProgressDelegate::cutStr(const QString &text)
{
    QString number = text;
    const int unit = number.indexOf(QChar(u'万'));
    return unit < 0 ? number : number.remove(unit, 1);
}

void CHpfProgressDelegate::handlePaint(const QString &text, const QRect &rect, QPainter *painter, bool)
{
    const QStringList parts = text.split(QStringLiteral(" / "));
    if (parts.size() != 2)
        return;
    const double done = cutStr(parts.first()).toDouble();
    const double total = cutStr(parts.last()).toDouble();
    if (!(done > 0 && total > 0))
        return;
    // More than all is shown as all; written so that an infinity over an infinity, too, stays inside the cell.
    const double width = rect.width() * done / total;
    const int pixels = width < rect.width() ? static_cast<int>(width) : rect.width();
    painter->save();
    painter->fillRect(QRect(rect.left(), rect.top(), pixels, rect.height()),
                      *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_task_progress_background")));
    painter->restore();
}

} // namespace KV
