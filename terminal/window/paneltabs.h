#pragma once

#include <QtWidgets/QStackedWidget>
#include <vector>

#include "zb/cuiresourcechangehandler.h"

class QHBoxLayout;

namespace terminal {

class BarButton;
class Panel;

/// Panels in one place, one of them in front (QFrame has a "Panel" of its own, so the class goes by its full name
/// here). The tabs stand in the title bars of the panels, in the place of their captions, so that no room is lost.
class PanelTabs : public QStackedWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit PanelTabs(QWidget *parent = nullptr);
    ~PanelTabs() override;

    /// Becomes the panel's parent; the first one is in front.
    void addPanel(terminal::Panel *panel, const QString &title);
    /// Null without panels.
    terminal::Panel *currentPanel() const;
    /// Brings a panel to the front and gives it the keyboard. A number without a panel is ignored.
    void showPanel(int number);
    QStringList titles() const { return allTitles; }

    void themeChanged() override;

private:
    /// The tabs in the title bar of one panel.
    struct Strip
    {
        QWidget *bar;
        QHBoxLayout *layout;
        std::vector<BarButton *> buttons;
    };
    Strip makeStrip(terminal::Panel *panel);
    void addButton(Strip &strip, int owner, int number);

    QStringList allTitles;
    std::vector<Strip> strips; ///< by the number of the panel
};

} // namespace terminal
