#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtGui/QPixmap>
#include <QtGui/QTextDocument>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>
#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>
#include <memory>

#include "benchcase.h"
#include "log/chpflogwidget.h"
#include "log/cloglinecutter.h"
#include "zb/cuiresource.h"

namespace bench {

namespace {

constexpr int keptLines = 50000;
constexpr int quickShare = 20; ///< --quick measures a twentieth
constexpr QSize viewSize(640, 480);

const QFont &logFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_output_log_text"));
}

/// Lines of 110 characters as a terminal writes them, every other one with Chinese text, one in ten a cancelled order.
QString logLine(int number)
{
    const QString state = number % 10 == 0 ? QStringLiteral("CANCELLED") : QStringLiteral("ACCEPTED");
    const QString text =
        number % 2 == 0
            ? QStringLiteral(
                  "2021-09-06 23:41:57,%1 [INFO] order %2 at 10631.0524 volume 449038 %3 by exchange, session 7 ")
                  .arg(number % 1000, 3, 10, QLatin1Char('0'))
                  .arg(number)
                  .arg(state)
            : QStringLiteral(
                  "2021-09-06 23:41:57,%1 股票('688981', '中芯国际', %2, 44903805.00078) 委托已报，等待成交回报 %3 ")
                  .arg(number % 1000, 3, 10, QLatin1Char('0'))
                  .arg(number)
                  .arg(state);
    return text.leftJustified(110, QLatin1Char('.'), true);
}

/// `count` lines in blocks of `perBlock`. Few different ones, so that making them costs nothing.
class Blocks
{
public:
    Blocks(int count, int perBlock) : blockCount(count / perBlock)
    {
        for (int i = 0; i < different; ++i) {
            QStringList lines;
            for (int line = 0; line < perBlock; ++line)
                lines << logLine(i * perBlock + line);
            texts << lines.join(QLatin1Char('\n'));
        }
    }

    int count() const { return blockCount; }
    const QString &at(int i) const { return texts.at(i % different); }

private:
    static constexpr int different = 100;
    int blockCount;
    QStringList texts;
};

/// Gives blocks to a view and lets its window live meanwhile.
template <typename Append>
void feed(const Blocks &blocks, const Append &append)
{
    QElapsedTimer sinceEvents;
    sinceEvents.start();
    for (int i = 0; i < blocks.count(); ++i) {
        append(blocks.at(i));
        if (sinceEvents.elapsed() >= 10) {
            QApplication::processEvents();
            sinceEvents.restart();
        }
    }
}

/// Notes when a widget was drawn.
class PaintWatch : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
    bool painted = false;
};

std::unique_ptr<KV::CHpfLogWidget> makeLog(bool wrap)
{
    auto log = std::make_unique<KV::CHpfLogWidget>(1);
    log->resize(viewSize);
    if (wrap)
        log->slotAutoLine(true);
    log->show();
    QApplication::processEvents();
    return log;
}

/// Waits until everything given to a log so far has been drawn: its own timer has to find it, unless it just has.
void waitUntilShown(KV::CHpfLogWidget &log)
{
    const auto last = boost::make_shared<KV::CModelTextCache>();
    last->dataCallBack(QString(), 0); // the queue is worked off in order
    while (last->getDataSize() == 0)
        QApplication::processEvents(QEventLoop::AllEvents, 1);
    PaintWatch watch;
    log.installEventFilter(&watch);
    QElapsedTimer timer;
    timer.start();
    while (!watch.painted && timer.elapsed() < 150)
        QApplication::processEvents(QEventLoop::AllEvents, 1);
}

