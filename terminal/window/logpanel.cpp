#include "window/logpanel.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QShortcut>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>
#include <numeric>

#include "kv/cuserconfig.h"
#include "log/chpflogwidget.h"
#include "log/cmodeltextcache.h"
#include "services/logline.h"
#include "window/barlabel.h"
#include "window/logpanelbar.h"
#include "zb/cuiresource.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

constexpr int countingMs = 1000; ///< between two counts of all hits

QString grouped(qint64 count)
{
    return ZB::formatLonglongNumber(count, 0, utils::FormatGroupDigits);
}

} // namespace

LogPanel::LogPanel(const QString &caption, int widgetId, const QString &logKey, QWidget *parent)
    : Panel(caption, parent), key(logKey)
{
    auto *contents = new QWidget(this);
    bar = new LogPanelBar(contents);
    logWidget = new KV::CHpfLogWidget(widgetId, contents);
    logWidget->setLogKey(key);
    emptyLabel = new BarLabel(BarLabel::Style::Dim, logWidget);
    emptyLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QHBoxLayout(logWidget))->addWidget(emptyLabel, 0, Qt::AlignCenter);
    strip = new QWidget(contents);
    noticeLabel = new BarLabel(BarLabel::Style::Dim, strip);
    (new QHBoxLayout(strip))->addWidget(noticeLabel);

    auto *layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(logWidget, 1);
    layout->addWidget(strip);
    setContents(contents);
    setFocusProxy(logWidget);
    setTabOrder(logWidget, bar); // lines come first, also for a page that looks for something to focus
    connectBar();
    addShortcuts();
    LogPanel::themeChanged();
    refresh();
}

LogPanel::~LogPanel() = default;

void LogPanel::connectBar()
{
    connect(bar, &LogPanelBar::sendChosen, this, &LogPanel::sendChosen);
    connect(bar, &LogPanelBar::levelChosen, this, &LogPanel::chooseLevel);
    connect(bar, &LogPanelBar::searchTextChanged, this, &LogPanel::search);
    connect(bar, &LogPanelBar::findRequested, this, &LogPanel::findNext);
    connect(bar, &LogPanelBar::wrapChosen, this, &LogPanel::toggleWrap);
    connect(bar, &LogPanelBar::clearChosen, logWidget, [this] { logWidget->slotClear(true); });
    connect(bar, &LogPanelBar::followChosen, logWidget, &KV::CHpfLogWidget::followNewest);
    connect(logWidget, &KV::CHpfLogWidget::sigViewChanged, this, &LogPanel::showState);
    connect(logWidget, &KV::CHpfLogWidget::sigCleared, this, &LogPanel::takeClearing);
}

/// Valid while the focus is in the panel.
void LogPanel::offerSending()
{
    bar->offerSending();
}

void LogPanel::addShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        auto *shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(Qt::CTRL | Qt::Key_F, [this] { bar->focusSearch(); });
    add(Qt::Key_F3, [this] { findNext(true); });
    add(Qt::SHIFT | Qt::Key_F3, [this] { findNext(false); });
    add(Qt::Key_Escape, [this] { endSearch(); });
    add(Qt::ALT | Qt::Key_W, [this] { toggleWrap(); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete, [this] { logWidget->slotClear(true); });
    add(Qt::CTRL | Qt::Key_End, [this] { logWidget->followNewest(); });
    add(Qt::ALT | Qt::Key_0, [this] { chooseLevel(KV::CHpfLogWidget::allLevels); });
    for (const int level : {refhost::LogInfo, refhost::LogWarning, refhost::LogError})
        add(Qt::ALT | (Qt::Key_1 + level), [this, level] { chooseLevel(level); });
}

void LogPanel::add(const QString &text, int level)
{
    taken.at(static_cast<std::size_t>(std::clamp<int>(level, refhost::LogInfo, refhost::LogError))) +=
        text.count(QLatin1Char('\n')) + 1;
    logWidget->dataCallBack(text, level);
}

void LogPanel::setOrigin(const QString &text)
{
    origin = text;
    refresh();
}

void LogPanel::setNotice(const QString &text, bool isProblem)
{
    notice = text;
    hasProblem = isProblem;
    showNotice();
}

qint64 LogPanel::lineCount() const
{
    return std::accumulate(taken.begin(), taken.end(), qint64{0});
}

/// Of those taken, the lines that the filter lets through.
qint64 LogPanel::wantedLines() const
{
    const int level = logWidget->getFilterLevel();
    return level == KV::CHpfLogWidget::allLevels ? lineCount() : taken.at(static_cast<std::size_t>(level));
}

