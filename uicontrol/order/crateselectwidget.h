#pragma once

#include <QtCore/QPointer>

#include "kdservice/evxtradertype.h"
#include "order/eratereference.h"
#include "uicontrolexport.h"
#include "zb/cwidgetlist.h"
#include "zb/enormalbuttontype.h"

namespace ZB {
class CRadioButtonGroup;
class CSmallNormalButton;
} // namespace ZB

namespace KV {

/// Sizes an order by a fraction of an amount: a button that switches between the available and the total amount, and
/// the fractions all, 1/2, 1/3 and 1/4 (ids 1 to 4). GUI thread.
///
/// Delivers 1073 (0, 0, empty text, null) when the amount is switched, and passes the event of the fractions' group on;
/// both mean that the order is to be sized anew. Takes every event 5 for itself. Does without a part of it that has
/// been deleted. The button takes no focus: on the fractions the key * clicks it.
class UICONTROL_API CRateSelectWidget : public ZB::CWidgetList
{
    Q_OBJECT

public:
    explicit CRateSelectWidget(QWidget *parent = nullptr);
    ~CRateSelectWidget() override;

    /// Id of the chosen fraction; -1 without one, and without the fractions.
    int getCheckedButtonID() const;
    /// An id that is no fraction's lets the choice go. No event.
    void setButtonCheckedByID(int id);

    ERateReference getRateReference() const;
    /// No event.
    void setRateReference(ERateReference reference);
    /// Which accounts it is for decides what the total amount is called: assets of TraderStock and TraderOption, equity
    /// of TraderFuture; any other type leaves the words that are there.
    void setTradeType(kdservice::EVxTraderType type);
    /// Of the button that switches.
    void setBtnType(ZB::ENormalButtonType type);

    bool handleEvent(int event, int first, int second, QString text, void *pointer) override;
    void scaleChanged() override;

protected:
    void createUi();
    void updateButtonText();
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fixSizes();

    kdservice::EVxTraderType tradeType = kdservice::TraderStock;
    QPointer<ZB::CSmallNormalButton> referenceButton;
    QPointer<ZB::CRadioButtonGroup> rateGroup;
    ERateReference rateReference = RateOfAvailable;
};

} // namespace KV
