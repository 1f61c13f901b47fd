#pragma once

#include "window/tablepanel.h"
#include "zb/ceventdeliverer.h"

namespace terminal {

/// Orders or deals of the desk's accounts, of their present trading days, the newest first.
class OwnRecordsPanel : public TablePanel, public ZB::CEventDeliverer
{
    Q_OBJECT

public:
    ~OwnRecordsPanel() override;

    /// Takes away what the account did on other days.
    void beginDay(const QString &account, int day);
    /// Stands in the title until the next; empty for nothing.
    void say(const QString &text);
    /// Stands in front of that for good, as something that must not be forgotten; empty for nothing.
    void setMark(const QString &text);
    void refresh() override;
    bool handleEvent(int event, int first, int second, QString text, void *data) override;

Q_SIGNALS:
    /// The row with this number was double-clicked.
    void activated(qint64 number);

protected:
    OwnRecordsPanel(const QString &caption, int tableId, int metaId, int accountField, int dayField, QWidget *parent);

private:
    const int accountField;
    const int dayField;
    QString message;
    QString mark;
};

} // namespace terminal
