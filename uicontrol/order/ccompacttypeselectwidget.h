#pragma once

#include <QtCore/QPointer>

#include "kdservice/eoperationtype.h"
#include "kdservice/evxcompactbrushsource.h"
#include "uicontrolexport.h"
#include "zb/cwidgetlist.h"

namespace ZB {
class CComboPushButton;
class CSimpleTextWidget;
} // namespace ZB

namespace KV {

/// The cell of the ticket in which the user picks where a contract comes from. The host fills the drop-down; an item's
/// index is the source's value. Does without a part of it that has been deleted. GUI thread.
class UICONTROL_API CCompactTypeSelectWidget : public ZB::CWidgetList
{
    Q_OBJECT

public:
    explicit CCompactTypeSelectWidget(QWidget *parent = nullptr);
    ~CCompactTypeSelectWidget() override;

    /// Index of the drop-down's item, -1 before it has any; CompactSourceNone without a drop-down.
    kdservice::EVXCompactBrushSource getCompactBrushSourceType() const;
    /// CompactSourceNone, and what the drop-down has no item for, keep the choice.
    void setCompactBrushSourceType(kdservice::EVXCompactBrushSource source);
    /// The sources are the same for every operation.
    void setOpType(kdservice::EOperationType type);
    /// Null once it has been deleted.
    ZB::CComboPushButton *getComboButton() const;

    void scaleChanged() override;

protected:
    void createUi();

private:
    void fixSizes();

    QPointer<ZB::CSimpleTextWidget> caption;
    QPointer<ZB::CComboPushButton> comboButton;
};

} // namespace KV
