#include "window/statusbar.h"

#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <algorithm>
#include <cmath>

#include "window/barlabel.h"
#include "window/feedpump.h"
#include "window/framemeter.h"
#include "window/stallmeter.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

constexpr int messagesInToolTip = 12;

QString grouped(qint64 count)
{
    return ZB::formatLonglongNumber(count, 0, utils::FormatGroupDigits);
}

QString milliseconds(double time)
{
    return QStringLiteral("%1 ms").arg(time, 0, 'f', 1);
}

} // namespace

StatusBar::StatusBar(const FeedPump &feedPump, const FrameMeter &frameMeter, StallMeter &stallMeter, QWidget *parent)
    : QWidget(parent), pump(feedPump), frames(frameMeter), stalls(stallMeter)
{
    auto *layout = new QHBoxLayout(this);
    orders = addFigure(layout, QStringLiteral("委托"), QStringLiteral("0,000,000"));
    deals = addFigure(layout, QStringLiteral("成交"), QStringLiteral("0,000,000"));
    quotes = addFigure(layout, QStringLiteral("快照"), QStringLiteral("0,000,000"));
    rate = addFigure(layout, QStringLiteral("更新"), QStringLiteral("000,000/秒"));
    message = new BarLabel(BarLabel::Style::Error, this);
    message->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layout->addWidget(message, 1);
    frameTime = addFigure(layout, QStringLiteral("帧"), QStringLiteral("000.0 ms"));
    stall = addFigure(layout, QStringLiteral("卡顿"), QStringLiteral("000.0 ms"));
    problems = addFigure(layout, QStringLiteral("错误"), QStringLiteral("000"));
    frameTime->setDetails(QStringLiteral("最近 100 帧中 99% 不超过的绘制时间"));
    stall->setDetails(QStringLiteral("界面最近一次刷新以来的最长等待"));
    applyLook();
    sinceRate.start();
    refresh();
}

StatusBar::~StatusBar() = default;

BarLabel *StatusBar::addFigure(QHBoxLayout *layout, const QString &caption, const QString &widest)
{
    auto *name = new BarLabel(BarLabel::Style::Dim, this);
    auto *figure = new BarLabel(BarLabel::Style::Number, this);
    name->setText(caption);
    figure->setWidestText(widest);
    for (BarLabel *label : {name, figure}) {
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        layout->addWidget(label);
    }
    return figure;
}

void StatusBar::showMessage(const feed::FeedMessage &given)
{
    const QString text = QString::fromStdString(given.toText());
    lastMessages.append(text);
    if (lastMessages.size() > messagesInToolTip)
        lastMessages.removeFirst();
    const bool isWarning = given.severity == feed::FeedMessage::Severity::Warning;
    message->setStyle(isWarning ? BarLabel::Style::Dim : BarLabel::Style::Error);
    message->setText(text);
    message->setDetails(lastMessages.join(QLatin1Char('\n')));
}

double StatusBar::updatesPerSecond()
{
    const double seconds = std::max(1e-3, static_cast<double>(sinceRate.restart()) / 1000);
    const qint64 updates = pump.counters().updates + pump.counters().deals;
    return static_cast<double>(updates - std::exchange(updatesBefore, updates)) / seconds;
}

void StatusBar::refresh()
{
    const feed::FeedCounters &counters = pump.counters();
    orders->setText(grouped(counters.orders));
    deals->setText(grouped(counters.deals));
    quotes->setText(grouped(counters.quotes));
    rate->setText(QStringLiteral("%1/秒").arg(grouped(std::llround(updatesPerSecond()))));
    if (frames.count() != std::exchange(framesBefore, frames.count()))
        frameTime->setText(milliseconds(frames.percentileOfNewest(0.99, 100)));
    stall->setText(milliseconds(stalls.takeRecentWorst()));
    problems->setText(grouped(counters.errors));
    problems->setStyle(counters.errors > 0 ? BarLabel::Style::Error : BarLabel::Style::Number);
}

void StatusBar::themeChanged()
{
    applyLook();
}

void StatusBar::applyLook()
{
    look = WindowLook::fromResources();
    setFixedHeight(look.statusBarHeight);
    layout()->setContentsMargins(look.gap, 1, look.gap, 0);
    layout()->setSpacing(look.gap);
    for (BarLabel *label : findChildren<BarLabel *>(QString(), Qt::FindDirectChildrenOnly))
        label->setLook(look);
    update();
}

void StatusBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.bar);
    painter.fillRect(QRect(0, 0, width(), 1), look.line);
}

} // namespace terminal
