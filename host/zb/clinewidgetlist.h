#pragma once

#include "zb/cwidgetlist.h"

namespace ZB {

/// A widget list on a ground of the line colour: its margins show as a frame, its spacing as lines between neighbours.
class HOST_API CLineWidgetList : public CWidgetList
{
    Q_OBJECT

public:
    explicit CLineWidgetList(Qt::Orientation orientation, QWidget *parent = nullptr,
                             const QString &objectName = QString());
    ~CLineWidgetList() override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace ZB
