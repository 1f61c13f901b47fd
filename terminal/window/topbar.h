#pragma once

#include <QtWidgets/QWidget>
#include <functional>
#include <vector>

#include "window/windowlook.h"
#include "zb/cuiresourcechangehandler.h"

class QHBoxLayout;
class QSpacerItem;

namespace terminal {

class BarButton;
class BarLabel;
class FeedPump;

/// The slim bar at the top: what is played and how far it is, and the controls of speed and look.
class TopBar : public QWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    TopBar(FeedPump &pump, QWidget *parent);
    ~TopBar() override;

    /// Puts a tab behind those that are there.
    void addPage(const QString &title);
    void setCurrentPage(int number);
    /// What the data comes from, in a few words, and all of it for the tool tip.
    void setSource(const QString &text, const QString &details);
    /// Shows time and state of the feed. Called a few times a second.
    void refresh();

    void togglePause();
    void toggleTheme();
    /// One step along the list of speeds.
    void stepSpeed(bool faster);

    void themeChanged() override;

Q_SIGNALS:
    void layoutToggled();
    void pageChosen(int number);
    void aboutChosen();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Choice
    {
        QString text;
        bool current;
        std::function<void()> choose;
    };

    void addLabels(QHBoxLayout *layout);
    void addButtons(QHBoxLayout *layout);
    void addGap(QHBoxLayout *layout);
    BarButton *addButton(QHBoxLayout *layout, const QString &tip, const QString &shortcut);
    void openMenu(BarButton *button, const std::vector<Choice> &choices);
    void openSpeeds();
    void openRiseFall();
    void openScales();
    void setSpeed(double speed);
    QString stateText() const;
    void applyLook();
    void showChoices();

    FeedPump &pump;
    WindowLook look;
    BarLabel *productLabel = nullptr;
    BarLabel *sourceLabel = nullptr;
    BarLabel *timeLabel = nullptr;
    BarLabel *stateLabel = nullptr;
    QHBoxLayout *tabLayout = nullptr;
    std::vector<BarButton *> tabs;
    BarButton *speedButton = nullptr;
    BarButton *pauseButton = nullptr;
    BarButton *layoutButton = nullptr;
    BarButton *riseFallButton = nullptr;
    BarButton *themeButton = nullptr;
    BarButton *scaleButton = nullptr;
    BarButton *aboutButton = nullptr;
    std::vector<QSpacerItem *> gaps; ///< between the labels; the layout owns them
};

} // namespace terminal
