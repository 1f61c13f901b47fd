#pragma once

#include <QtCore/QStringList>
#include <QtGui/QImage>
#include <string>
#include <vector>

#include "log/chpflogwidget.h"

/// A log in a window of its own, used as a user would: with mouse, keys and eyes. What is delivered to the window is
/// written down.
class LogWindow : public ZB::CBaseWidget
{
public:
    LogWindow(int width, int height);

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    void resizeLog(int width, int height);
    /// Gives lines to the log, one block, and waits until it shows a row of the last one.
    void add(const QStringList &lines, int level = 0);
    /// Waits until the lists have taken in everything and the log shows it.
    void settle();
    /// Waits for the lists alone; the log has not looked at them yet.
    void settleLists();
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1);
    void click(int row);
    void wheel(QPoint angle);
    /// What Ctrl+C puts on the clipboard now.
    QString copied();
    /// The texts of the rows of the page, found by clicking and copying; ends with the first empty row.
    QStringList rows();
    QString firstRow() { return rowText(0); }
    QString rowText(int row);
    /// Rows with a bar in the left margin.
    std::vector<int> markedRows();
    /// For each row of the page the pixels that have the colour of a search hit, as "from-to from-to".
    QStringList hits();
    QImage picture();

    KV::CHpfLogWidget *log;
    ZB::CStandScrollBar *vertical = nullptr;
    ZB::CStandScrollBar *horizontal = nullptr;
    QStringList events; ///< "event first second text"
    int wheelsSeen = 0;
    int keysSeen = 0;

private:
    int rowTop(int row) const;
};

/// "line 5", "line 6" ... in front of the last number.
QStringList numbered(int from, int to);
/// A line each.
std::string text(const QStringList &lines);
