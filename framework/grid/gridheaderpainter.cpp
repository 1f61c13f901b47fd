#include "grid/gridheaderpainter.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <algorithm>

#include "grid/gridcanvas.h"
#include "grid/gridsource.h"
#include "grid/gridunit.h"

namespace ZB {

namespace {

constexpr int arrowWidth = 12; ///< at 100 %, with its gap

QImage fitted(const QImage &picture, const QSize &size)
{
    return picture.size() == size ? picture : QImage(size.expandedTo(QSize(1, 1)), QImage::Format_RGB32);
}

QPainterPath arrowIn(const QRect &rect, bool descending)
{
    const QPointF middle = QRectF(rect).center();
    const double half = rect.height() / 8.0;
    const double tip = descending ? half * 0.75 : -half * 0.75;
    QPainterPath path(QPointF(middle.x(), middle.y() + tip));
    path.lineTo(middle.x() - half * 1.1, middle.y() - tip);
    path.lineTo(middle.x() + half * 1.1, middle.y() - tip);
    path.closeSubpath();
    return path;
}

QPainterPath funnelIn(const QRect &rect)
{
    const QPointF middle = QRectF(rect).center();
    const double unit = rect.height() / 28.0;
    QPainterPath path(middle + QPointF(-4.5, -4.0) * unit);
    path.lineTo(middle + QPointF(4.5, -4.0) * unit);
    path.lineTo(middle + QPointF(1.2, 0.2) * unit);
    path.lineTo(middle + QPointF(1.2, 4.4) * unit);
    path.lineTo(middle + QPointF(-1.2, 3.2) * unit);
    path.lineTo(middle + QPointF(-1.2, 0.2) * unit);
    path.closeSubpath();
    return path;
}

GridFont statisticsFont(const GridColumn &column)
{
    return column.bold || column.statisticsBold ? GridFont::StatisticsBold : GridFont::Statistics;
}

/// A header's width does not follow the mouse.
GridHeaderState withoutMouse(GridHeaderState state)
{
    state.hovered = -1;
    return state;
}

} // namespace

GridHeaderPainter::GridHeaderPainter(GridCellPainter &painter) : cells(painter) {}

int GridHeaderPainter::sortPlace(const GridHeaderState &state, int column)
{
    const auto found = std::find_if(state.sorts.begin(), state.sorts.end(),
                                    [&](const GridSortMark &mark) { return mark.column == column; });
    return found == state.sorts.end() ? -1 : static_cast<int>(found - state.sorts.begin());
}

QColor GridHeaderPainter::ground(const GridHeaderState &state, int column) const
{
    const GridLook &look = cells.look();
    if (!state.enabled)
        return look.headerDisabled;
    if (state.pressed == column)
        return look.headerPressed;
    return state.hovered == column ? look.headerHover : look.header;
}

/// The marks stand opposite to the text, which stands over the texts of its cells.
GridHeaderPainter::Marks GridHeaderPainter::marksOf(const GridGeometry &geometry, const GridHeaderState &state,
                                                    int column) const
{
    const GridColumn &look = geometry.columns.at(column);
    const QRect whole = cells.inside(geometry.headerRect(column));
    const bool textRight = (look.alignment & Qt::AlignRight) != 0;
    Marks marks;
    QRect rest = whole;
    const auto cutOff = [&](int width) {
        QRect part = rest;
        if (textRight) {
            part.setWidth(width);
            rest.setLeft(part.right() + 1);
        } else {
            part.setLeft(rest.right() + 1 - width);
            rest.setRight(part.left() - 1);
        }
        return part;
    };
    const QRect funnel = geometry.funnelRect(column);
    if (!funnel.isEmpty() && (look.filtered || state.hovered == column))
        marks.funnel = funnel;
    const int place = sortPlace(state, column);
    if (!marks.funnel.isEmpty() && (look.filtered || place >= 0))
        cutOff(funnel.width());
    if (place >= 0) {
        marks.arrow = cutOff(cells.devicePixels(qRound(arrowWidth * cells.look().scale)));
        if (state.sorts.size() > 1)
            marks.weight = cutOff(cells.text().width(QString::number(place + 1), GridFont::Header));
    }
    const int margin = cells.devicePixels(cells.look().margin);
    const bool shared = rest.width() != whole.width();
    marks.text =
        rest.adjusted(shared && textRight ? margin / 2 : margin, 0, shared && !textRight ? -margin / 2 : -margin, 0);
    return marks;
}

/// Where the funnel comes up under the mouse the text makes room for it, as far as there is some.
QRect GridHeaderPainter::besideFunnel(const Marks &marks, const QRect &inside, int textWidth,
                                      Qt::Alignment alignment) const
{
    QRect room = marks.text;
    const QRect taken = marks.funnel | marks.arrow | marks.weight;
    const int margin = cells.devicePixels(cells.look().margin) / 4;
    if (alignment & Qt::AlignRight) {
        if (room.right() + 1 - textWidth > taken.right())
            return room;
        room.setLeft(taken.right() + 1);
        room.setRight(std::max(room.right(), std::min(inside.right() - margin, room.left() + textWidth - 1)));
        return room;
    }
    const bool centred = alignment & Qt::AlignHCenter;
    const int left = centred ? room.left() + (room.width() - textWidth) / 2 : room.left();
    if (left + textWidth <= taken.left())
        return room;
    room.setRight(taken.left() - 1);
    room.setLeft(std::min(room.left(), std::max(inside.left() + margin, room.right() + 1 - textWidth)));
    return room;
}

void GridHeaderPainter::paintCell(GridCanvas &canvas, const GridGeometry &geometry, const GridHeaderState &state,
                                  const GridShownColumn &where, const QString &text)
{
    const GridLook &look = cells.look();
    const QRect rect = geometry.headerRect(where.column);
    const QRect inside = cells.inside(rect);
    const Marks marks = marksOf(geometry, state, where.column);
    const bool sorted = sortPlace(state, where.column) >= 0;
    canvas.setClip(QRect(where.clipLeft, rect.top(), where.clipRight - where.clipLeft, rect.height()));
    const GridColumn &column = geometry.columns.at(where.column);
    const bool offersFunnel = !marks.funnel.isEmpty() && !column.filtered;
    const QRect room = offersFunnel
                           ? besideFunnel(marks, inside, cells.text().width(text, GridFont::Header), column.alignment)
                           : marks.text;
    canvas.fill(inside, ground(state, where.column).rgb());
    cells.text().draw(canvas, room, text, GridFont::Header, column.alignment, GridCut::Ellipsis,
                      (sorted ? look.text : look.headerText).rgb());
    if (!marks.weight.isEmpty())
        cells.text().draw(canvas, marks.weight, QString::number(sortPlace(state, where.column) + 1), GridFont::Header,
                          Qt::AlignHCenter, GridCut::Ellipsis, look.dimText.rgb());
    if (offersFunnel)
        canvas.fill(marks.funnel & inside, ground(state, where.column).rgb());
    if (state.current == where.column)
        canvas.frame(inside, look.accent.rgb());
    const QColor &side = !sorted ? look.line : state.focused ? look.sortLine : look.inactiveSortLine;
    canvas.fill(QRect(inside.right() + 1, rect.top(), look.verticalLine, rect.height()), side.rgb());
    canvas.fill(QRect(rect.left(), inside.bottom() + 1, inside.width(), look.horizontalLine),
                sorted ? side.rgb() : look.line.rgb());
}

void GridHeaderPainter::paintShapes(QImage &picture, const GridGeometry &geometry, const GridHeaderState &state) const
{
    const GridLook &look = cells.look();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const GridShownColumn &where : geometry.shownColumns()) {
        const Marks marks = marksOf(geometry, state, where.column);
        painter.setClipRect(where.clipLeft, 0, where.clipRight - where.clipLeft, picture.height());
        if (!marks.arrow.isEmpty()) {
            const GridSortMark &mark = state.sorts[static_cast<size_t>(sortPlace(state, where.column))];
            painter.fillPath(arrowIn(marks.arrow, mark.descending), look.accent);
        }
        if (!marks.funnel.isEmpty()) {
            const bool lit =
                geometry.columns.at(where.column).filtered || (state.funnelHovered && state.hovered == where.column);
            painter.fillPath(funnelIn(marks.funnel), lit ? look.accent : look.dimText);
        }
    }
}

