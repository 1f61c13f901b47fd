#include <QtGui/QFontMetrics>
#include <QtGui/QPainter>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "log/clogrowpainter.h"
#include "uicontrol/logcache.h"
#include "uicontrol/logwindow.h"
#include "zb/cuiresource.h"

namespace {

const QFont &logFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_output_log_text"));
}

constexpr int windowWidth = 260;

/// What has to be marked in each piece of the lines, found by looking at every place of every line. The last piece of a
/// line may be wider than the others; what of it the window cuts off cannot be seen.
QStringList expectedHits(const std::vector<KV::LogTextPtr> &pieces, const QString &wanted)
{
    const QFontMetrics metrics(logFont());
    QStringList rows;
    for (std::size_t first = 0, last = 0; first < pieces.size(); first = last) {
        QString line;
        for (; last < pieces.size() && pieces[last]->lineId == pieces[first]->lineId; ++last)
            line += pieces[last]->text;
        std::vector<bool> marked(static_cast<std::size_t>(line.size()) + 1);
        for (int at = 0; at + wanted.size() <= line.size(); ++at)
            if (line.midRef(at, wanted.size()) == wanted)
                std::fill_n(marked.begin() + at, wanted.size(), true);
        int at = 0;
        for (std::size_t i = first; i < last; ++i) {
            const QString &piece = pieces[i]->text;
            QStringList runs;
            for (int c = 0, start = -1; c <= piece.size(); ++c) {
                const bool inside = c < piece.size() && marked[static_cast<std::size_t>(at + c)];
                if (inside && start < 0)
                    start = c;
                if (!inside && start >= 0)
                    runs << QStringLiteral("%1-%2")
                                .arg(5 + metrics.horizontalAdvance(piece.left(std::exchange(start, -1))))
                                .arg(std::min(windowWidth, 5 + metrics.horizontalAdvance(piece.left(c))));
            }
            rows << runs.join(QLatin1Char(' '));
            at += piece.size();
        }
    }
    return rows;
}

} // namespace

TEST(LogMarks, EveryOccurrenceIsMarkedExactlyAlsoAcrossCuts)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](unsigned n) { return static_cast<int>(random() % n); };
    LogWindow window(windowWidth, 400);
    window.log->slotAutoLine(true);
    const auto cache = makeCache();
    cache->setSplitWidth(250);
    cache->setAutoLine(true);
    const QString letters = QStringLiteral("ab 中文，");
    for (int round = 0; round < 60; ++round) {
        window.log->clear();
        cache->clear();
        QStringList lines;
        for (int i = 0; i < 4; ++i) {
            QString line;
            for (int left = below(150); left > 0; --left)
                line += letters.at(below(static_cast<unsigned>(letters.size())));
            lines << line;
        }
        const QString source = lines.at(below(4));
        const QString wanted = source.mid(below(static_cast<unsigned>(source.size()) + 1), 1 + below(40));
        const bool before = below(2) == 0; // what comes later is marked as well
        if (before)
            window.log->findText(wanted);
        window.add(lines);
        cache->doData(lines.join(QLatin1Char('\n')), 0);
        if (!before) {
            EXPECT_EQ(window.log->findText(wanted), !wanted.isEmpty());
        }
        QStringList expected = expectedHits(cache->getPieces(std::nullopt, 0, 1000), wanted);
        while (expected.size() < 20)
            expected << QString();
        ASSERT_EQ(text(window.hits()), text(expected.mid(expected.size() - 20))) << "wanted " << wanted.toStdString();
    }
}

