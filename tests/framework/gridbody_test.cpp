#include <gtest/gtest.h>

#include <QtGui/QPainter>
#include <algorithm>
#include <boost/make_shared.hpp>
#include <random>

#include "framework/gridlistsource.h"
#include "grid/gridbody.h"
#include "grid/gridcellpainter.h"
#include "grid/gridrows.h"
#include "grid/gridselection.h"
#include "zb/cbasetablecolumnsimpletextdelegate.h"

using namespace ZB;

namespace {

/// Shows the text in upper case over a bar, and its own mark under the mouse.
class BarDelegate : public CBaseTableColumnSimpleTextDelegate
{
public:
    BarDelegate() : CBaseTableColumnSimpleTextDelegate(1, nullptr) {}
    QString getText(const QString &text) const override { return text.toUpper(); }
    int painted = 0;

protected:
    void handlePaint(const QString &text, const QRect &rect, QPainter *painter, bool selected) override
    {
        ++painted;
        painter->fillRect(rect.adjusted(0, 0, -rect.width() * (text.size() % 4) / 4, 0),
                          selected ? QColor(90, 120, 200) : QColor(160, 190, 240));
    }
};

/// A body over a list, with what a view keeps beside it; `screen` is only changed where the body asks for it.
struct Stage
{
    explicit Stage(int rowCount, int columnCount = 6) : source(rowCount, columnCount)
    {
        geometry.columns.reset(columnCount);
        for (int column = 0; column < columnCount; ++column) {
            GridColumn look;
            look.width = 50 + 13 * column;
            look.numeric = column % 2;
            look.alignment = column % 2 ? Qt::AlignRight : Qt::AlignLeft;
            geometry.columns.set(column, look);
        }
        geometry.size = QSize(260, 200);
        geometry.headerHeight = 28;
        geometry.rowHeight = 24;
        geometry.numberWidth = 40;
        painter.setLook(plainLook(), 1.0);
    }

    GridFrame frame() const
    {
        GridFrame result{geometry, rows.window(), selection, delegates};
        result.currentRow = currentRow;
        result.currentColumn = currentColumn;
        result.focused = focused;
        result.oddEven = oddEven;
        result.firstNumber = firstNumber;
        result.now = now;
        return result;
    }

    std::vector<QRect> update()
    {
        rows.update(source, geometry, false, currentRow);
        const std::vector<QRect> damage = body.update(&source, frame());
        if (screen.size() != geometry.size) {
            screen = QImage(geometry.size, QImage::Format_RGB32);
            screen.fill(Qt::magenta);
        }
        QPainter onScreen(&screen);
        for (const QRect &rect : damage)
            body.paint(onScreen, rect);
        return damage;
    }

    QImage picture(const GridBody &shown) const
    {
        QImage result(geometry.size, QImage::Format_RGB32);
        result.fill(Qt::magenta);
        QPainter target(&result);
        shown.paint(target, result.rect());
        return result;
    }

    /// The same, drawn by a body that knows nothing of what was there before.
    QImage fromScratch()
    {
        GridBody fresh(painter);
        fresh.update(&source, frame());
        return picture(fresh);
    }

    ListSource source;
    GridGeometry geometry;
    GridRows rows;
    GridSelection selection;
    std::vector<boost::shared_ptr<CBaseTableColumnWidgetDelegate>> delegates;
    GridRowId currentRow = NoGridRow;
    int currentColumn = -1;
    bool focused = true;
    bool oddEven = false;
    qint64 firstNumber = 1;
    qint64 now = 0;
    GridCellPainter painter;
    GridBody body{painter};
    QImage screen;
};

/// Where two pictures differ.
QRect difference(const QImage &a, const QImage &b)
{
    QRect result;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                result |= QRect(x, y, 1, 1);
    return result;
}

std::string text(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()).toStdString();
}

} // namespace

TEST(GridBody, AChangedCellIsDrawnAloneAndNothingElseIsAsked)
{
    Stage stage(100);
    stage.update();
    const QImage before = stage.screen.copy();
    stage.source.asked = 0;
    EXPECT_TRUE(stage.update().empty());
    EXPECT_EQ(stage.source.asked, 0) << "nothing changed";

    stage.source.setText(3, 1, QStringLiteral("9"));
    const std::vector<QRect> damage = stage.update();
    const QRect cell = stage.geometry.cellRect(3, 1);
    ASSERT_EQ(damage.size(), 1u);
    EXPECT_EQ(text(damage[0]), text(cell));
    EXPECT_EQ(stage.source.asked, static_cast<int>(stage.geometry.shownColumns().size())) << "its row only";
    const QRect changed = difference(before, stage.screen);
    EXPECT_FALSE(changed.isEmpty());
    EXPECT_TRUE(cell.contains(changed)) << text(changed);
}

