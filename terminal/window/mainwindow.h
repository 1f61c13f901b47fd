#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include "window/framemeter.h"
#include "window/stallmeter.h"
#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace terminal {

class FeedPump;
class MarketPage;
class StatusBar;
class TopBar;

/// The terminal's window: bars at top and bottom, the page between them. The last stop of host events.
class MainWindow : public ZB::CEventWidgetT<QWidget>, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    /// Connects the page to the pump, which has to outlive the window and must not have been started.
    explicit MainWindow(FeedPump &pump);
    ~MainWindow() override;

    TopBar &topBar() const { return *top; }
    StatusBar &statusBar() const { return *status; }
    MarketPage &marketPage() const { return *market; }
    /// Names of the pages, fit for file names.
    QStringList pageNames() const { return {QStringLiteral("market")}; }

    const FrameMeter &frames() const { return frameMeter; }
    StallMeter &stalls() { return stallMeter; }

    /// Size at 100 %; the window gets that size at the present scale.
    void resizeScaled(const QSize &size);
    /// Shows everything that has come so far, now.
    void showNow();

    /// From and to the user's configuration.
    void loadState();
    void saveState() const;

    void themeChanged() override;

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addShortcuts();
    void refresh();

    FrameMeter frameMeter;
    StallMeter stallMeter;
    TopBar *top;
    MarketPage *market;
    StatusBar *status;
    QTimer refreshTimer;
};

} // namespace terminal