void GridHeaderPainter::paintHeader(QImage &picture, const GridGeometry &geometry, const GridHeaderState &state,
                                    const GridSource *source)
{
    const GridLook &look = cells.look();
    picture = fitted(picture, geometry.header().size());
    {
        GridCanvas canvas(picture);
        const QRect all = picture.rect();
        canvas.fill(all, (state.enabled ? look.header : look.headerDisabled).rgb());
        canvas.fill(QRect(0, all.bottom() + 1 - look.horizontalLine, all.width(), look.horizontalLine),
                    look.line.rgb());
        if (geometry.numberWidth > 0)
            canvas.fill(QRect(geometry.numberWidth - look.verticalLine, 0, look.verticalLine, all.height()),
                        look.line.rgb());
        for (const GridShownColumn &where : geometry.shownColumns())
            paintCell(canvas, geometry, state, where, source ? source->headerText(where.column) : QString());
    }
    paintShapes(picture, geometry, state);
}

QSet<int> GridHeaderPainter::paintStatistics(QImage &picture, const GridGeometry &geometry, const QStringList &texts,
                                             const QString &title)
{
    const GridLook &look = cells.look();
    picture = fitted(picture, geometry.statistics().size());
    GridCanvas canvas(picture);
    const QRect all = picture.rect();
    canvas.fill(all, look.statisticsBackground.rgb());
    const QSet<int> cutNumbers = repaintStatistics(picture, geometry, geometry.shownColumns(), texts);
    const int border = std::max(look.statisticsBorder, look.horizontalLine);
    canvas.fill(QRect(0, 0, all.width(), border), statisticsBorderColor());
    if (title.isEmpty())
        return cutNumbers;
    // Without row numbers the title stands in front, as narrow as its text.
    const int margin = cells.devicePixels(look.statisticsMargin);
    const int wanted = cells.text().width(title, GridFont::Statistics) + margin;
    const QRect place(0, border, geometry.numberWidth > 0 ? geometry.numberWidth - look.verticalLine : wanted + margin,
                      all.height() - border);
    canvas.fill(place, look.statisticsTitleBackground.rgb());
    cells.text().draw(canvas, place, title, GridFont::Statistics, Qt::AlignHCenter, GridCut::Ellipsis,
                      look.statisticsText.rgb());
    return cutNumbers;
}

