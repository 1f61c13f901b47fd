#include "window/ticketpanel.h"

#include <QtGui/QPainter>
#include <QtWidgets/QScrollArea>

#include "window/ticketform.h"
#include "window/tradepage.h"
#include "zb/cstandscrollbar.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int panelWidth = 300;
constexpr int leastFormWidth = 240;

} // namespace

TicketPanel::TicketPanel(QWidget *parent) : Panel(QStringLiteral("下单"), parent), ticket(new TicketForm)
{
    auto *scroll = new QScrollArea(this); // on a low screen the button must not be out of reach
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBar(new ZB::CStandScrollBar(0, Qt::Vertical, scroll));
    scroll->setWidgetResizable(true);
    scroll->setWidget(ticket);
    scroll->viewport()->setAutoFillBackground(false);
    ticket->setAutoFillBackground(false);
    setContents(scroll);
    scroll->setFocusProxy(ticket);
    fixWidth();
}

TicketPanel::~TicketPanel() = default;

void TicketPanel::follow(TradePage &followed)
{
    page = &followed;
    connect(page, &TradePage::currentCodeChanged, ticket, &TicketForm::setCode);
    connect(page, &TradePage::codeActivated, ticket, [this](const QString &code) {
        ticket->setCode(code);
        ticket->startEntry();
    });
    connect(page, &TradePage::ladderClicked, this,
            [this](int event, int, int second, const QString &text) { takeLadderEvent(event, second, text); });
    connect(ticket, &TicketForm::codeChosen, page, [this](const QString &code) { page->setCurrentCode(code); });
    ticket->setCode(page->currentCode());
}

/// What was clicked is of the ladder's instrument, whatever the ticket was about.
void TicketPanel::takeLadderEvent(int event, int second, const QString &text)
{
    if (!TicketForm::isLadderEvent(event))
        return;
    ticket->setCode(page->currentCode());
    ticket->takeLadderEvent(event, second, text);
}

void TicketPanel::refresh()
{
    if (page != nullptr && ticket->code() == page->currentCode()) {
        const feed::QuoteSnapshot *quote = page->currentQuote();
        ticket->setLastPrice(quote ? quote->last : feed::absent<double>);
    }
    ticket->refresh();
}

void TicketPanel::themeChanged()
{
    fixWidth();
    Panel::themeChanged();
}

QSize TicketPanel::sizeHint() const
{
    return QSize(minimumWidth(), Panel::sizeHint().height());
}

void TicketPanel::fixWidth()
{
    setMinimumWidth(ZB::scaled(panelWidth));
    ticket->setMinimumWidth(ZB::scaled(leastFormWidth)); // a long message is cut, and asks for no width
    updateGeometry();
}

void TicketPanel::paintEvent(QPaintEvent *event)
{
    QPainter(this).fillRect(rect(), *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_background")));
    Panel::paintEvent(event);
}

} // namespace terminal
