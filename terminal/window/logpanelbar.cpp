#include "window/logpanelbar.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>

#include "log/chpflogwidget.h"
#include "popups/hintfield.h"
#include "services/logline.h"
#include "window/barbutton.h"
#include "window/barlabel.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

constexpr int searchWidth = 220; ///< pixels at 100 %
constexpr int leastSearchWidth = 80;
constexpr qint64 mostCounted = 999999;

/// "警告" or "警告 12".
QString counted(const QString &word, qint64 count)
{
    if (count == 0)
        return word;
    const QString number = ZB::formatLonglongNumber(std::min(count, mostCounted), 0, utils::FormatGroupDigits);
    return QStringLiteral("%1 %2%3").arg(word, number, count > mostCounted ? QStringLiteral("+") : QString());
}

} // namespace

LogPanelBar::LogPanelBar(QWidget *parent) : QWidget(parent)
{
    auto *layout = new QHBoxLayout(this);
    addLevels(layout);
    addSearch(layout);
    layout->addStretch(1);
    addActions(layout);
    setLevel(KV::CHpfLogWidget::allLevels);
    setCounts(0, 0);
    setHits(0, 0);
    setFollowing(true, 0);
    setLook(WindowLook::fromResources());
}

LogPanelBar::~LogPanelBar() = default;

void LogPanelBar::addLevels(QHBoxLayout *layout)
{
    const struct
    {
        int level;
        const char *text;
        const char *tip;
    } levels[] = {{KV::CHpfLogWidget::allLevels, "全部", "显示全部级别 (Alt+0)"},
                  {refhost::LogInfo, "信息", "只显示信息 (Alt+1)"},
                  {refhost::LogWarning, "警告", "只显示警告；数字是收到的行数 (Alt+2)"},
                  {refhost::LogError, "错误", "只显示错误；数字是收到的行数 (Alt+3)"}};
    levelButtons.resize(std::size(levels));
    for (const auto &entry : levels) {
        BarButton *button = addButton(layout, QString::fromUtf8(entry.text), QString::fromUtf8(entry.tip));
        button->setCheckable(true);
        button->setAutoExclusive(true);
        connect(button, &BarButton::clicked, this, [this, level = entry.level] { Q_EMIT levelChosen(level); });
        levelButtons[static_cast<std::size_t>(entry.level)] = button;
    }
}

void LogPanelBar::addSearch(QHBoxLayout *layout)
{
    searchField = new ZB::HintField(QStringLiteral("在日志中查找"), this);
    searchField->setToolTip(QStringLiteral("区分大小写 (Ctrl+F；Enter 下一处，Shift+Enter 上一处，Esc 结束)"));
    layout->addSpacing(ZB::scaled(8));
    layout->addWidget(searchField, searchWidth);
    previousButton = addButton(layout, QStringLiteral("上一处"), QStringLiteral("上一处 (Shift+F3)"));
    nextButton = addButton(layout, QStringLiteral("下一处"), QStringLiteral("下一处 (F3)"));
    hitsLabel = new BarLabel(BarLabel::Style::Dim, this);
    hitsLabel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    layout->addWidget(hitsLabel);
    connect(searchField, &QLineEdit::textChanged, this, &LogPanelBar::searchTextChanged);
    connect(previousButton, &BarButton::clicked, this, [this] { Q_EMIT findRequested(false); });
    connect(nextButton, &BarButton::clicked, this, [this] { Q_EMIT findRequested(true); });
}