TEST(LogMarks, MarksFollowTheirTextWhateverMovesIt)
{
    LogWindow window(310, 100);
    window.add({"xx one", "two xx", QString(60, '.') + "xx"}, 0);
    window.add({"other xx"}, 1);
    ASSERT_TRUE(window.log->findText(QStringLiteral("xx")));
    EXPECT_EQ(text(window.hits()), text({"5-17", "29-41", "", "41-53", ""}));
    window.press(Qt::Key_Right);
    EXPECT_EQ(window.horizontal->value(), 62);
    EXPECT_EQ(text(window.hits()), text({"", "", "303-310", "", ""})) << "scrolled sideways";
    window.log->slotAutoLine(true);
    EXPECT_EQ(text(window.hits()), text({"5-17", "29-41", "", "65-77", "41-53"})) << "wrapped";
    window.resizeLog(250, 100);
    EXPECT_EQ(text(window.hits()), text({"5-17", "29-41", "", "125-137", "41-53"})) << "narrower";
    window.log->setFilterLevel(1);
    EXPECT_EQ(text(window.hits()), text({"41-53", "", "", "", ""})) << "filtered";
    window.add({"new xx"}, 1);
    EXPECT_EQ(text(window.hits()), text({"41-53", "29-41", "", "", ""})) << "a new line";
    EXPECT_FALSE(window.log->findText(QString()));
    EXPECT_EQ(text(window.hits()), text({"", "", "", "", ""}));
}

TEST(LogMarks, FindingScrollsDownToTheFirstHitBelowTheTopRow)
{
    LogWindow window(300, 100);
    QStringList lines = numbered(0, 100);
    for (const int hit : {3, 40, 45, 90})
        lines[hit] += QStringLiteral(" here");
    window.add(lines);
    const auto topAfter = [&window](int from, const char *wanted) {
        window.vertical->setSliderPosition(from);
        const bool found = window.log->findText(QString::fromLatin1(wanted));
        return std::string(found ? "found " : "not found ") + std::to_string(window.vertical->value());
    };
    EXPECT_EQ(topAfter(0, "here"), "found 0") << "on the page";
    EXPECT_EQ(topAfter(3, "here"), "found 39") << "shown as the second row";
    EXPECT_EQ(topAfter(34, "here"), "found 39");
    EXPECT_EQ(topAfter(35, "here"), "found 35") << "no further than a page below the top row";
    EXPECT_EQ(topAfter(95, "here"), "found 95") << "nothing below: the last one, which is no reason to scroll up";
    EXPECT_EQ(topAfter(20, "Here"), "not found 20");
    EXPECT_EQ(topAfter(20, ""), "not found 20");
    EXPECT_EQ(topAfter(20, "line 5"), "found 49");
    EXPECT_EQ(window.log->matchCount(), 11);
}

TEST(LogMarks, HitsThatCameAndWentSinceTheSearchAreCountedAnew)
{
    LogWindow window(300, 100);
    QStringList lines = numbered(0, 20);
    lines[3] += QStringLiteral(" here");
    lines[9] += QStringLiteral(" here and here");
    window.add(lines);
    const auto counted = [&window] {
        window.log->updateMatchCount();
        return std::to_string(window.log->matchNumber()) + " of " + std::to_string(window.log->matchCount());
    };
    EXPECT_EQ(counted(), "0 of 0");
    window.press(Qt::Key_Home, Qt::ControlModifier);
    window.log->findText(QStringLiteral("here"));
    EXPECT_TRUE(window.log->findNext());
    EXPECT_EQ(counted(), "2 of 3");
    window.add({QStringLiteral("and here")});
    EXPECT_EQ(window.log->matchCount(), 3) << "nobody has asked";
    EXPECT_EQ(counted(), "2 of 4");
    window.log->clear();
    EXPECT_EQ(counted(), "0 of 0");
}

TEST(LogMarks, NextAndPreviousGoThroughAllHitsAndAroundBothEnds)
{
    LogWindow window(300, 100);
    QStringList lines = numbered(0, 100);
    lines[3] += QStringLiteral(" here and here");
    lines[90] += QStringLiteral(" here");
    window.add(lines);
    EXPECT_FALSE(window.log->findNext()) << "nothing to look for";
    window.press(Qt::Key_Home, Qt::ControlModifier);
    window.log->findText(QStringLiteral("here"));
    const auto step = [&window](bool forwards) {
        EXPECT_TRUE(forwards ? window.log->findNext() : window.log->findPrevious());
        return window.copied().section(QLatin1Char(' '), 1, 1).toInt();
    };
    EXPECT_EQ(step(true), 3) << "the second one of the row that findText showed";
    EXPECT_EQ(step(true), 90);
    EXPECT_EQ(window.vertical->value(), 89);
    EXPECT_EQ(step(true), 3);
    EXPECT_EQ(window.vertical->value(), 2) << "it scrolls up too";
    EXPECT_EQ(step(false), 90);
    EXPECT_EQ(step(false), 3);
    EXPECT_EQ(step(false), 3);
    EXPECT_EQ(step(false), 90);
    window.add(numbered(100, 150));
    EXPECT_EQ(window.vertical->value(), 89) << "new lines do not take the hit away";
    window.vertical->setSliderPosition(0);
    window.click(2);
    EXPECT_EQ(step(true), 3) << "from the selected row on";
    window.log->findText(QStringLiteral("nowhere"));
    EXPECT_FALSE(window.log->findNext());
    EXPECT_FALSE(window.log->findPrevious());
}