std::unique_ptr<QPlainTextEdit> makeStock(bool wrap)
{
    auto edit = std::make_unique<QPlainTextEdit>();
    edit->setReadOnly(true);
    edit->setFont(logFont());
    edit->setMaximumBlockCount(keptLines);
    edit->setUndoRedoEnabled(false);
    edit->setLineWrapMode(wrap ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    edit->setWordWrapMode(QTextOption::WrapAnywhere);
    edit->resize(viewSize);
    edit->show();
    QApplication::processEvents();
    return edit;
}

void fillLog(KV::CHpfLogWidget &log, int lines)
{
    feed(Blocks(lines, 100), [&log](const QString &text) { log.dataCallBack(text, 0); });
    waitUntilShown(log);
}

void fillStock(QPlainTextEdit &edit, int lines)
{
    feed(Blocks(lines, 100), [&edit](const QString &text) { edit.appendPlainText(text); });
    QApplication::processEvents();
}

/// Lines a second; a view that is full already, as it is all day. Lines that were left out, because none of them would
/// have stayed in the list, do not count.
double logRate(int lines, int perBlock, bool wrap)
{
    const Blocks blocks(lines, perBlock);
    return medianOf(3, [&] {
        const auto log = makeLog(wrap);
        fillLog(*log, keptLines + 1);
        const qint64 before = log->shownLines() + log->trimmedLines();
        const double seconds = secondsOf([&] {
            feed(blocks, [&log](const QString &text) { log->dataCallBack(text, 0); });
            waitUntilShown(*log);
        });
        const qint64 pieces = log->shownLines() + log->trimmedLines() - before;
        if (pieces < lines / 2 || (pieces > lines && !wrap))
            qFatal("the log has got %lld lines of %d", pieces, lines);
        return static_cast<double>(std::min<qint64>(pieces, lines)) / seconds;
    });
}

double stockRate(int lines, int perBlock, bool wrap)
{
    const Blocks blocks(lines, perBlock);
    const auto edit = makeStock(wrap);
    fillStock(*edit, keptLines);
    const double seconds = secondsOf([&] {
        feed(blocks, [&edit](const QString &text) { edit->appendPlainText(text); });
        edit->viewport()->repaint();
    });
    if (edit->blockCount() != keptLines)
        qFatal("the stock view holds %d lines", edit->blockCount());
    return lines / seconds;
}

BenchRow smallerIsBetter(const char *name, long long n, const char *unit, double ours, double stock)
{
    return {name, n, unit, ours, stock, stock / ours, keptLines};
}

std::vector<BenchRow> append(bool quick)
{
    const int lines = quick ? 1000000 / quickShare : 1000000;
    const int stockLines = quick ? 2000 : 10000; // it gets through no more in reasonable time
    std::vector<BenchRow> rows;
    for (const auto &[name, perBlock, wrap] :
         {std::tuple("log.append", 100, false), {"log.append_single", 1, false}, {"log.append_wrap", 100, true}}) {
        const double ours = logRate(lines, perBlock, wrap);
        const double stock = isStockWanted() ? stockRate(stockLines, perBlock, wrap) : 0;
        rows.push_back({name, lines, "lines/s", ours, stock, stock > 0 ? ours / stock : 0, keptLines});
    }
    return rows;
}

/// One measurement per character, as a plain loop does it.
std::size_t plainCut(const QFontMetrics &metrics, const QString &line, int width)
{
    std::size_t pieces = 1;
    if (metrics.horizontalAdvance(line) <= width)
        return pieces;
    int start = 0;
    int count = 10;
    do {
        if (metrics.horizontalAdvance(line.mid(start, count)) > width) {
            ++pieces;
            start += count - 1;
            count = 10;
        }
        ++count;
    } while (start + count < line.size());
    return pieces;
}

std::vector<BenchRow> cutLong(bool quick)
{
    constexpr int width = 800;
    const int length = quick ? 175000 / quickShare : 175000;
    QString line;
    for (int i = 0; i < length; ++i)
        line += i % 17 == 0 ? QChar(0xFF0C) : QChar(0x4E00 + i * 7919 % 3500);
    std::vector<int> pieces;
    const double ours = medianOf(5, [&] {
        return secondsOf([&] {
            KV::CLogLineCutter cutter(logFont()); // with all that it has to learn about the font
            pieces.clear();
            cutter.cut(line.utf16(), line.size(), width, pieces);
        });
    });
    std::size_t plainPieces = 0;
    const QFontMetrics metrics(logFont());
    const double plain = stockSecondsOf([&] { plainPieces = plainCut(metrics, line, width); });
    if (isStockWanted() && plainPieces != pieces.size())
        qFatal("The cutter made %zu pieces, the plain loop %zu.", pieces.size(), plainPieces);
    return {{"log.cut_long", length, "ms", ours * 1e3, plain * 1e3, plain / ours}};
}

std::vector<BenchRow> find(bool)
{
    const QString wanted = QStringLiteral("CANCELLED");
    const auto log = makeLog(false);
    fillLog(*log, keptLines);
    const double ours = medianOf(9, [&] { return secondsOf([&] { log->findText(wanted); }); });
    if (!isStockWanted())
        return {smallerIsBetter("log.find", keptLines, "ms", ours * 1e3, 0)};
    const auto edit = makeStock(false);
    fillStock(*edit, keptLines);
    int stockHits = 0;
    const double stock = medianOf(3, [&] {
        stockHits = 0;
        return secondsOf([&] {
            for (QTextCursor at(edit->document()); !(at = edit->document()->find(wanted, at)).isNull();)
                ++stockHits;
        });
    });
    if (stockHits != log->matchCount())
        qFatal("Ours found %d hits, the stock way %d.", log->matchCount(), stockHits);
    return {smallerIsBetter("log.find", keptLines, "ms", ours * 1e3, stock * 1e3)};
}

/// Seconds that a change of width takes until it is shown.
double resizeSeconds(QWidget &view)
{
    int width = viewSize.width();
    const QImage wide = view.grab().toImage();
    const double median = medianOf(7, [&] {
        width = width == viewSize.width() ? viewSize.width() - 160 : viewSize.width();
        return secondsOf([&] {
            view.resize(width, viewSize.height());
            view.repaint();
        });
    });
    const QImage painted = view.grab().toImage();
    QElapsedTimer waiting; // nothing may be left to do
    for (waiting.start(); waiting.elapsed() < 300;)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    if (painted != view.grab().toImage() || painted.copy(wide.rect() & painted.rect()) == wide.copy(painted.rect()))
        qFatal("what was painted is not the text at its new width");
    return median;
}

std::vector<BenchRow> rewrap(bool)
{
    const auto log = makeLog(true);
    fillLog(*log, keptLines);
    const double ours = resizeSeconds(*log);
    double stock = 0;
    if (isStockWanted()) {
        const auto edit = makeStock(true);
        fillStock(*edit, keptLines);
        stock = resizeSeconds(*edit);
    }
    return {smallerIsBetter("log.rewrap", keptLines, "ms", ours * 1e3, stock * 1e3)};
}

void pressKey(QWidget &view, int key)
{
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&view, &press);
}