TEST(GridBody, ScrollingAsksAndDrawsOnlyTheRowThatComesIntoSight)
{
    Stage stage(1000);
    stage.update();
    stage.source.asked = 0;
    stage.rows.scrollTo(&stage.source, stage.geometry, 0, 24);
    stage.update();
    const auto shown = static_cast<int>(stage.geometry.shownColumns().size());
    EXPECT_EQ(stage.source.asked, shown);
    stage.source.insert(0); // every row on the screen moves by one, and the view with them
    stage.source.asked = 0;
    stage.update();
    EXPECT_EQ(stage.source.asked, 0);
    EXPECT_EQ(stage.screen, stage.fromScratch());
    stage.source.asked = 0;
    stage.rows.scrollTo(&stage.source, stage.geometry, 30, stage.geometry.scrollY);
    stage.update();
    EXPECT_LE(stage.source.asked, 9 * 2) << "sideways: the columns that come into sight";
    EXPECT_EQ(stage.screen, stage.fromScratch());
}

TEST(GridBody, EveryPixelIsAsIfDrawnFromScratchAfterRandomChanges)
{
    for (const unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u}) {
        std::mt19937 random(seed);
        const auto upTo = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        Stage stage(40, 8);
        auto delegate = boost::make_shared<BarDelegate>();
        stage.delegates.resize(8);
        for (int step = 0; step < 400; ++step) {
            const qint64 count = std::max<qint64>(1, stage.source.rowCount());
            const int place = upTo(static_cast<int>(count));
            const int column = upTo(8);
            const GridRowId id = stage.source.rowCount() > 0 ? stage.source.idAt(place) : NoGridRow;
            GridColumn look = stage.geometry.columns.at(column);
            switch (upTo(20)) {
            case 0:
            case 1:
            case 2:
                stage.rows.scrollTo(&stage.source, stage.geometry, stage.geometry.scrollX,
                                    stage.geometry.scrollY + upTo(200) - 100);
                break;
            case 3:
            case 4:
            case 5:
                stage.rows.scrollTo(&stage.source, stage.geometry, stage.geometry.scrollX + upTo(300) - 150,
                                    stage.geometry.scrollY);
                break;
            case 6:
            case 7:
                if (id != NoGridRow)
                    stage.source.setText(place, column, QString::number(random() % 100000));
                break;
            case 8:
                stage.source.insert(place % (stage.source.rowCount() + 1));
                break;
            case 9:
                if (id != NoGridRow)
                    stage.source.remove(place);
                break;
            case 10:
                stage.source.reorder([&](auto &rows) { std::shuffle(rows.begin(), rows.end(), random); });
                break;
            case 11:
                if (id != NoGridRow)
                    upTo(2) ? stage.selection.toggleRow(id) : stage.selection.selectRow(id);
                break;
            case 12:
                stage.selection.beginBlock(upTo(2));
                stage.selection.setBlock({id}, {column, (column + 1) % 8});
                break;
            case 13:
                stage.currentRow = id;
                stage.currentColumn = column;
                break;
            case 14:
                stage.geometry.size = QSize(60 + upTo(600), 30 + upTo(300));
                break;
            case 15:
                look.width = 15 + upTo(150);
                stage.geometry.columns.set(column, look);
                break;
            case 16:
                look.visible = !look.visible;
                stage.geometry.columns.set(column, look);
                stage.geometry.columns.setFrozen(upTo(4));
                break;
            case 17:
                stage.geometry.columns.move(column, upTo(8));
                break;
            case 18:
                stage.focused = !stage.focused;
                stage.oddEven = upTo(2);
                stage.firstNumber = 1 + upTo(3) * 100;
                break;
            default:
                stage.delegates[static_cast<size_t>(column)] = upTo(2) ? delegate : nullptr;
                if (id != NoGridRow)
                    stage.source.setMarked(place, upTo(2));
                stage.body.invalidate();
            }
            stage.update();
            const QImage expected = stage.fromScratch();
            ASSERT_EQ(stage.picture(stage.body), expected) << "seed " << seed << " step " << step << " at "
                                                           << text(difference(stage.picture(stage.body), expected));
            ASSERT_EQ(stage.screen, expected) << "seed " << seed << " step " << step << ": not told to show "
                                              << text(difference(stage.screen, expected));
        }
    }
}