QSet<int> GridHeaderPainter::repaintStatistics(QImage &picture, const GridGeometry &geometry,
                                               const std::vector<GridShownColumn> &columns, const QStringList &texts)
{
    QSet<int> cutNumbers;
    const GridLook &look = cells.look();
    GridCanvas canvas(picture);
    const int height = picture.height();
    const int border = std::max(look.statisticsBorder, look.horizontalLine);
    const int margin = cells.devicePixels(look.statisticsMargin);
    for (const GridShownColumn &where : columns) {
        const GridColumn &column = geometry.columns.at(where.column);
        const QRect rect(where.left, border, where.width - look.verticalLine, height - border);
        canvas.setClip(QRect(where.clipLeft, 0, where.clipRight - where.clipLeft, height));
        canvas.fill(rect, look.statisticsBackground.rgb());
        canvas.fill(QRect(rect.right() + 1, 0, look.verticalLine, height), look.line.rgb());
        const QRect room = rect.adjusted(margin, 0, -margin, 0);
        if (!paintStatistic(canvas, room, texts.value(where.column), column) && column.numeric)
            cutNumbers.insert(where.column);
        canvas.fill(QRect(where.left, 0, where.width, border), statisticsBorderColor());
    }
    return cutNumbers;
}

QRgb GridHeaderPainter::statisticsBorderColor() const
{
    const GridLook &look = cells.look();
    return (look.statisticsBorder > 0 ? look.statisticsBorderColor : look.line).rgb();
}

/// The unit stands where the units of the cells above do, so the figures stand below one another too.
bool GridHeaderPainter::paintStatistic(GridCanvas &canvas, const QRect &room, QString text, const GridColumn &column)
{
    const QRgb color = (column.statisticsColor ? *column.statisticsColor : cells.look().statisticsText).rgb();
    const GridFont font = statisticsFont(column);
    const GridCut cut = column.numeric ? GridCut::Hashes : GridCut::Ellipsis;
    const int slot = cells.unitSlot(column);
    const QString unit = slot > 0 ? takeUnit(text) : QString();
    if (text.isEmpty())
        return true;
    const GridPlacedText placed =
        cells.text().place(room.adjusted(0, 0, -slot, 0), text, font, column.statisticsAlignment, cut);
    cells.text().draw(canvas, placed, text, font, color);
    if (unit.isEmpty() || placed.cut)
        return !placed.cut;
    const int width = cells.text().width(column.unitSample, cellFont(column));
    cells.text().draw(canvas, QRect(room.right() + 1 - width, room.top(), width, room.height()), unit, font,
                      Qt::AlignLeft, GridCut::Ellipsis, color);
    return true;
}

int GridHeaderPainter::wantedStatisticWidth(QString text, const GridColumn &column) const
{
    const int slot = cells.unitSlot(column);
    if (slot > 0)
        takeUnit(text);
    const int margins = 2 * cells.devicePixels(cells.look().statisticsMargin);
    return cells.text().width(text, statisticsFont(column)) + margins + slot + cells.look().verticalLine;
}

int GridHeaderPainter::wantedWidth(const QString &text, const GridGeometry &geometry, const GridHeaderState &state,
                                   int column) const
{
    const Marks marks = marksOf(geometry, withoutMouse(state), column);
    const int marked = cells.inside(geometry.headerRect(column)).width() - marks.text.width();
    // Room for an arrow is kept from the start, or the first sort would cut the header off.
    const int arrow = marks.arrow.isEmpty() ? cells.devicePixels(qRound(arrowWidth * cells.look().scale)) : 0;
    return cells.text().width(text, GridFont::Header) + marked + arrow + cells.look().verticalLine;
}

bool GridHeaderPainter::isCut(const QString &text, const GridGeometry &geometry, const GridHeaderState &state,
                              int column) const
{
    return cells.text().width(text, GridFont::Header) > marksOf(geometry, withoutMouse(state), column).text.width();
}

} // namespace ZB
