#include <QtGui/QPainter>

#include "log/chpflogwidget.h"
#include "log/clogaccessible.h"
#include "zb/cuiresource.h"

namespace KV {

void CHpfLogWidget::initDraw()
{
    ZB::CUiResource *resources = ZB::CUiResource::instance();
    textColor = resources->getColor(QStringLiteral("clr_lineedit_btn_text_normal"));
    selectionColor = resources->getColor(QStringLiteral("clr_table_background"));
    matchColor = resources->getColor(QStringLiteral("ic_clr_syntax_edit_highlight"));
    textFont = resources->getFont(QStringLiteral("fnt_output_log_text"));
    LogLook look;
    look.background = *resources->getColor(QStringLiteral("clr_table_background"));
    look.text = *textColor;
    look.selection = *selectionColor;
    look.match = *matchColor;
    look.accent = *resources->getColor(QStringLiteral("clr_accent"));
    look.accentWidth = ZB::scaled(2);
    rowPainter.setLook(look);

    if (places && places->font() == *textFont)
        return;
    const bool renewed = places != nullptr;
    places = std::make_unique<CLogTextPlaces>(*textFont);
    if (renewed) {
        cache->resetFont();
        ++listNumber;
        measureAllLines();
    }
}

void CHpfLogWidget::themeChanged()
{
    initDraw();
    setContentWidth();
    updateScroll();
    update();
}

void CHpfLogWidget::scaleChanged()
{
    applyScale();
    if (!drawRect.isEmpty())
        layOut();
    CBaseWidget::scaleChanged();
}

void CHpfLogWidget::makeBackBuffer()
{
    const double ratio = devicePixelRatioF();
    backBuffer = QPixmap((QSizeF(drawRect.size()) * ratio).toSize());
    backBuffer.setDevicePixelRatio(ratio);
    rowPainter.forget();
}

void CHpfLogWidget::reDrawGraph()
{
    drawBackground(drawRect);
    update();
}

void CHpfLogWidget::redraw()
{
    reDrawGraph();
    CLogAccessible::tellChanges(this);
    Q_EMIT sigViewChanged();
}

void CHpfLogWidget::drawBackground(const QRect &rect)
{
    if (rect.isEmpty() || backBuffer.isNull())
        return;
    rowPainter.prepare(backBuffer, shownRows(), hOffset);
    QPainter painter(&backBuffer);
    drawGraph(&painter);
}

void CHpfLogWidget::drawGraph(QPainter *painter)
{
    rowPainter.paint(*painter, *places);
}

/// The rows from the top of the view to its bottom, those without a piece included.
std::vector<LogRow> CHpfLogWidget::shownRows()
{
    const int count = geometry.shownRows();
    const int context = search.text().isEmpty() ? 0 : search.contextPieces();
    const int first = std::max(topLine - context, 0);
    const std::vector<LogTextPtr> pieces = cache->getPieces(filter(), first, topLine - first + count + context);
    std::vector<LogRow> rows(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const auto piece = static_cast<std::size_t>(topLine - first + i);
        if (piece >= pieces.size())
            break;
        LogRow &row = rows[static_cast<std::size_t>(i)];
        row.piece = pieces[piece];
        row.selected = selectAll || topLine + i == selectedLine;
        if (context > 0)
            row.marks = shownMarks(pieces, piece);
    }
    return rows;
}

/// What a search marks in the part of a piece that the view shows.
std::vector<LogRange> CHpfLogWidget::shownMarks(const std::vector<LogTextPtr> &pieces, std::size_t piece)
{
    const int left = hOffset - geometry.margin;
    const LogSlice slice = places->slice(pieces[piece], left, left + drawRect.width());
    return search.marks(pieces, piece, slice.first, slice.first + slice.text.size());
}

void CHpfLogWidget::paintEvent(QPaintEvent *)
{
    if (!isVisible() || backBuffer.isNull())
        return;
    if (!qFuzzyCompare(backBuffer.devicePixelRatioF(), devicePixelRatioF())) { // moved to another screen
        makeBackBuffer();
        drawBackground(drawRect);
    }
    QPainter painter(this);
    painter.drawPixmap(drawRect.topLeft(), backBuffer);
    if (framed) {
        painter.setPen(*ZB::CUiResource::instance()->getColor(QStringLiteral("clr_accent")));
        painter.drawRect(drawRect.adjusted(0, 0, -1, -1));
    }
}

} // namespace KV
