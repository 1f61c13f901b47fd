#pragma once

#include <QtWidgets/QWidget>

#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

/// Base of the library's self-painted controls: a widget with host events and theme changes, which takes its background
/// from style sheets.
class HOST_API CBaseWidget : public CEventWidgetT<QWidget>, public CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit CBaseWidget(QWidget *parent = nullptr, const QString &objectName = QString());
    ~CBaseWidget() override;

    void themeChanged() override;
    void scaleChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace ZB
