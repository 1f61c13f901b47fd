#include "zb/cbasewidget.h"

#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOption>

namespace ZB {

CBaseWidget::CBaseWidget(QWidget *parent, const QString &objectName) : CEventWidgetT<QWidget>(parent)
{
    setObjectName(objectName);
}

CBaseWidget::~CBaseWidget() = default;

void CBaseWidget::themeChanged()
{
    update();
}

void CBaseWidget::scaleChanged()
{
    updateGeometry();
    themeChanged();
}

/// A class derived from QWidget gets the background of its style sheet only by drawing it.
void CBaseWidget::paintEvent(QPaintEvent *)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

} // namespace ZB
