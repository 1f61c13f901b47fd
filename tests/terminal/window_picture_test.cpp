#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>
#include <gtest/gtest.h>

#include "window/windowpicture.h"

namespace {

void paint(QWidget &widget, const QColor &color)
{
    QPalette palette;
    palette.setColor(QPalette::Window, color);
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
}

/// One letter for each block of ten pixels: w the window, b a box on it, l a list on the box.
std::string mapOf(const QImage &image)
{
    std::string map;
    for (int y = 5; y < image.height(); y += 10) {
        for (int x = 5; x < image.width(); x += 10) {
            const QColor color = image.pixelColor(x, y);
            map += color == Qt::red ? 'w' : color == Qt::green ? 'b' : color == Qt::blue ? 'l' : '.';
        }
        map += '\n';
    }
    return map;
}

} // namespace

TEST(WindowPicture, ShowsWhatStandsOverAWindowAtItsPlace)
{
    QWidget window;
    paint(window, Qt::red);
    window.setGeometry(-30, 20, 80, 40);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(mapOf(terminal::windowPicture(window).toImage()), "wwwwwwww\nwwwwwwww\nwwwwwwww\nwwwwwwww\n");

    QWidget box(&window, Qt::Popup | Qt::FramelessWindowHint);
    paint(box, Qt::green);
    box.setGeometry(0, 30, 40, 20);
    QWidget list(&box, Qt::Popup | Qt::FramelessWindowHint);
    paint(list, Qt::blue);
    list.setGeometry(10, 40, 20, 30);
    list.show(); // before what it stands on
    box.show();
    QApplication::processEvents();
    EXPECT_EQ(mapOf(terminal::windowPicture(window).toImage()), "wwwwwwww\n"
                                                                "wwwbbbbw\n"
                                                                "wwwbllbw\n"
                                                                "wwwwllww\n"
                                                                "wwwwllww\n")
        << "what reaches beyond the window is whole too, on the window's ground";
}
