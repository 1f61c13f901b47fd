#pragma once

#include <QtCore/QStringList>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <gtest/gtest.h>

#include "framework/gridlistsource.h"
#include "grid/gridview.h"

/// A grid of 400 x 268 with five columns of 60 pixels: row numbers, a header of 28, ten whole rows of 24 pixels. What
/// its signals say is noted down line by line.
class GridViewTest : public ::testing::Test
{
protected:
    GridViewTest()
    {
        view.setLook(plainLook());
        view.setSource(&source);
        for (int column = 0; column < source.columns; ++column)
            view.setColumnWidth(column, 60);
        view.resize(400, 268);
        connectAll();
        view.show();
        view.activateWindow();
        view.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        view.refreshNow();
        said.clear();
    }

    /// The middle of the cell that is shown there.
    QPoint cell(qint64 row, int column) const { return view.cellRect(source.idAt(row), column).center(); }
    QPoint header(int column) const { return view.headerRect(column).center(); }
    QPoint edge(int column) const { return QPoint(view.headerRect(column).right() + 1, 10); }

    void send(QEvent::Type type, const QPoint &at, Qt::MouseButton button, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers modifiers)
    {
        QMouseEvent event(type, at, view.mapToGlobal(at), button, buttons, modifiers);
        QApplication::sendEvent(&view, &event);
    }
    void press(const QPoint &at, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonPress, at, button, button, modifiers);
    }
    void drag(const QPoint &at, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        send(QEvent::MouseMove, at, Qt::NoButton, buttons, {});
    }
    void release(const QPoint &at, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonRelease, at, button, {}, modifiers);
    }
    void click(const QPoint &at, Qt::KeyboardModifiers modifiers = {})
    {
        press(at, modifiers);
        release(at, modifiers);
    }
    void doubleClick(const QPoint &at)
    {
        click(at);
        send(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton, {});
        release(at);
    }
    void turnWheel(QPoint angle, Qt::KeyboardModifiers modifiers = {})
    {
        const QPoint at = view.rect().center();
        QWheelEvent event(at, view.mapToGlobal(at), QPoint(), angle, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&view, &event);
        view.refreshNow();
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&view, static_cast<Qt::Key>(key), modifiers);
        view.refreshNow();
    }

    std::string rowsOnScreen() const
    {
        std::vector<ZB::GridRowId> ids;
        for (int y = 40; y < view.height(); y += 24)
            ids.push_back(view.cellAt(QPoint(200, y)).first);
        return joined(ids).toStdString();
    }
    std::string selected() const { return joined(view.selectedRows()).toStdString(); }
    /// "2 3 x 1 4" for rows 2 and 3 in columns 1 and 4, blocks separated by "; ".
    std::string selectedCells() const
    {
        QStringList blocks;
        for (const ZB::GridCells &block : view.selectedCells())
            blocks.append(joined(block.rows) + QStringLiteral(" x ") + joined(block.columns));
        return blocks.join(QStringLiteral("; ")).toStdString();
    }
    std::string current() const
    {
        return std::to_string(view.currentRow()) + "." + std::to_string(view.currentColumn());
    }
    /// What was said since the last time.
    std::string takeSaid()
    {
        const QString all = said.join(QStringLiteral("; "));
        said.clear();
        return all.toStdString();
    }

    ListSource source{100};
    ZB::GridView view;
    QStringList said;

private:
    void connectAll()
    {
        using ZB::GridView;
        const auto note = [this](const QString &text) { said.append(text); };
        const auto cellText = [](quint64 row, int column) { return QStringLiteral(" %1.%2").arg(row).arg(column); };
        QObject::connect(&view, &GridView::headerClicked, [=](int column, Qt::KeyboardModifiers modifiers) {
            note(
                QStringLiteral("sort %1%2").arg(column).arg(QLatin1String(modifiers & Qt::ControlModifier ? "+" : "")));
        });
        QObject::connect(&view, &GridView::filterRequested,
                         [=](int column, const QRect &) { note(QStringLiteral("filter %1").arg(column)); });
        QObject::connect(&view, &GridView::columnMoved,
                         [=](int column, int place) { note(QStringLiteral("moved %1 to %2").arg(column).arg(place)); });
        QObject::connect(&view, &GridView::columnResized, [=](int column, int width) {
            note(QStringLiteral("resized %1 to %2").arg(column).arg(width));
        });
        QObject::connect(&view, &GridView::contextMenuRequested, [=](quint64 row, int column, const QPoint &) {
            note(QStringLiteral("menu") + cellText(row, column));
        });
        QObject::connect(&view, &GridView::headerMenuRequested,
                         [=](int column, const QPoint &) { note(QStringLiteral("header menu %1").arg(column)); });
        QObject::connect(&view, &GridView::clicked,
                         [=](quint64 row, int column) { note(QStringLiteral("clicked") + cellText(row, column)); });
        QObject::connect(&view, &GridView::activated,
                         [=](quint64 row, int column) { note(QStringLiteral("activated") + cellText(row, column)); });
        QObject::connect(&view, &GridView::currentChanged,
                         [=](quint64 row, int column) { note(QStringLiteral("current") + cellText(row, column)); });
        QObject::connect(&view, &GridView::copyRequested,
                         [=](bool header) { note(header ? QStringLiteral("copy+") : QStringLiteral("copy")); });
        QObject::connect(&view, &GridView::unseenRowsChanged,
                         [=](qint64 count) { note(QStringLiteral("unseen %1").arg(count)); });
    }
};
