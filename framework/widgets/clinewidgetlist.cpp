#include "zb/clinewidgetlist.h"

#include <QtGui/QPainter>

#include "zb/cuiresource.h"

namespace ZB {

CLineWidgetList::CLineWidgetList(Qt::Orientation orientation, QWidget *parent, const QString &objectName)
    : CWidgetList(orientation, parent, objectName)
{
}

CLineWidgetList::~CLineWidgetList() = default;

void CLineWidgetList::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), *CUiResource::instance()->getColor(QStringLiteral("clr_border")));
}

} // namespace ZB
