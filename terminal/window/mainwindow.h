#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>
#include <vector>

#include "window/framemeter.h"
#include "window/stallmeter.h"
#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

class QStackedWidget;

namespace terminal {

class AccountPage;
class FeedPump;
class LogPage;
class MarketPage;
class Page;
class StatusBar;
class TicketPanel;
class TopBar;
class TradePage;
class WindowDialogs;

/// The terminal's window: bars at top and bottom, one of the pages between them. The last stop of host events.
class MainWindow : public ZB::CEventWidgetT<QWidget>, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    /// Connects the pages to the pump, which has to outlive the window and must not have been started.
    explicit MainWindow(FeedPump &pump);
    ~MainWindow() override;

    TopBar &topBar() const { return *top; }
    StatusBar &statusBar() const { return *status; }
    MarketPage &marketPage() const { return *market; }
    TradePage &tradePage() const { return *trade; }
    TicketPanel &ticketPanel() const { return *ticket; }
    AccountPage &accountPage() const { return *accounts; }
    LogPage &logPage() const { return *log; }
    const std::vector<Page *> &pages() const { return allPages; }
    Page &currentPage() const;
    /// Brings a page to the front and gives it the keyboard. A number without a page is ignored.
    void showPage(int number);
    void showPage(const Page &page);

    const FrameMeter &frames() const { return frameMeter; }
    StallMeter &stalls() { return stallMeter; }

    /// Size at 100 %; the window gets that size at the present scale.
    void resizeScaled(const QSize &size);
    /// Shows everything that has come so far, now.
    void showNow();
    /// Whether nothing is on its way to a page any more. To be asked again until it is so.
    bool isSettled();

    /// From and to the user's configuration.
    void loadState();
    void saveState() const;

    void themeChanged() override;

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addPage(Page *page);
    void addShortcuts();
    void refresh();

    FrameMeter frameMeter;
    StallMeter stallMeter;
    TopBar *top;
    QStackedWidget *stack;
    std::vector<Page *> allPages; ///< in the order of their tabs; children of the stack
    MarketPage *market;
    TradePage *trade;
    TicketPanel *ticket;
    AccountPage *accounts;
    LogPage *log;
    StatusBar *status;
    WindowDialogs *dialogs;
    QTimer refreshTimer;
};

} // namespace terminal
