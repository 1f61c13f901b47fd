#include "zb/cbasetablecolumnsimpletextdelegate.h"

namespace ZB {

CBaseTableColumnSimpleTextDelegate::CBaseTableColumnSimpleTextDelegate(int columnId, CEventDeliverer *parent)
    : CBaseTableColumnWidgetDelegate(columnId, parent)
{
}

CBaseTableColumnSimpleTextDelegate::~CBaseTableColumnSimpleTextDelegate() = default;

bool CBaseTableColumnSimpleTextDelegate::paintCell(const CTableCell &cell, QPainter *painter)
{
    handlePaint(cell.text, cell.rect, painter, cell.selected);
    return true;
}

QString CBaseTableColumnSimpleTextDelegate::getText(const QString &text) const
{
    return text;
}

void CBaseTableColumnSimpleTextDelegate::handlePaint(const QString &, const QRect &, QPainter *, bool) {}

} // namespace ZB
