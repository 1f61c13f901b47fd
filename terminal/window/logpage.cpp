#include "window/logpage.h"

#include <QtWidgets/QSplitter>
#include <QtWidgets/QVBoxLayout>

#include "window/logfilepanel.h"
#include "window/logpanel.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int programLogId = 201;
constexpr int fileLogId = 202;

} // namespace

LogPage::LogPage(QWidget *parent)
    : Page(QStringLiteral("log"), QStringLiteral("日志"), parent), splitter(new QSplitter(Qt::Vertical, this)),
      program(new LogPanel(QStringLiteral("程序日志"), programLogId, QStringLiteral("program"), splitter))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(ZB::scaled(4));
    program->offerSending();
    connect(program, &LogPanel::sendChosen, this, &LogPage::sendRequested);
    connect(&programLog, &ProgramLog::arrived, program, &LogPanel::add);
}

LogPage::~LogPage() = default;

void LogPage::follow(const QString &path)
{
    file = new LogFilePanel(path, fileLogId, splitter);
    splitter->insertWidget(0, file);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({300, 100});
    file->loadState();
    file->setFocus();
}

std::vector<Panel *> LogPage::panels() const
{
    return file ? std::vector<Panel *>{file, program} : std::vector<Panel *>{program};
}

bool LogPage::isSettled()
{
    return program->isSettled() && (!file || file->isSettled());
}

void LogPage::showNow()
{
    programLog.take();
    Page::showNow();
}

/// Side by side, or one above the other.
void LogPage::toggleLayout()
{
    const bool isStacked = splitter->orientation() == Qt::Vertical;
    splitter->setOrientation(isStacked ? Qt::Horizontal : Qt::Vertical);
}

void LogPage::loadState()
{
    program->loadState();
}

void LogPage::saveState() const
{
    program->saveState();
    if (file)
        file->saveState();
}

void LogPage::themeChanged()
{
    splitter->setHandleWidth(ZB::scaled(4));
}

} // namespace terminal
