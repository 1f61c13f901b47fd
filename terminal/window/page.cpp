#include "window/page.h"

#include <QtWidgets/QApplication>
#include <algorithm>

#include "window/panel.h"

namespace terminal {

Page::Page(const QString &name, const QString &title, QWidget *parent)
    : QWidget(parent), pageName(name), pageTitle(title)
{
}

Page::~Page() = default;

void Page::refresh()
{
    for (Panel *panel : panels())
        panel->refresh();
}

void Page::showNow()
{
    for (Panel *panel : panels())
        panel->showNow();
    refresh();
}

void Page::focusNextPanel()
{
    std::vector<Panel *> shown = panels();
    shown.erase(std::remove_if(shown.begin(), shown.end(), [](const Panel *panel) { return panel->isHidden(); }),
                shown.end());
    if (shown.empty())
        return;
    const auto focused = std::find_if(shown.begin(), shown.end(), [](const Panel *panel) {
        return panel->isAncestorOf(QApplication::focusWidget());
    });
    const bool isLast = focused == shown.end() || focused + 1 == shown.end();
    (isLast ? shown.front() : *(focused + 1))->setFocus(Qt::TabFocusReason);
}

} // namespace terminal
