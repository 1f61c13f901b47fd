#include "window/topbar.h"

#include <QtGui/QPainter>
#include <QtWidgets/QActionGroup>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMenu>
#include <algorithm>
#include <iterator>

#include "theme/themeservice.h"
#include "utils/timetext.h"
#include "window/barbutton.h"
#include "window/barlabel.h"
#include "window/feedpump.h"
#include "window/viewsettings.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

using refhost::RiseFall;
using refhost::ThemeService;

const double speeds[] = {0.5, 1, 2, 5, 10, 30, 60, 300, feed::MarketFeed::maxSpeed};
const int scales[] = {100, 125, 150, 175, 200, 250, 300};
const struct
{
    RiseFall value;
    const char *text;
} riseFalls[] = {{RiseFall::RedUp, "红涨绿跌"}, {RiseFall::GreenUp, "绿涨红跌"}, {RiseFall::OrangeBlue, "橙涨蓝跌"}};

QString speedText(double speed)
{
    return speed == feed::MarketFeed::maxSpeed ? QStringLiteral("最快") : QStringLiteral("%1 倍").arg(speed);
}

QString riseFallText(RiseFall value)
{
    for (const auto &known : riseFalls)
        if (known.value == value)
            return QString::fromUtf8(known.text);
    return {};
}

} // namespace

TopBar::TopBar(FeedPump &feedPump, QWidget *parent) : QWidget(parent), pump(feedPump)
{
    auto *layout = new QHBoxLayout(this);
    addLabels(layout);
    addButtons(layout);
    applyLook();
    showChoices();
    refresh();
}

TopBar::~TopBar() = default;

void TopBar::addLabels(QHBoxLayout *layout)
{
    productLabel = new BarLabel(BarLabel::Style::Bold, this);
    sourceLabel = new BarLabel(BarLabel::Style::Dim, this);
    timeLabel = new BarLabel(BarLabel::Style::Number, this);
    stateLabel = new BarLabel(BarLabel::Style::Normal, this);
    productLabel->setText(QStringLiteral("模拟交易终端"));
    timeLabel->setWidestText(QStringLiteral("2000-00-00 00:00:00"));
    stateLabel->setWidestText(QStringLiteral("正在读取 100%"));
    sourceLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    tabLayout = new QHBoxLayout;
    for (BarLabel *label : {productLabel, timeLabel, stateLabel}) {
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        layout->addWidget(label);
        addGap(layout);
        if (label != productLabel)
            continue;
        layout->addLayout(tabLayout);
        addGap(layout);
    }
    layout->addWidget(sourceLabel, 1);
}

void TopBar::addButtons(QHBoxLayout *layout)
{
    pauseButton = addButton(layout, QStringLiteral("暂停或继续行情"), QStringLiteral("Ctrl+P"));
    speedButton = addButton(layout, QStringLiteral("行情时间与实际时间之比"), QStringLiteral("Ctrl+[, Ctrl+]"));
    layoutButton = addButton(layout, QStringLiteral("表格左右或上下排列"), QStringLiteral("Ctrl+L"));
    riseFallButton = addButton(layout, QStringLiteral("涨跌颜色"), QString());
    themeButton = addButton(layout, QStringLiteral("切换主题"), QStringLiteral("Ctrl+T"));
    scaleButton = addButton(layout, QStringLiteral("界面缩放"), QStringLiteral("Ctrl++, Ctrl+-, Ctrl+0"));

    aboutButton = addButton(layout, QStringLiteral("版本、授权和许可证"), QStringLiteral("F1"));
    aboutButton->setText(QStringLiteral("关于"));
    layoutButton->setText(QStringLiteral("布局"));
    pauseButton->setWidestTexts({QStringLiteral("暂停"), QStringLiteral("继续")});
    speedButton->setWidestTexts({QStringLiteral("速度 300 倍")});
    riseFallButton->setWidestTexts({QStringLiteral("红涨绿跌")});
    themeButton->setWidestTexts({QStringLiteral("深色"), QStringLiteral("浅色")});
    scaleButton->setWidestTexts({QStringLiteral("300%")});
    for (BarButton *button : {speedButton, riseFallButton, scaleButton})
        button->setOpensMenu(true);

    connect(pauseButton, &BarButton::clicked, this, &TopBar::togglePause);
    connect(speedButton, &BarButton::clicked, this, &TopBar::openSpeeds);
    connect(aboutButton, &BarButton::clicked, this, &TopBar::aboutChosen);
    connect(layoutButton, &BarButton::clicked, this, &TopBar::layoutToggled);
    connect(riseFallButton, &BarButton::clicked, this, &TopBar::openRiseFall);
    connect(themeButton, &BarButton::clicked, this, &TopBar::toggleTheme);
    connect(scaleButton, &BarButton::clicked, this, &TopBar::openScales);
}

void TopBar::addGap(QHBoxLayout *layout)
{
    gaps.push_back(new QSpacerItem(0, 0, QSizePolicy::Fixed));
    layout->addItem(gaps.back());
}

void TopBar::addPage(const QString &title)
{
    const int number = static_cast<int>(tabs.size());
    auto *tab = addButton(tabLayout, title, QStringLiteral("Ctrl+%1").arg(number + 1));
    tab->setText(title);
    tab->setCheckable(true);
    tab->setLook(look);
    connect(tab, &BarButton::clicked, this, [this, number] { Q_EMIT pageChosen(number); });
    tabs.push_back(tab);
}

