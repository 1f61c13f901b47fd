#pragma once

#include <QtCore/QObject>

class QWidget;

namespace KV {
class CAboutDialog;
class CSendLogWidget;
} // namespace KV

namespace terminal {

/// The boxes that the window opens over itself, each made when it is asked for first. They go with the window.
class WindowDialogs : public QObject
{
    Q_OBJECT

public:
    explicit WindowDialogs(QWidget *window);
    ~WindowDialogs() override;

    void showAbout();
    void showSendLog();

private:
    QWidget *const window;
    KV::CAboutDialog *about = nullptr;
    KV::CSendLogWidget *sendLog = nullptr;
};

} // namespace terminal
