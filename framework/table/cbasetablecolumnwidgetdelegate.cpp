#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

CBaseTableColumnWidgetDelegate::CBaseTableColumnWidgetDelegate(int columnId, CEventDeliverer *parent)
    : CEventDeliverer(parent), column(columnId)
{
}

CBaseTableColumnWidgetDelegate::~CBaseTableColumnWidgetDelegate() = default;

int CBaseTableColumnWidgetDelegate::columnId() const
{
    return column;
}

bool CBaseTableColumnWidgetDelegate::clickCell(const CTableCell &, const QPoint &)
{
    return false;
}

} // namespace ZB
