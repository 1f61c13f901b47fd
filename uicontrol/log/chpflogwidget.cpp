#include "log/chpflogwidget.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QClipboard>
#include <QtGui/QResizeEvent>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>

#include "log/clogaccessible.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int refreshInterval = 100; ///< milliseconds
constexpr int eventScrolled = 17;
constexpr int eventCleared = 1284;
constexpr int verticalId = 0;
constexpr int horizontalId = 1;
constexpr int narrowestWrap = 101; ///< pixels

/// Lengths in pixels at 100 %.
constexpr int rowHeight = 20;
constexpr int sideMargin = 5;
constexpr int barWidth = 6;
constexpr int horizontalStep = 200;

/// A bar with nothing to scroll is hidden.
void showWhenUseful(QScrollBar &bar)
{
    if (bar.maximum() > 0 && bar.isHidden()) {
        bar.show();
        bar.raise();
    } else if (bar.maximum() == 0 && !bar.isHidden()) {
        bar.hide();
    }
}

} // namespace

CHpfLogWidget::CHpfLogWidget(int id, QWidget *parent)
    : ZB::CBaseWidget(parent, QStringLiteral("mqlt_tavesk_basewidget")), cache(boost::make_shared<CModelTextCache>()),
      refreshTimer(new QTimer(this)), widgetId(id)
{
    CLogAccessible::install();
    initDraw();
    createUi();
    applyScale();
    connect(refreshTimer, &QTimer::timeout, this, &CHpfLogWidget::slotTimeout);
    refreshTimer->start(refreshInterval);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CHpfLogWidget::~CHpfLogWidget() = default;

void CHpfLogWidget::createUi()
{
    verticalBar = new ZB::CStandScrollBar(verticalId, Qt::Vertical, this);
    verticalBar->setSingleStep(1);
    horizontalBar = new ZB::CStandScrollBar(horizontalId, Qt::Horizontal, this);
    for (QScrollBar *bar : {verticalBar, horizontalBar}) {
        bar->setRange(0, 0);
        bar->hide();
    }
}

void CHpfLogWidget::applyScale()
{
    geometry.lineHeight = ZB::scaled(rowHeight);
    geometry.margin = ZB::scaled(sideMargin);
    verticalBar->setFixedWidth(ZB::scaled(barWidth));
    horizontalBar->setFixedHeight(ZB::scaled(barWidth));
    horizontalBar->setSingleStep(ZB::scaled(horizontalStep));
}

void CHpfLogWidget::placeBars()
{
    verticalBar->setGeometry(width() - verticalBar->width(), 0, verticalBar->width(), height());
    verticalBar->setPageStep(geometry.pageLines());
    horizontalBar->setGeometry(0, height() - horizontalBar->height(), width(), horizontalBar->height());
    horizontalBar->setPageStep(drawRect.width() / 2);
}

void CHpfLogWidget::resizeEvent(QResizeEvent *)
{
    if (width() == 0 || height() == 0 || size() == drawRect.size())
        return;
    drawRect = rect();
    layOut();
}

/// Puts everything where the present size and scale want it.
void CHpfLogWidget::layOut()
{
    geometry.size = drawRect.size();
    rowPainter.setLayout(geometry);
    makeBackBuffer();
    setContentWidth();
    resetLayout();
    placeBars();
    updateScroll();
}

void CHpfLogWidget::resetLayout()
{
    const int textWidth = geometry.textWidth();
    if (textWidth != cache->getSplitWidth() && textWidth >= narrowestWrap) {
        cache->setSplitWidth(textWidth);
        if (cache->isAutoLine()) {
            foundPlace = {}; // its row is another one now: a search goes on from what is in sight
            ++listNumber;
        }
    }
    drawBackground(drawRect);
}

/// As wide as the widest line, or as the view where lines are wrapped to it.
void CHpfLogWidget::setContentWidth()
{
    contentWidth = cache->isAutoLine() ? drawRect.width() : std::max(maxLineWidth, drawRect.width());
}

void CHpfLogWidget::dataCallBack(const QString &text, int level)
{
    noteWidths(text);
    setContentWidth();
    cache->dataCallBack(text, level);
}

void CHpfLogWidget::noteWidths(const QString &text)
{
    for (int start = 0, end = 0; end >= 0; start = end + 1) {
        end = text.indexOf(QLatin1Char('\n'), start);
        const int length = (end < 0 ? text.size() : end) - start;
        maxLineWidth = places->measure().widest(text.utf16() + start, length, maxLineWidth);
    }
}

/// For a new font: the widths of all lines that are still there.
void CHpfLogWidget::measureAllLines()
{
    maxLineWidth = 0;
    const std::vector<LogTextPtr> pieces = cache->getPieces(std::nullopt, 0, cache->getDataSize());
    for (std::size_t first = 0, last = 0; first < pieces.size(); first = last) {
        QString line = pieces[first]->text;
        for (last = first + 1; last < pieces.size() && pieces[last]->lineId == pieces[first]->lineId; ++last)
            line += pieces[last]->text;
        maxLineWidth = places->measure().widest(line.utf16(), line.size(), maxLineWidth);
    }
}

void CHpfLogWidget::clear()
{
    cache->clear();
    ++listNumber;
    followTail = true;
    topLine = 0;
    selectedLine = -1;
    selectAll = false;
    search.setText(QString());
    foundPlace = {};
    lastMatchCount = 0;
    lastMatchNumber = 0;
    maxLineWidth = 0;
    contentWidth = drawRect.width();
    scrollAcross(0);
    updateScroll();
    Q_EMIT sigCleared();
}

void CHpfLogWidget::setFilterLevel(int level)
{
    filterLevel = level;
    ++listNumber;
    foundPlace = {};
    knownTrimmed = cache->getState(filter()).trimmed;
    updateScroll();
}

void CHpfLogWidget::setLogKey(const QString &key)
{
    logKey = key;
}

bool CHpfLogWidget::isAutoLine() const
{
    return cache->isAutoLine();
}

/// The level whose list is shown; none for all.
std::optional<int> CHpfLogWidget::filter() const
{
    return filterLevel == allLevels ? std::nullopt : std::optional<int>(filterLevel);
}

void CHpfLogWidget::slotTimeout()
{
    if (isVisible() && cache->takeChanged())
        updateScroll();
}

void CHpfLogWidget::updateScroll()
{
    takeList(cache->getState(filter()));
    // Last, since to show a child settles the layouts around it: this view may get another size and start over inside.
    showWhenUseful(*horizontalBar);
    showWhenUseful(*verticalBar);
    redraw();
}

/// From here on all rows are counted in the list as it is in this state.
void CHpfLogWidget::takeList(const CModelTextCache::ListState &state)
{
    followTrimming(state);
    lineCount = state.size;
    const int lastTop = std::max(lineCount - geometry.pageLines(), 0);
    if (followTail || topLine > lastTop) {
        followTail = followTail || lastTop > 0;
        topLine = lastTop;
    }
    hOffset = std::min(hOffset, overflow());

    setBar(*horizontalBar, overflow(), hOffset);
    setBar(*verticalBar, lastTop, topLine);
}

/// Moves a bar to what is known already, so that its event is no news.
void CHpfLogWidget::setBar(QScrollBar &bar, int maximum, int position)
{
    const QScopedValueRollback<bool> known(settling, true);
    bar.setMaximum(maximum);
    bar.setSliderPosition(position);
}

/// Keeps selection and view on their lines while older ones leave the list.
void CHpfLogWidget::followTrimming(const CModelTextCache::ListState &state)
{
    const qint64 gone = std::clamp<qint64>(state.trimmed - knownTrimmed, 0, std::numeric_limits<int>::max());
    knownTrimmed = state.trimmed;
    const auto moved = [gone](int line) { return static_cast<int>(std::max<qint64>(line - gone, -1)); };
    selectedLine = moved(selectedLine);
    foundPlace.row = moved(foundPlace.row);
    topLine = std::max(moved(topLine), 0);
}

void CHpfLogWidget::followNewest()
{
    followTail = true;
    updateScroll();
}

int CHpfLogWidget::overflow() const
{
    return std::max(contentWidth - drawRect.width(), 0);
}

void CHpfLogWidget::scrollTo(int line)
{
    topLine = std::clamp(line, 0, std::max(lineCount - geometry.pageLines(), 0));
    followTail = topLine + geometry.pageLines() >= lineCount;
    setBar(*verticalBar, verticalBar->maximum(), topLine);
}

void CHpfLogWidget::scrollAcross(int offset)
{
    hOffset = std::clamp(offset, 0, overflow());
    setBar(*horizontalBar, horizontalBar->maximum(), hOffset);
}

bool CHpfLogWidget::handleEvent(int event, int first, int, QString, void *)
{
    if (event != eventScrolled)
        return false;
    if (settling)
        return true;
    if (first == verticalId)
        scrollTo(verticalBar->sliderPosition());
    else if (first == horizontalId)
        scrollAcross(horizontalBar->sliderPosition());
    redraw();
    return true;
}

void CHpfLogWidget::onCopySelect()
{
    QString text;
    if (selectAll)
        cache->getAllText(text);
    else if (selectedLine == -1)
        return;
    else if (const auto pieces = cache->getPieces(filter(), selectedLine, 1); !pieces.empty())
        text = pieces.front()->text;
    QApplication::clipboard()->setText(text, QClipboard::Clipboard);
}

void CHpfLogWidget::slotSelectAll(bool)
{
    selectAll = true;
    redraw();
}

void CHpfLogWidget::slotCopySelect(bool)
{
    onCopySelect();
}

void CHpfLogWidget::slotAutoLine(bool)
{
    cache->setAutoLine(!cache->isAutoLine());
    ++listNumber;
    setContentWidth();
    foundPlace = {};
    updateScroll();
}

void CHpfLogWidget::slotClear(bool)
{
    clear();
    deliverEvent(eventCleared, widgetId, 0, logKey, nullptr);
}

} // namespace KV