/// Every page is another one: none of its rows is on the screen before.
std::vector<BenchRow> repaint(bool quick)
{
    const int pages = quick ? 50 : 500;
    const auto log = makeLog(false);
    fillLog(*log, keptLines);
    const QImage newest = log->grab().toImage();
    const double ours = secondsOf([&] {
        for (int i = 0; i < pages; ++i) {
            pressKey(*log, Qt::Key_PageUp);
            log->repaint();
        }
    });
    if (log->isFollowing() || log->grab().toImage() == newest)
        qFatal("the log still shows its newest page");
    double stock = 0;
    if (isStockWanted()) {
        const auto edit = makeStock(false);
        fillStock(*edit, keptLines);
        QScrollBar *bar = edit->verticalScrollBar();
        stock = secondsOf([&] {
            for (int i = 0; i < pages; ++i) {
                bar->setValue(bar->value() - bar->pageStep());
                edit->viewport()->repaint();
            }
        });
    }
    return {smallerIsBetter("log.repaint", pages, "ms/page", ours * 1e3 / pages, stock * 1e3 / pages)};
}

/// Memory of the process in megabytes; 0 where the system does not tell it this way.
double residentMegabytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / (1 << 20);
}

std::vector<BenchRow> memory(bool quick)
{
    const int lines = quick ? 10000000 / quickShare : 10000000;
    const auto log = makeLog(false);
    fillLog(*log, 100000);
    const double before = residentMegabytes();
    fillLog(*log, lines);
    return {{"log.memory", lines, "MB growth", residentMegabytes() - before, 0, 0, keptLines}};
}

/// The longest time that the event loop stood still while 100,000 lines a second came in.
std::vector<BenchRow> stall(bool quick)
{
    const int seconds = quick ? 5 : 60;
    const Blocks blocks(1000000, 100);
    const auto log = makeLog(true);
    fillLog(*log, keptLines);
    QElapsedTimer clock;
    clock.start();
    qint64 worst = 0;
    for (qint64 given = 0, last = 0; clock.elapsed() < seconds * 1000LL;) {
        for (; given < clock.elapsed(); ++given)
            log->dataCallBack(blocks.at(static_cast<int>(given)), 0);
        QApplication::processEvents(QEventLoop::AllEvents, 1);
        const qint64 now = clock.nsecsElapsed();
        worst = std::max(worst, last == 0 ? 0 : now - last);
        last = now;
    }
    return {{"log.stall", seconds * 100000LL, "ms worst", static_cast<double>(worst) * 1e-6, 0, 0, keptLines}};
}

const BenchRegistration registrations[] = {
    {"log.append", append},   {"log.cut_long", cutLong}, {"log.find", find},   {"log.rewrap", rewrap},
    {"log.repaint", repaint}, {"log.memory", memory},    {"log.stall", stall},
};

} // namespace

} // namespace bench
