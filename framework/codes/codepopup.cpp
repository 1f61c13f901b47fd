#include "codes/codepopup.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtGui/QWheelEvent>
#include <algorithm>

#include "popups/clickguard.h"
#include "popups/popupframe.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int frame = 1;
constexpr int margin = 8;
constexpr int leastWidth = 288;
constexpr int codeWidth = 92;
constexpr int marketWidth = 64;
constexpr int wheelStep = 120;
constexpr int rowsPerStep = 3;

} // namespace

CodeListLayout CodeListLayout::fit(int hits, int width)
{
    CodeListLayout layout;
    layout.rowHeight = scaled(24);
    layout.footerHeight = hits == 0 ? 0 : scaled(22);
    layout.visibleRows = std::min(hits, mostRows);
    layout.width = std::max(width, scaled(leastWidth));
    return layout;
}

QSize CodeListLayout::size() const
{
    return {width, std::max(visibleRows, 1) * rowHeight + footerHeight + 2 * frame};
}

QRect CodeListLayout::rowRect(int row) const
{
    return {frame, frame + row * rowHeight, width - 2 * frame, rowHeight};
}

QRect CodeListLayout::footerRect() const
{
    return {frame, size().height() - frame - footerHeight, width - 2 * frame, footerHeight};
}

int CodeListLayout::rowAt(const QPoint &point) const
{
    if (point.x() < frame || point.x() >= width - frame || point.y() < frame)
        return -1;
    const int row = (point.y() - frame) / rowHeight;
    return row < visibleRows ? row : -1;
}

