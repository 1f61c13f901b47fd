#include "uicontrol/logwindow.h"

#include <QtGui/QClipboard>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <boost/smart_ptr/make_shared.hpp>

#include "zb/cuiresource.h"

namespace {

/// No text ever stands in this column of pixels of a row, and every fill does.
constexpr int quietLine = 0;

} // namespace

LogWindow::LogWindow(int width, int height) : log(new KV::CHpfLogWidget(41, this))
{
    for (auto *bar : log->findChildren<ZB::CStandScrollBar *>())
        (bar->eventId() == 0 ? vertical : horizontal) = bar;
    resize(width, height);
    log->resize(width, height);
    show();
    QApplication::clipboard()->clear();
}

bool LogWindow::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    events << QStringLiteral("%1 %2 %3 %4%5").arg(event).arg(first).arg(second).arg(text, pointer ? "!" : "");
    return true;
}

void LogWindow::wheelEvent(QWheelEvent *event)
{
    ++wheelsSeen;
    event->accept();
}

void LogWindow::keyPressEvent(QKeyEvent *event)
{
    const bool modifier = event->key() >= Qt::Key_Shift && event->key() <= Qt::Key_Alt;
    keysSeen += modifier ? 0 : 1;
    event->accept();
}

void LogWindow::resizeLog(int width, int height)
{
    resize(width, height);
    log->resize(width, height);
}

void LogWindow::add(const QStringList &lines, int level)
{
    log->dataCallBack(lines.join(QLatin1Char('\n')), level);
    settle();
}

void LogWindow::settle()
{
    settleLists();
    log->slotTimeout();
}

void LogWindow::settleLists()
{
    // A block of another log, queued last, is in when all before it are.
    const auto last = boost::make_shared<KV::CModelTextCache>();
    last->dataCallBack(QString(), 0);
    while (last->getDataSize() == 0)
        QTest::qSleep(1);
}

void LogWindow::press(int key, Qt::KeyboardModifiers modifiers, int times)
{
    for (int i = 0; i < times; ++i)
        QTest::keyClick(log, static_cast<Qt::Key>(key), modifiers);
}

int LogWindow::rowTop(int row) const
{
    const int rowHeight = ZB::scaled(20);
    const int page = std::max(log->height() / rowHeight, 1);
    return (log->height() - page * rowHeight) / 2 + row * rowHeight;
}

void LogWindow::click(int row)
{
    QTest::mouseClick(log, Qt::LeftButton, Qt::NoModifier, QPoint(log->width() / 2, rowTop(row) + 7));
}

void LogWindow::wheel(QPoint angle)
{
    const QPointF at = log->rect().center();
    QWheelEvent event(at, log->mapToGlobal(at.toPoint()), QPoint(), angle, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(log, &event);
}

QString LogWindow::copied()
{
    press(Qt::Key_C, Qt::ControlModifier);
    return QApplication::clipboard()->text();
}

QString LogWindow::rowText(int row)
{
    click(row);
    return copied();
}

QStringList LogWindow::rows()
{
    QStringList texts;
    for (int row = 0; row < std::max(log->height() / ZB::scaled(20), 1); ++row) {
        const QString text = rowText(row);
        if (text.isEmpty())
            break;
        texts << text;
    }
    return texts;
}

QImage LogWindow::picture()
{
    return log->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

std::vector<int> LogWindow::markedRows()
{
    const QRgb accent = ZB::CUiResource::instance()->getColor(QStringLiteral("clr_accent"))->rgb();
    const QImage image = picture();
    std::vector<int> found;
    for (int row = 0; rowTop(row) + 10 < image.height(); ++row)
        if (image.pixel(0, rowTop(row) + 10) == accent && image.pixel(1, rowTop(row) + 10) == accent)
            found.push_back(row);
    return found;
}

QStringList LogWindow::hits()
{
    const QRgb hit = ZB::CUiResource::instance()->getColor(QStringLiteral("ic_clr_syntax_edit_highlight"))->rgb();
    const QImage image = picture();
    QStringList found;
    for (int row = 0; rowTop(row) + ZB::scaled(20) <= image.height(); ++row) {
        const int y = std::max(rowTop(row), 2) + quietLine;
        QStringList runs;
        for (int x = 0, start = -1; x <= image.width(); ++x) {
            const bool inside = x < image.width() && image.pixel(x, y) == hit;
            if (inside && start < 0)
                start = x;
            if (!inside && start >= 0)
                runs << QStringLiteral("%1-%2").arg(std::exchange(start, -1)).arg(x);
        }
        found << runs.join(QLatin1Char(' '));
    }
    return found;
}

QStringList numbered(int from, int to)
{
    QStringList lines;
    for (int i = from; i < to; ++i)
        lines << QStringLiteral("line %1").arg(i);
    return lines;
}

std::string text(const QStringList &lines)
{
    return lines.join(QLatin1Char('\n')).toStdString();
}
