#pragma once

#include "uicontrolexport.h"
#include "zb/cbasetablecolumnsimpletextdelegate.h"

namespace KV {

/// Paints a progress bar behind a cell whose text is "done / total", both in one unit, such as "1.5万 / 3万": "5000 /
/// 1万" would show as done. Any other text, and one whose numbers are not both above 0, stays without a bar. GUI
/// thread.
class UICONTROL_API CHpfProgressDelegate : public ZB::CBaseTableColumnSimpleTextDelegate
{
public:
    CHpfProgressDelegate(int columnId, ZB::CEventDeliverer *parent);
    ~CHpfProgressDelegate() override;

    QString getText(const QString &text) const override;

protected:
    void handlePaint(const QString &text, const QRect &rect, QPainter *painter, bool selected) override;

private:
    static QString cutStr(const QString &text);
};

} // namespace KV