CodePopup::CodePopup(const CodeSearch &shown, QWidget *field)
    : QWidget(field, Qt::ToolTip | Qt::FramelessWindowHint), search(shown), look(PopupLook::fromResources())
{
    setObjectName(QStringLiteral("stock_code_popup"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setMouseTracking(true);
    setFont(look.font);
}

void CodePopup::themeChanged()
{
    look = PopupLook::fromResources();
    setFont(look.font);
    if (isVisible())
        place();
    update();
}

int CodePopup::hitCount() const
{
    return static_cast<int>(search.hits().size());
}

int CodePopup::pageRows() const
{
    return std::max(1, layout.visibleRows - 1);
}

void CodePopup::refresh()
{
    currentHit = hitCount() > 0 ? 0 : -1;
    firstHit = 0;
    wheelRest = 0;
    if (isVisible())
        place();
    update();
}

void CodePopup::showAt(const QRect &rect)
{
    anchor = rect;
    place();
    if (isVisible())
        return;
    show();
    raise();
}

void CodePopup::place()
{
    layout = CodeListLayout::fit(hitCount(), anchor.width());
    const QScreen *screen = QGuiApplication::screenAt(anchor.bottomLeft());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    const QRect to = placedAt(anchor, layout.size(), screen->availableGeometry());
    if (geometry() != to)
        setGeometry(to);
}

void CodePopup::moveCurrent(int by)
{
    if (hitCount() == 0)
        return;
    const int to = std::clamp(currentHit + by, 0, hitCount() - 1);
    setCurrent(to);
    if (to < firstHit)
        scrollTo(to);
    else if (to >= firstHit + layout.visibleRows)
        scrollTo(to - layout.visibleRows + 1);
}

void CodePopup::setCurrent(int hit)
{
    if (currentHit == hit)
        return;
    currentHit = hit;
    update();
}

void CodePopup::scrollTo(int hit)
{
    const int to = std::clamp(hit, 0, std::max(0, hitCount() - layout.visibleRows));
    if (firstHit == to)
        return;
    firstHit = to;
    update();
}

int CodePopup::hitAt(const QPoint &point) const
{
    const int row = layout.rowAt(point);
    return row < 0 || firstHit + row >= hitCount() ? -1 : firstHit + row;
}

void CodePopup::mouseMoveEvent(QMouseEvent *event)
{
    if (const int hit = hitAt(event->pos()); hit >= 0)
        setCurrent(hit);
}

void CodePopup::mousePressEvent(QMouseEvent *event)
{
    const int hit = hitAt(event->pos());
    if (hit < 0 || event->button() != Qt::LeftButton)
        return;
    ClickGuard::startAt(event->globalPos());
    Q_EMIT sigChosen(hit);
}

void CodePopup::wheelEvent(QWheelEvent *event)
{
    wheelRest += event->angleDelta().y();
    const int steps = wheelRest / wheelStep;
    wheelRest -= steps * wheelStep;
    scrollTo(firstHit - steps * rowsPerStep);
    if (const int hit = hitAt(event->position().toPoint()); hit >= 0)
        setCurrent(hit);
    event->accept();
}

void CodePopup::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.border);
    painter.fillRect(rect().adjusted(frame, frame, -frame, -frame), look.background);
    if (hitCount() == 0) {
        painter.setPen(look.dimText);
        const QString message =
            search.hasIndex() ? QStringLiteral("没有匹配的证券") : QStringLiteral("正在准备代码表…");
        painter.drawText(layout.rowRect(0).adjusted(scaled(margin), 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                         message);
        return;
    }
    for (int row = 0; row < layout.visibleRows && firstHit + row < hitCount(); ++row)
        paintRow(painter, row);
    paintPosition(painter);
    paintFooter(painter);
}

void CodePopup::paintRow(QPainter &painter, int row) const
{
    const int place = firstHit + row;
    const CodeHit &hit = search.hits()[static_cast<std::size_t>(place)];
    const KV::InstrumentItem &item = search.item(hit);
    const QRect rect = layout.rowRect(row);
    if (place == currentHit)
        painter.fillRect(rect, look.selected);
    const QRect inside = rect.adjusted(scaled(margin), 0, -scaled(margin), 0);
    const QRect code(inside.left(), inside.top(), scaled(codeWidth), inside.height());
    const QRect market(inside.right() + 1 - scaled(marketWidth), inside.top(), scaled(marketWidth), inside.height());
    const QRect name(code.right() + 1, inside.top(), market.left() - code.right() - 1, inside.height());
    painter.setFont(look.numberFont);
    paintText(painter, code, item.code, search.codePart(hit));
    painter.setFont(look.font);
    paintText(painter, name, item.name, search.namePart(hit));
    painter.setPen(look.dimText);
    painter.drawText(market, Qt::AlignVCenter | Qt::AlignRight,
                     painter.fontMetrics().elidedText(item.market, Qt::ElideRight, market.width()));
}

/// Three runs: before, the part that answers, behind.
void CodePopup::paintText(QPainter &painter, const QRect &rect, const QString &text, const TextPart &part) const
{
    const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, rect.width() - scaled(margin) / 2);
    const struct
    {
        QString text;
        QColor color;
    } runs[] = {{shown.left(part.start), look.text},
                {shown.mid(part.start, part.length), look.link},
                {shown.mid(part.start + part.length), look.text}};
    int left = rect.left();
    for (const auto &run : runs) {
        if (run.text.isEmpty())
            continue;
        painter.setPen(run.color);
        painter.drawText(QRect(left, rect.top(), rect.right() + 1 - left, rect.height()),
                         Qt::AlignVCenter | Qt::AlignLeft, run.text);
        left += painter.fontMetrics().horizontalAdvance(run.text);
    }
}

void CodePopup::paintFooter(QPainter &painter) const
{
    const QRect rect = layout.footerRect();
    painter.fillRect(rect, look.raised);
    painter.fillRect(QRect(rect.left(), rect.top(), rect.width(), 1), look.border);
    const QRect inside = rect.adjusted(scaled(margin), 0, -scaled(margin), 0);
    painter.setPen(look.dimText);
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignLeft,
                     QStringLiteral("%1 / %2").arg(currentHit + 1).arg(hitCount()));
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignRight, QStringLiteral("↑↓ 选择   Enter 确定   Esc 取消"));
}

/// A bar at the right edge tells where the shown rows stand among all.
void CodePopup::paintPosition(QPainter &painter) const
{
    const int hits = hitCount();
    if (hits <= layout.visibleRows)
        return;
    const int track = layout.visibleRows * layout.rowHeight;
    const int length = std::max(scaled(16), track * layout.visibleRows / hits);
    const int top = frame + (track - length) * firstHit / (hits - layout.visibleRows);
    const int width = scaled(3);
    QColor color = look.dimText;
    color.setAlpha(110);
    painter.fillRect(QRect(layout.width - frame - width, top, width, length), color);
}

} // namespace ZB