void TopBar::setCurrentPage(int number)
{
    for (size_t i = 0; i < tabs.size(); ++i)
        tabs[i]->setChecked(static_cast<int>(i) == number);
}

BarButton *TopBar::addButton(QHBoxLayout *layout, const QString &tip, const QString &shortcut)
{
    auto *button = new BarButton(this);
    button->setToolTip(shortcut.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, shortcut));
    layout->addWidget(button);
    return button;
}

void TopBar::setSource(const QString &text, const QString &details)
{
    sourceLabel->setText(text);
    sourceLabel->setDetails(details);
}

void TopBar::refresh()
{
    const qint64 time = pump.marketTime();
    timeLabel->setText(time == feed::absent<qint64> ? QString()
                                                    : utils::getStrTimeByTime(time, utils::ETimeText::DateTime));
    stateLabel->setText(stateText());
    stateLabel->setStyle(pump.hasFailed() ? BarLabel::Style::Error : BarLabel::Style::Dim);
    pauseButton->setText(pump.isPaused() ? QStringLiteral("继续") : QStringLiteral("暂停"));
    pauseButton->setEnabled(!pump.isFinished());
    speedButton->setEnabled(!pump.isFinished());
    speedButton->setText(QStringLiteral("速度 %1").arg(speedText(pump.speed())));
}

QString TopBar::stateText() const
{
    if (pump.hasFailed())
        return QStringLiteral("无法播放");
    if (pump.isFinished())
        return QStringLiteral("已结束");
    if (pump.marketTime() == feed::absent<qint64>) {
        const feed::FeedCounters &counters = pump.counters();
        const qint64 percent = counters.bytesTotal > 0 ? 100 * counters.bytesRead / counters.bytesTotal : 0;
        return counters.bytesTotal > 0 ? QStringLiteral("正在读取 %1%").arg(percent) : QStringLiteral("正在读取");
    }
    return pump.isPaused() ? QStringLiteral("已暂停") : QStringLiteral("播放中");
}

void TopBar::togglePause()
{
    if (pump.isFinished())
        return;
    pump.setPaused(!pump.isPaused());
    refresh();
}

void TopBar::toggleTheme()
{
    viewsettings::setDark(!viewsettings::isDark());
}

void TopBar::setSpeed(double speed)
{
    pump.setSpeed(speed);
    refresh();
}

void TopBar::stepSpeed(bool faster)
{
    const double now = pump.speed();
    if (faster) {
        const auto next = std::upper_bound(std::begin(speeds), std::end(speeds), now);
        setSpeed(next == std::end(speeds) ? now : *next);
    } else {
        const auto next = std::lower_bound(std::begin(speeds), std::end(speeds), now);
        setSpeed(next == std::begin(speeds) ? now : *std::prev(next));
    }
}

void TopBar::openMenu(BarButton *button, const std::vector<Choice> &choices)
{
    auto *menu = new QMenu(button);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto *group = new QActionGroup(menu);
    for (const Choice &choice : choices) {
        QAction *action = menu->addAction(choice.text);
        action->setCheckable(true);
        action->setActionGroup(group);
        action->setChecked(choice.current);
        connect(action, &QAction::triggered, this, choice.choose);
    }
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
}

void TopBar::openSpeeds()
{
    std::vector<Choice> choices;
    for (const double speed : speeds)
        choices.push_back({speedText(speed), speed == pump.speed(), [this, speed] { setSpeed(speed); }});
    openMenu(speedButton, choices);
}

void TopBar::openRiseFall()
{
    std::vector<Choice> choices;
    for (const auto &known : riseFalls)
        choices.push_back({QString::fromUtf8(known.text), known.value == ThemeService::instance().riseFall(),
                           [value = known.value] { viewsettings::setRiseFall(value); }});
    openMenu(riseFallButton, choices);
}

void TopBar::openScales()
{
    std::vector<Choice> choices;
    for (const int percent : scales)
        choices.push_back({QStringLiteral("%1%").arg(percent), percent == viewsettings::scalePercent(),
                           [percent] { viewsettings::setScalePercent(percent); }});
    openMenu(scaleButton, choices);
}

void TopBar::themeChanged()
{
    applyLook();
    showChoices();
}

void TopBar::applyLook()
{
    look = WindowLook::fromResources();
    setFixedHeight(look.topBarHeight);
    layout()->setContentsMargins(look.gap, 0, ZB::scaled(4), 1);
    layout()->setSpacing(ZB::scaled(4));
    for (QSpacerItem *gap : gaps)
        gap->changeSize(look.gap, 0, QSizePolicy::Fixed);
    for (BarLabel *label : findChildren<BarLabel *>(QString(), Qt::FindDirectChildrenOnly))
        label->setLook(look);
    for (BarButton *button : findChildren<BarButton *>(QString(), Qt::FindDirectChildrenOnly))
        button->setLook(look);
    update();
}

void TopBar::showChoices()
{
    riseFallButton->setText(riseFallText(ThemeService::instance().riseFall()));
    themeButton->setText(viewsettings::isDark() ? QStringLiteral("深色") : QStringLiteral("浅色"));
    scaleButton->setText(QStringLiteral("%1%").arg(viewsettings::scalePercent()));
}

void TopBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.bar);
    painter.fillRect(QRect(0, height() - 1, width(), 1), look.line);
}

} // namespace terminal
