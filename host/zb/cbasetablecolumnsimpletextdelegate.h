#pragma once

#include "zb/cbasetablecolumnwidgetdelegate.h"

namespace ZB {

/// A delegate whose cells stay text, with something painted behind it.
class HOST_API CBaseTableColumnSimpleTextDelegate : public CBaseTableColumnWidgetDelegate
{
public:
    CBaseTableColumnSimpleTextDelegate(int columnId, CEventDeliverer *parent);
    ~CBaseTableColumnSimpleTextDelegate() override;

    bool paintCell(const CTableCell &cell, QPainter *painter) override;

    /// The text to draw for a cell's text; the text itself unless overridden.
    virtual QString getText(const QString &text) const;

protected:
    /// Paints behind the text. `rect` is the cell; the last argument tells whether its row is selected. Paints nothing
    /// unless overridden.
    virtual void handlePaint(const QString &text, const QRect &rect, QPainter *painter, bool selected);
};

} // namespace ZB
