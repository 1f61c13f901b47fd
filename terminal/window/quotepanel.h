#pragma once

#include "window/tablepanel.h"
#include "zb/ceventdeliverer.h"

namespace terminal {

/// The quote list: every instrument that has a quote, with flashing prices, coloured by their direction.
class QuotePanel : public TablePanel, public ZB::CEventDeliverer
{
    Q_OBJECT

public:
    explicit QuotePanel(QWidget *parent = nullptr);
    ~QuotePanel() override;

    /// Makes an instrument's row the current one, as soon as there is one.
    void setCurrentCode(const QString &code);
    void take(const FeedPump::Records &records) override;
    void refresh() override;

    /// The table's events end here.
    bool handleEvent(int event, int first, int second, QString text, void *data) override;

Q_SIGNALS:
    /// The user went to a row.
    void codeChosen(const QString &code);
    /// The user double-clicked a row.
    void codeActivated(const QString &code);

private:
    QString awaited; ///< code that is to be the current one, without a row yet
};

} // namespace terminal
