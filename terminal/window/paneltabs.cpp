#include "window/paneltabs.h"

#include <QtWidgets/QHBoxLayout>

#include "window/barbutton.h"
#include "window/panel.h"

namespace terminal {

PanelTabs::PanelTabs(QWidget *parent) : QStackedWidget(parent) {}

PanelTabs::~PanelTabs() = default;

void PanelTabs::addPanel(terminal::Panel *panel, const QString &title)
{
    const int added = count();
    addWidget(panel);
    allTitles << title;
    for (int owner = 0; owner < added; ++owner)
        addButton(strips[static_cast<size_t>(owner)], owner, added);
    Strip strip = makeStrip(panel);
    for (int number = 0; number <= added; ++number)
        addButton(strip, added, number);
    strips.push_back(std::move(strip));
}

PanelTabs::Strip PanelTabs::makeStrip(terminal::Panel *panel)
{
    Strip strip;
    strip.bar = new QWidget(panel);
    strip.layout = new QHBoxLayout(strip.bar);
    strip.layout->setContentsMargins(0, 0, 0, 0);
    strip.layout->setSpacing(0);
    strip.bar->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    panel->replaceCaption(strip.bar);
    return strip;
}

/// The button of the panel in whose bar it stands stays pressed: while it is seen, that panel is in front.
void PanelTabs::addButton(Strip &strip, int owner, int number)
{
    auto *button = new BarButton(strip.bar);
    button->setText(allTitles[number]);
    button->setCheckable(true);
    button->setChecked(owner == number);
    button->setLook(WindowLook::fromResources());
    strip.layout->addWidget(button);
    strip.buttons.push_back(button);
    connect(button, &BarButton::clicked, this, [this, button, owner, number] {
        button->setChecked(owner == number);
        showPanel(number);
    });
}

terminal::Panel *PanelTabs::currentPanel() const
{
    return static_cast<terminal::Panel *>(currentWidget());
}

void PanelTabs::showPanel(int number)
{
    if (number < 0 || number >= count())
        return;
    setCurrentIndex(number);
    currentPanel()->refresh();
    currentPanel()->setFocus(Qt::OtherFocusReason);
}

void PanelTabs::themeChanged()
{
    const WindowLook look = WindowLook::fromResources();
    for (const Strip &strip : strips)
        for (BarButton *button : strip.buttons)
            button->setLook(look);
}

} // namespace terminal
