#include <gtest/gtest.h>

#include "framework/gridlistsource.h"
#include "grid/gridgeometry.h"

using namespace ZB;

namespace {

/// Six columns of 50, 60, 70, 80, 90, 100 pixels; 300 x 200 with header 28, rows 24, statistics 24, numbers 40.
GridGeometry sixColumns(double ratio = 1.0)
{
    GridGeometry geometry;
    geometry.columns.setPixelRatio(ratio);
    geometry.columns.reset(6);
    for (int column = 0; column < 6; ++column) {
        GridColumn look;
        look.width = 50 + 10 * column;
        geometry.columns.set(column, look);
    }
    geometry.size = QSize(qRound(300 * ratio), qRound(200 * ratio));
    geometry.headerHeight = qRound(28 * ratio);
    geometry.rowHeight = qRound(24 * ratio);
    geometry.statisticsHeight = qRound(24 * ratio);
    geometry.numberWidth = qRound(40 * ratio);
    geometry.rowCount = 100;
    return geometry;
}

QString text(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// "2:90-150" for a column that shows whole, "2:90-150(100-150)" for one of which only a part shows, "*" when frozen.
std::string columnsOf(const GridGeometry &geometry)
{
    QStringList texts;
    for (const GridShownColumn &column : geometry.shownColumns()) {
        const int right = column.left + column.width;
        QString one = QStringLiteral("%1%2:%3-%4")
                          .arg(column.frozen ? QStringLiteral("*") : QString())
                          .arg(column.column)
                          .arg(column.left)
                          .arg(right);
        if (column.clipLeft != column.left || column.clipRight != right)
            one += QStringLiteral("(%1-%2)").arg(column.clipLeft).arg(column.clipRight);
        texts.append(one);
    }
    return texts.join(QLatin1Char(' ')).toStdString();
}

std::string hitText(const GridHit &hit)
{
    static const char *const names[] = {"Outside", "Corner", "Header",  "Edge",  "Funnel", "Rest",
                                        "Number",  "Cell",   "RowRest", "Below", "Stat",   "StatTitle"};
    QString result = QLatin1String(names[static_cast<int>(hit.area)]);
    if (hit.column >= 0)
        result += QStringLiteral(" c%1").arg(hit.column);
    if (hit.row >= 0)
        result += QStringLiteral(" r%1").arg(hit.row);
    return result.toStdString();
}

} // namespace

TEST(GridGeometry, AreasStandBelowOneAnother)
{
    GridGeometry geometry = sixColumns();
    EXPECT_EQ(text(geometry.header()), "0,0 300x28");
    EXPECT_EQ(text(geometry.body()), "0,28 300x148");
    EXPECT_EQ(text(geometry.statistics()), "0,176 300x24");
    geometry.columns.setFrozen(1);
    EXPECT_EQ(text(geometry.scrolledArea()), "90,28 210x148");
    geometry.size = QSize(30, 20); // smaller than the header
    EXPECT_EQ(text(geometry.header()), "0,0 30x20");
    EXPECT_EQ(text(geometry.body()), "0,20 30x0");
    EXPECT_EQ(text(geometry.statistics()), "0,20 30x0");
    EXPECT_EQ(geometry.shownRowCount(), 0);
    EXPECT_EQ(hitText(geometry.hit(QPoint(10, 30))), "Outside");
}

TEST(GridGeometry, ColumnsScrollUnderTheFrozenOnes)
{
    GridGeometry geometry = sixColumns();
    EXPECT_EQ(columnsOf(geometry), "0:40-90 1:90-150 2:150-220 3:220-300");
    EXPECT_EQ(geometry.maximumScrollX(), 40 + 450 - 300);
    geometry.scrollTo(70, 0);
    EXPECT_EQ(columnsOf(geometry), "1:20-80(40-80) 2:80-150 3:150-230 4:230-320(230-300)");
    geometry.columns.setFrozen(2);
    EXPECT_EQ(columnsOf(geometry), "*0:40-90 *1:90-150 3:150-230 4:230-320(230-300)");
    geometry.scrollTo(1000, 0);
    EXPECT_EQ(geometry.scrollX, 190);
    EXPECT_EQ(columnsOf(geometry), "*0:40-90 *1:90-150 4:110-200(150-200) 5:200-300");
    geometry.columns.setFrozen(99); // more than there are: nothing scrolls, what does not fit is cut off
    EXPECT_EQ(columnsOf(geometry), "*0:40-90 *1:90-150 *2:150-220 *3:220-300");
}

TEST(GridGeometry, OrderAndVisibilityOfColumnsShowInTheirPlaces)
{
    GridGeometry geometry = sixColumns();
    geometry.size.setWidth(600);
    GridColumns &columns = geometry.columns;
    columns.setOrder({5, 3, 3, 77, -1, 0});
    EXPECT_EQ(joined(columns.order()), "5 3 0 1 2 4");
    GridColumn hidden = columns.at(3);
    hidden.visible = false;
    columns.set(3, hidden);
    EXPECT_EQ(columnsOf(geometry), "5:40-140 0:140-190 1:190-250 2:250-320 4:320-410");
    EXPECT_EQ(text(geometry.headerRect(3)), text(QRect()));

    EXPECT_TRUE(columns.move(4, 0));
    EXPECT_EQ(joined(columns.order()), "4 5 3 0 1 2");
    EXPECT_TRUE(columns.move(4, 5)); // behind the last
    EXPECT_EQ(joined(columns.order()), "5 3 0 1 2 4");
    EXPECT_TRUE(columns.move(5, 2)); // the hidden column stays where it is
    EXPECT_EQ(joined(columns.order()), "3 0 5 1 2 4");
    EXPECT_FALSE(columns.move(5, 1));
    EXPECT_FALSE(columns.move(5, 2));
    EXPECT_FALSE(columns.move(3, 0));

    columns.resize(4);
    EXPECT_EQ(joined(columns.order()), "3 0 1 2");
    columns.resize(5);
    EXPECT_EQ(joined(columns.order()), "3 0 1 2 4");
    EXPECT_EQ(columns.at(4).width, GridColumn().width);
}

TEST(GridGeometry, WidthsStayBetweenTheirBounds)
{
    GridGeometry geometry = sixColumns();
    GridColumn look;
    for (const auto &[wished, kept] : std::vector<std::pair<int, int>>{
             {-5, GridColumns::minimumWidth}, {0, GridColumns::minimumWidth}, {1 << 30, GridColumns::maximumWidth}}) {
        look.width = wished;
        geometry.columns.set(0, look);
        EXPECT_EQ(geometry.columns.at(0).width, kept);
    }
    EXPECT_FALSE(geometry.columns.set(6, look));
    EXPECT_FALSE(geometry.columns.set(-1, look));
}

TEST(GridGeometry, EveryPointBelongsToWhatIsDrawnThere)
{
    GridGeometry geometry = sixColumns();
    geometry.columns.setFrozen(1);
    geometry.scrollTo(75, 24 * 10 + 6);
    GridColumn look = geometry.columns.at(3);
    look.filterable = true;
    geometry.columns.set(3, look);
    look = geometry.columns.at(2);
    look.filterable = true;
    look.alignment = Qt::AlignRight | Qt::AlignVCenter;
    geometry.columns.set(2, look);
    ASSERT_EQ(columnsOf(geometry), "*0:40-90 2:75-145(90-145) 3:145-225 4:225-315(225-300)");

    const std::vector<std::pair<QPoint, std::string>> points =
        {
            {{0, 0}, "Corner"},          {{39, 27}, "Corner"},      {{40, 5}, "Header c0"},
            {{85, 5}, "Header c0"},      {{86, 5}, "Edge c0"},      {{94, 5}, "Edge c0"},
            {{95, 5}, "Header c2"}, // its funnel at the left is under the frozen column
            {{141, 5}, "Edge c2"},       {{149, 5}, "Edge c2"},     {{150, 5}, "Header c3"},
            {{215, 5}, "Funnel c3"},     {{221, 5}, "Edge c3"},     {{299, 5}, "Header c4"},
            {{0, 28}, "Number r10"},     {{39, 45}, "Number r10"},  {{40, 45}, "Cell c0 r10"},
            {{40, 46}, "Cell c0 r11"},   {{89, 46}, "Cell c0 r11"}, {{90, 46}, "Cell c2 r11"},
            {{145, 175}, "Cell c3 r16"}, {{145, 176}, "Stat c3"},   {{20, 199}, "StatTitle"},
            {{20, 200}, "Outside"},      {{300, 50}, "Outside"},    {{-1, 50}, "Outside"},
        };
    for (const auto &[point, expected] : points)
        EXPECT_EQ(hitText(geometry.hit(point)), expected) << point.x() << "," << point.y();

    geometry.rowCount = 3;
    geometry.size.setWidth(600);
    geometry.scrollTo(0, 0);
    EXPECT_EQ(hitText(geometry.hit(QPoint(489, 40))), "Cell c5 r0");
    EXPECT_EQ(hitText(geometry.hit(QPoint(490, 40))), "RowRest r0");
    EXPECT_EQ(hitText(geometry.hit(QPoint(100, 28 + 72))), "Below c1");
    EXPECT_EQ(hitText(geometry.hit(QPoint(520, 5))), "Rest");
}

TEST(GridGeometry, IsExactAtTheLastOfTenMillionAndOfManyBillionRows)
{
    for (const qint64 count : {qint64(10000000), qint64(300000000000)}) {
        GridGeometry geometry = sixColumns();
        geometry.rowCount = count;
        geometry.scrollTo(0, std::numeric_limits<qint64>::max());
        EXPECT_EQ(geometry.scrollY, count * 24 - 148);
        EXPECT_EQ(geometry.firstRow(), count - 7);
        EXPECT_EQ(geometry.shownRowCount(), 7);
        EXPECT_EQ(geometry.rowRect(count - 1).bottom(), geometry.body().bottom());
        EXPECT_EQ(hitText(geometry.hit(QPoint(50, 175))), "Cell c0 r" + std::to_string(count - 1));
        EXPECT_EQ(hitText(geometry.hit(QPoint(50, 152))), "Cell c0 r" + std::to_string(count - 1));
        EXPECT_EQ(hitText(geometry.hit(QPoint(50, 151))), "Cell c0 r" + std::to_string(count - 2));
        EXPECT_FALSE(geometry.rowRect(0).intersects(geometry.body()));
        geometry.scrollTo(0, geometry.scrollYFor(count / 2, true));
        EXPECT_EQ(geometry.rowTop(count / 2), 28 + (148 - 24) / 2);
    }
}

TEST(GridGeometry, ScrollsAsLittleAsNeeded)
{
    GridGeometry geometry = sixColumns();
    geometry.columns.setFrozen(1);
    geometry.scrollTo(0, 240);
    EXPECT_EQ(geometry.scrollYFor(10, false), 240);           // whole on the screen
    EXPECT_EQ(geometry.scrollYFor(15, false), 240);           // ends at 384, the screen at 388
    EXPECT_EQ(geometry.scrollYFor(16, false), 17 * 24 - 148); // the last one that is cut
    EXPECT_EQ(geometry.scrollYFor(3, false), 72);
    EXPECT_EQ(geometry.scrollYFor(0, true), 0);
    EXPECT_EQ(geometry.scrollYFor(99, true), geometry.maximumScrollY());
    EXPECT_EQ(geometry.scrollXFor(0), 0); // frozen
    EXPECT_EQ(geometry.scrollXFor(3), 0);
    EXPECT_EQ(geometry.scrollXFor(4), 90);
    geometry.scrollTo(190, 0);
    EXPECT_EQ(geometry.scrollXFor(1), 0);
    EXPECT_EQ(geometry.scrollXFor(4), 190); // ends at 290
    EXPECT_EQ(geometry.scrollXFor(3), 130);
}

TEST(GridGeometry, ADraggedColumnGoesIntoTheNearestGap)
{
    GridGeometry geometry = sixColumns();
    geometry.columns.setFrozen(2);
    geometry.scrollTo(100, 0);
    ASSERT_EQ(columnsOf(geometry), "*0:40-90 *1:90-150 3:120-200(150-200) 4:200-290 5:290-390(290-300)");
    const std::vector<std::pair<int, int>> gaps = {{0, 0},   {64, 0},  {66, 1},  {119, 1}, {121, 2}, {149, 2},
                                                   {151, 3}, {161, 4}, {244, 4}, {246, 5}, {299, 5}};
    for (const auto &[x, gap] : gaps)
        EXPECT_EQ(geometry.gapAt(x), gap) << x;
    EXPECT_EQ(geometry.gapX(0), 40);
    EXPECT_EQ(geometry.gapX(4), 200);
    EXPECT_EQ(geometry.gapX(6), 390);
}

TEST(GridGeometry, HoldsAtOneAndAHalfTimesTheSize)
{
    GridGeometry geometry = sixColumns(1.5);
    geometry.columns.setFrozen(1);
    geometry.scrollTo(30, 36 * 7);
    EXPECT_EQ(text(geometry.body()), "0,42 450x222");
    EXPECT_EQ(columnsOf(geometry), "*0:60-135 1:105-195(135-195) 2:195-300 3:300-420 4:420-555(420-450)");
    EXPECT_EQ(text(geometry.cellRect(8, 2)), "195,78 105x36");
    EXPECT_EQ(hitText(geometry.hit(QPoint(299, 113))), "Cell c2 r8");
    EXPECT_EQ(hitText(geometry.hit(QPoint(300, 114))), "Cell c3 r9");
    geometry.columns.setPixelRatio(1.25); // columns of 62.5 pixels and the like: no gaps, no overlaps
    EXPECT_EQ(columnsOf(geometry), "*0:60-123 1:93-168(123-168) 2:168-256 3:256-356 4:356-469(356-450)");
}
