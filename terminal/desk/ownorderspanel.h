#pragma once

#include "desk/ownrecordspanel.h"

namespace terminal {

class BarButton;

/// Own orders: a double-click withdraws one, the buttons in the title withdraw many.
class OwnOrdersPanel : public OwnRecordsPanel
{
    Q_OBJECT

public:
    enum class Command
    {
        CancelBuys,
        CancelSells,
        CancelAll,
        Reprice,
        CloseAll
    };

    explicit OwnOrdersPanel(QWidget *parent = nullptr);
    ~OwnOrdersPanel() override;

    /// Number of the order in the current row; 0 for none.
    qint64 currentOrder() const;
    /// At the right end of the title; its menu is its owner's.
    BarButton &settingsButton() const { return *buttons.back(); }

    void themeChanged() override;

Q_SIGNALS:
    void commanded(terminal::OwnOrdersPanel::Command command);

private:
    void addCommands();
    void applyLook();

    std::vector<BarButton *> buttons;
};

} // namespace terminal