void LogPanelBar::addActions(QHBoxLayout *layout)
{
    wrapButton = addButton(layout, QStringLiteral("自动换行"), QStringLiteral("长行按窗口宽度换行 (Alt+W)"));
    wrapButton->setCheckable(true);
    BarButton *clear = addButton(layout, QStringLiteral("清空"), QStringLiteral("清空显示的日志 (Ctrl+Shift+Delete)"));
    followButton = addButton(layout, QString(), QStringLiteral("转到最新一行并跟随 (Ctrl+End)"));
    followButton->setCheckable(true);
    sendButton = addButton(layout, QStringLiteral("发送日志"), QStringLiteral("把程序日志寄给维护人员 (Ctrl+Shift+S)"));
    sendButton->hide();
    connect(sendButton, &BarButton::clicked, this, &LogPanelBar::sendChosen);
    connect(wrapButton, &BarButton::clicked, this, &LogPanelBar::wrapChosen);
    connect(clear, &BarButton::clicked, this, &LogPanelBar::clearChosen);
    connect(followButton, &BarButton::clicked, this, &LogPanelBar::followChosen);
}

BarButton *LogPanelBar::addButton(QHBoxLayout *layout, const QString &text, const QString &tip)
{
    auto *button = new BarButton(this);
    button->setText(text);
    button->setToolTip(tip);
    layout->addWidget(button);
    return button;
}

void LogPanelBar::setLook(const WindowLook &newLook)
{
    look = newLook;
    setFixedHeight(ZB::scaled(34));
    layout()->setContentsMargins(ZB::scaled(4), 0, ZB::scaled(4), 1);
    layout()->setSpacing(ZB::scaled(2));
    searchField->setMinimumWidth(ZB::scaled(leastSearchWidth));
    searchField->setMaximumWidth(ZB::scaled(searchWidth));
    hitsLabel->setLook(look);
    for (BarButton *button : findChildren<BarButton *>(QString(), Qt::FindDirectChildrenOnly))
        button->setLook(look);
    update();
}

void LogPanelBar::setLevel(int level)
{
    levelButtons.at(static_cast<std::size_t>(level))->setChecked(true);
}

void LogPanelBar::setCounts(qint64 warnings, qint64 errors)
{
    const auto show = [this](int level, const QString &text) {
        BarButton *button = levelButtons[static_cast<std::size_t>(level)];
        if (button->text() == text)
            return;
        button->setText(text);
        button->updateGeometry();
    };
    show(refhost::LogWarning, counted(QStringLiteral("警告"), warnings));
    show(refhost::LogError, counted(QStringLiteral("错误"), errors));
}

void LogPanelBar::setWrap(bool wrap)
{
    wrapButton->setChecked(wrap);
}

void LogPanelBar::setFollowing(bool following, qint64 newLines)
{
    followButton->setChecked(following);
    const QString text = following       ? QStringLiteral("跟随最新")
                         : newLines == 0 ? QStringLiteral("转到最新")
                                         : counted(QStringLiteral("新日志"), newLines);
    if (followButton->text() == text)
        return;
    followButton->setText(text);
    followButton->updateGeometry();
}

QString LogPanelBar::searchText() const
{
    return searchField->text();
}

void LogPanelBar::setSearchText(const QString &text)
{
    searchField->setText(text);
}

void LogPanelBar::setHits(int number, int count)
{
    const bool searches = !searchField->text().isEmpty();
    previousButton->setEnabled(count > 0);
    nextButton->setEnabled(count > 0);
    hitsLabel->setStyle(searches && count == 0 ? BarLabel::Style::Error : BarLabel::Style::Dim);
    if (!searches)
        hitsLabel->setText(QString());
    else if (count == 0)
        hitsLabel->setText(QStringLiteral("没有找到"));
    else if (number == 0)
        hitsLabel->setText(QStringLiteral("%1 处").arg(count));
    else
        hitsLabel->setText(QStringLiteral("%1 / %2 处").arg(number).arg(count));
}

void LogPanelBar::offerSending()
{
    sendButton->show();
}

void LogPanelBar::focusSearch()
{
    searchField->setFocus(Qt::ShortcutFocusReason);
    searchField->selectAll();
}

/// What the search field leaves over; buttons keep their keys.
void LogPanelBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT findRequested(!(event->modifiers() & Qt::ShiftModifier));
    else
        QWidget::keyPressEvent(event);
}

void LogPanelBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.bar);
    painter.fillRect(QRect(0, height() - 1, width(), 1), look.line);
}

} // namespace terminal