TEST(GridBody, AChangedTextFlashesAndFadesBackToWhatItWas)
{
    Stage stage(20);
    stage.update();
    stage.source.flashes = GridFlash::Rise;
    stage.source.setText(2, 1, QStringLiteral("7"));
    stage.now = 1000;
    stage.update();
    EXPECT_TRUE(stage.body.isFlashing());
    const QImage calm = stage.fromScratch();
    const QRect flashing = difference(calm, stage.screen);
    EXPECT_TRUE(stage.geometry.cellRect(2, 1).contains(flashing)) << text(flashing);
    EXPECT_GT(flashing.width(), 40) << "the whole ground, not only the text";

    stage.now = 1250;
    EXPECT_EQ(stage.update().size(), 1u);
    EXPECT_TRUE(stage.body.isFlashing());
    stage.now = 1500;
    stage.update();
    EXPECT_FALSE(stage.body.isFlashing());
    EXPECT_EQ(stage.screen, calm);
    stage.now = 1600;
    EXPECT_TRUE(stage.update().empty());
}

TEST(GridBody, OnlyATextThatChangesInSightFlashes)
{
    Stage stage(100);
    stage.source.flashes = GridFlash::Fall;
    stage.update();
    EXPECT_FALSE(stage.body.isFlashing()) << "new in sight";
    stage.source.setText(50, 0, QStringLiteral("x"));
    stage.rows.scrollTo(&stage.source, stage.geometry, 0, 50 * 24);
    stage.update();
    EXPECT_FALSE(stage.body.isFlashing()) << "changed out of sight";
    stage.source.setMarked(51, true);
    stage.update();
    EXPECT_FALSE(stage.body.isFlashing()) << "another colour";
    stage.source.renew();
    stage.source.setText(51, 0, QStringLiteral("y"));
    stage.update();
    EXPECT_FALSE(stage.body.isFlashing()) << "everything is another";
    stage.source.setText(51, 5, QStringLiteral("z"));
    stage.update();
    EXPECT_FALSE(stage.body.isFlashing()) << "in a column out of sight";
    stage.source.setText(51, 0, QStringLiteral("x"));
    stage.source.reorder([](auto &rows) { std::swap(rows[51], rows[53]); });
    stage.update();
    EXPECT_TRUE(stage.body.isFlashing()) << "its row moved, but stays in sight";
}

TEST(GridBody, ADelegatePaintsUnderTheTextAndIsAskedOnlyWhenItsCellChanges)
{
    Stage stage(20);
    auto delegate = boost::make_shared<BarDelegate>();
    stage.delegates.resize(1);
    stage.update();
    const QImage plain = stage.screen.copy();
    stage.delegates[0] = delegate;
    stage.body.invalidate();
    stage.update();
    EXPECT_EQ(delegate->painted, 8);
    const QRect changed = difference(plain, stage.screen);
    EXPECT_TRUE(QRect(40, 28, 49, 172).contains(changed)) << text(changed);
    stage.source.setText(3, 1, QStringLiteral("other column"));
    stage.rows.scrollTo(&stage.source, stage.geometry, 0, 10);
    stage.update();
    EXPECT_EQ(delegate->painted, 8);
    stage.source.setText(3, 0, QStringLiteral("abc"));
    stage.update();
    EXPECT_EQ(delegate->painted, 9);
}

TEST(GridBody, ForgetsEverythingForAnotherSource)
{
    Stage stage(20);
    stage.update();
    const QImage before = stage.screen.copy();
    for (auto &row : stage.source.rows)
        row.texts[0] = QStringLiteral("other"); // same ids, same versions: another source's rows
    stage.body.forget();
    stage.source.asked = 0;
    stage.update();
    EXPECT_GT(stage.source.asked, 0);
    EXPECT_NE(stage.screen, before);
    EXPECT_EQ(stage.screen, stage.fromScratch());
}
