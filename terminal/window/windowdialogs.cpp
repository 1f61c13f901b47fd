#include "window/windowdialogs.h"

#include <QtWidgets/QWidget>

#include "dialog/caboutdialog.h"
#include "dialog/csendlogwidget.h"

namespace terminal {

WindowDialogs::WindowDialogs(QWidget *owner) : QObject(owner), window(owner) {}

WindowDialogs::~WindowDialogs() = default;

void WindowDialogs::showAbout()
{
    if (about == nullptr)
        about = new KV::CAboutDialog(window);
    about->show();
    about->raise();
    about->activateWindow();
}

void WindowDialogs::showSendLog()
{
    if (sendLog == nullptr)
        sendLog = new KV::CSendLogWidget(window);
    sendLog->show();
    sendLog->raise();
    sendLog->activateWindow();
}

} // namespace terminal