TEST(LogMarks, AHitStaysInSightWhileOldLinesGo)
{
    // The second row, and what is selected.
    const auto shown = [](const char *wanted, bool (*find)(LogWindow &, const QString &)) {
        LogWindow window(300, 100);
        window.add(numbered(0, 50001));
        window.vertical->setSliderPosition(100);
        window.log->dataCallBack(numbered(50001, 80001).join(QLatin1Char('\n')), 0);
        window.settleLists(); // the log looks only ten times a second
        EXPECT_TRUE(find(window, QString::fromLatin1(wanted)));
        window.settle();
        window.add(numbered(80001, 80101));
        const QString selected = window.copied();
        return (window.rowText(1) + QLatin1Char('|') + selected).toStdString();
    };
    const auto first = [](LogWindow &window, const QString &wanted) { return window.log->findText(wanted); };
    const auto next = [](LogWindow &window, const QString &wanted) {
        return window.log->findText(wanted) && window.log->findNext();
    };
    EXPECT_EQ(shown("line 45000", first), "line 45000|");
    EXPECT_EQ(shown("line 79990", first), "line 79990|") << "not in the list when the log looked last";
    EXPECT_EQ(shown("line 4500", next), "line 45000|line 45001");
}

TEST(LogMarks, AfterLinesWereCutAnewTheSearchGoesOnFromWhatIsInSight)
{
    LogWindow window(310, 100);
    window.log->slotAutoLine(true);
    QStringList lines;
    for (int i = 0; i < 30; ++i)
        lines << QStringLiteral("line %1 here ").arg(i) + QString(100, QLatin1Char('x'));
    window.add(lines);
    window.log->findText(QStringLiteral("here"));
    ASSERT_TRUE(window.log->findPrevious());
    EXPECT_GT(window.vertical->value(), 60);
    window.resizeLog(1000, 100); // one row a line instead of three
    EXPECT_EQ(window.vertical->value(), 25);
    ASSERT_TRUE(window.log->findNext());
    EXPECT_EQ(window.copied().section(QLatin1Char(' '), 0, 1), QStringLiteral("line 25"));
}

TEST(LogMarks, PlacesKeepNoPieceThatItsListHasDropped)
{
    KV::CLogTextPlaces places(logFont());
    auto piece = boost::make_shared<KV::LogTextData>(KV::LogTextData{QString(5000, QLatin1Char('x')), 0, 1});
    const KV::LogSlice slice = places.slice(piece, 12000, 12300);
    EXPECT_GT(slice.first, 1000);
    EXPECT_EQ(places.width(piece), 30000);
    const boost::weak_ptr<KV::LogTextData> watched = piece;
    piece.reset();
    EXPECT_TRUE(watched.expired());
}

TEST(LogMarks, NextScrollsSidewaysInALineOfAnyLength)
{
    LogWindow window(310, 100);
    const QString filler = QStringLiteral("0123456789").repeated(10000);
    window.add({filler + "needle" + filler + "needle"});
    ASSERT_TRUE(window.log->findText(QStringLiteral("needle")));
    for (const int column : {200006, 100000}) {
        ASSERT_TRUE(window.log->findNext());
        const int left = 5 + column * 6 - window.horizontal->value();
        EXPECT_EQ(text(window.hits()),
                  text({QStringLiteral("%1-%2").arg(left).arg(std::min(left + 36, 310)), "", "", "", ""}))
            << column;
    }
}