void LogPanel::refresh()
{
    QStringList parts;
    if (!origin.isEmpty())
        parts << origin;
    if (wantedLines() == lineCount())
        parts << QStringLiteral("%1 行").arg(grouped(lineCount()));
    else
        parts << QStringLiteral("筛选 %1 / %2 行").arg(grouped(wantedLines()), grouped(lineCount()));
    if (logWidget->trimmedLines() > 0)
        parts << QStringLiteral("只保留最新 %1 %2")
                     .arg(grouped(logWidget->shownLines()),
                          logWidget->isAutoLine() ? QStringLiteral("段") : QStringLiteral("行"));
    setSummary(parts.join(QStringLiteral("  ·  ")));
    bar->setCounts(taken[refhost::LogWarning], taken[refhost::LogError]);
    const bool isStale = counted != lineCount() && !bar->searchText().isEmpty();
    if (isStale && isVisible() && (!sinceCounting.isValid() || sinceCounting.hasExpired(countingMs)))
        showHits();
    showState();
}

bool LogPanel::isSettled()
{
    if (!probe) {
        probe = boost::make_shared<KV::CModelTextCache>();
        probe->dataCallBack(QString(), 0);
    }
    const bool isThrough = probe->getDataSize() > 0;
    if (isThrough)
        probe.reset();
    return isThrough;
}

void LogPanel::showNow()
{
    logWidget->slotTimeout();
    refresh();
}

/// What follows from what the log shows.
void LogPanel::showState()
{
    const bool following = logWidget->isFollowing();
    if (following)
        seen = wantedLines();
    bar->setFollowing(following, wantedLines() - seen);
    bar->setWrap(logWidget->isAutoLine());
    showNotice();
}

void LogPanel::showNotice()
{
    const bool isEmpty = logWidget->shownLines() == 0;
    const BarLabel::Style style = hasProblem ? BarLabel::Style::Error : BarLabel::Style::Dim;
    const bool isFiltered = logWidget->getFilterLevel() != KV::CHpfLogWidget::allLevels;
    const QString reason =
        lineCount() > 0 && isFiltered ? QStringLiteral("没有这个级别的日志") : QStringLiteral("还没有日志");
    emptyLabel->setVisible(isEmpty);
    emptyLabel->setStyle(style);
    emptyLabel->setText(notice.isEmpty() ? reason : notice);
    strip->setVisible(!isEmpty && !notice.isEmpty());
    noticeLabel->setStyle(style);
    noticeLabel->setText(notice);
}

void LogPanel::chooseLevel(int level)
{
    logWidget->setFilterLevel(level);
    bar->setLevel(level);
    seen = wantedLines();
    showHits();
    refresh();
}

void LogPanel::search(const QString &text)
{
    logWidget->findText(text);
    counted = lineCount();
    sinceCounting.start();
    bar->setHits(logWidget->matchNumber(), logWidget->matchCount());
}

void LogPanel::findNext(bool forward)
{
    if (bar->searchText().isEmpty()) {
        bar->focusSearch();
        return;
    }
    if (forward)
        logWidget->findNext();
    else
        logWidget->findPrevious();
    counted = lineCount();
    bar->setHits(logWidget->matchNumber(), logWidget->matchCount());
}

void LogPanel::showHits()
{
    logWidget->updateMatchCount();
    counted = lineCount();
    sinceCounting.start();
    bar->setHits(logWidget->matchNumber(), logWidget->matchCount());
}

void LogPanel::endSearch()
{
    bar->setSearchText(QString());
    logWidget->setFocus(Qt::OtherFocusReason);
}

void LogPanel::toggleWrap()
{
    logWidget->slotAutoLine(true);
    showHits();
    refresh();
}

void LogPanel::takeClearing()
{
    taken = {};
    seen = 0;
    notice.clear();
    hasProblem = false;
    bar->setSearchText(QString());
    refresh();
}

QString LogPanel::wrapPath() const
{
    return QStringLiteral("log/%1/wrap").arg(key);
}

void LogPanel::loadState()
{
    const KV::CUserConfig *config = KV::getUserConfig();
    if (config && config->value(wrapPath()).toBool() != logWidget->isAutoLine())
        toggleWrap();
}

void LogPanel::saveState() const
{
    if (KV::CUserConfig *config = KV::getUserConfig())
        config->setValue(wrapPath(), logWidget->isAutoLine());
}

void LogPanel::themeChanged()
{
    Panel::themeChanged();
    const WindowLook fresh = WindowLook::fromResources();
    bar->setLook(fresh);
    emptyLabel->setLook(fresh);
    noticeLabel->setLook(fresh);
    strip->setFixedHeight(fresh.statusBarHeight);
    strip->layout()->setContentsMargins(fresh.gap, 0, fresh.gap, 0);
}

} // namespace terminal
