#include "window/ticketpanel.h"

#include <QtGui/QPainter>

#include "window/ticketform.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int panelWidth = 300;

} // namespace

TicketPanel::TicketPanel(QWidget *parent) : Panel(QStringLiteral("下单"), parent), ticket(new TicketForm(this))
{
    setContents(ticket);
    fixWidth();
}

TicketPanel::~TicketPanel() = default;

void TicketPanel::refresh()
{
    ticket->refresh();
}

void TicketPanel::themeChanged()
{
    fixWidth();
    Panel::themeChanged();
}

/// The fields have their widths; more room would only tear them apart.
void TicketPanel::fixWidth()
{
    setFixedWidth(ZB::scaled(panelWidth));
}

void TicketPanel::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(rect(), *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_background")));
    Panel::paintEvent(event);
}

} // namespace terminal