TEST(LogMarks, ALongLineLooksAtAnyPlaceAsIfItStartedThere)
{
    LogWindow window(310, 40);
    QString line;
    for (int i = 0; line.size() < 60000; ++i)
        line += i % 7 == 0 ? QStringLiteral("股票%1").arg(i) : QStringLiteral("<%1>").arg(i);
    window.add({line});
    const QFontMetrics metrics(logFont());
    for (const int first : {5000, 31234, 59000}) {
        const QString shown = line.mid(first, 200);
        LogWindow other(310, 40);
        other.add({shown});
        const int column = metrics.horizontalAdvance(line.left(first));
        window.horizontal->setSliderPosition(column);
        const QRect text(5, 2, 300, 20); // in front of it stands the character before
        EXPECT_EQ(window.picture().copy(text), other.picture().copy(text)) << first;
    }
}

TEST(LogMarks, TextFromRightToLeftIsMarkedWhereItStands)
{
    KV::CLogTextPlaces places(logFont());
    const auto spans = [&places](const QString &line, int start, int length) {
        QStringList found;
        for (const auto &[x, width] : places.spans({0, line, 0}, {start, length}))
            found << QStringLiteral("%1+%2").arg(x).arg(width);
        return found.join(QLatin1Char(' ')).toStdString();
    };
    const QString mixed = QStringLiteral("abc שלום def");
    const QFontMetrics metrics(logFont());
    const int hebrew = metrics.horizontalAdvance(QStringLiteral("שלום"));
    EXPECT_EQ(spans(mixed, 0, 3), "0+18");
    EXPECT_EQ(spans(mixed, 4, 4), "24+" + std::to_string(hebrew));
    EXPECT_EQ(spans(mixed, 9, 3), std::to_string(30 + hebrew) + "+18");
    const int first = QString::fromStdString(spans(mixed, 4, 1)).section('+', 0, 0).toInt();
    const int last = QString::fromStdString(spans(mixed, 7, 1)).section('+', 0, 0).toInt();
    EXPECT_GT(first, last) << "the first letter stands on the right";
    EXPECT_EQ(spans(mixed, 2, 3).find(' ') != std::string::npos, true) << "two places for one range";
}

TEST(LogMarks, MovedRowsLookLikeRowsDrawnAnew)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](unsigned n) { return static_cast<int>(random() % n); };
    const KV::LogLook look{Qt::white, Qt::black, Qt::white, Qt::yellow, Qt::blue, 2};
    std::vector<KV::LogTextPtr> pieces;
    for (int i = 0; i < 60; ++i)
        pieces.push_back(boost::make_shared<KV::LogTextData>(
            KV::LogTextData{QStringLiteral("行 %1 gjpqÄ|").arg(i).repeated(1 + i % 4), 0, i}));
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        KV::CLogTextPlaces places(logFont());
        KV::CLogLayout layout;
        layout.size = QSize(240, 187);
        const QSize pixels = (QSizeF(layout.size) * ratio).toSize();
        KV::CLogRowPainter painter;
        painter.setLook(look);
        painter.setLayout(layout);
        QPixmap picture(pixels);
        picture.setDevicePixelRatio(ratio);
        int top = 0;
        int offset = 0;
        for (int step = 0; step < 60; ++step) {
            top = std::clamp(top + below(13) - 6, 0, 55);
            offset = below(6) == 0 ? below(3) * 40 : offset;
            std::vector<KV::LogRow> rows(static_cast<std::size_t>(layout.shownRows()));
            for (std::size_t i = 0; i < rows.size() && static_cast<std::size_t>(top) + i < pieces.size(); ++i) {
                rows[i].piece = pieces[static_cast<std::size_t>(top) + i];
                rows[i].selected = below(20) == 0;
                if (below(5) == 0)
                    rows[i].marks = {{below(3), 3}};
            }
            const auto draw = [&](KV::CLogRowPainter &with, QPixmap &on) {
                with.prepare(on, rows, offset);
                QPainter device(&on);
                with.paint(device, places);
            };
            draw(painter, picture);
            KV::CLogRowPainter fresh;
            fresh.setLook(look);
            fresh.setLayout(layout);
            QPixmap expected(pixels);
            expected.setDevicePixelRatio(ratio);
            draw(fresh, expected);
            ASSERT_EQ(picture.toImage(), expected.toImage()) << "ratio " << ratio << " step " << step;
        }
    }
}
