#include "window/windowdialogs.h"

#include <QtWidgets/QWidget>

#include "dialog/caboutdialog.h"
#include "dialog/clogpackfolder.h"
#include "dialog/csendlogwidget.h"
#include "net/rpcengine.h"

namespace terminal {

/// What a program that was killed has left in the temporary folder goes at the next start.
WindowDialogs::WindowDialogs(QWidget *owner) : QObject(owner), window(owner)
{
    net::RPCEngine::instance()->getStrand("uicontrol_send_log")->post([] { KV::CLogPackFolder::removeLeftOvers(); });
}

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
