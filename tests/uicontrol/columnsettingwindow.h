#pragma once

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <memory>

#include "account/caccountcolumnlist.h"
#include "account/caccountlistcolumnsettingwidget.h"
#include "printtext.h"
#include "services/userconfig.h"

/// "*账号 总资产 -可用": locked, shown, hidden.
inline QString columnText(const QVector<KV::CAccountListColumn> &columns)
{
    QStringList words;
    for (const KV::CAccountListColumn &each : columns)
        words << (each.locked ? QStringLiteral("*") : each.visible ? QString() : QStringLiteral("-")) + each.name;
    return words.join(QLatin1Char(' '));
}

/// The reverse of columnText(); the numbers of the columns are their places here plus 10 times the field.
inline QVector<KV::CAccountListColumn> columnsOf(const QString &text)
{
    QVector<KV::CAccountListColumn> columns;
    for (QString word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const bool locked = word.startsWith(QLatin1Char('*'));
        const bool hidden = word.startsWith(QLatin1Char('-'));
        if (locked || hidden)
            word.remove(0, 1);
        columns.push_back({int(columns.size()), -1, word, !hidden, locked});
    }
    return columns;
}

/// The popup over a window, with a configuration in memory; writes down what it tells.
class ColumnSettingWindow : public testing::Test
{
protected:
    ColumnSettingWindow()
    {
        refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
        window.resize(500, 400);
        window.move(20, 20);
        window.show();
        make();
    }

    ~ColumnSettingWindow() override
    {
        popup.reset();
        refhost::setUserConfig(nullptr);
    }

    void make()
    {
        popup = std::make_unique<KV::CAccountListColumnSettingWidget>(7, &window);
        list = popup->findChild<KV::CAccountColumnList *>();
        QObject::connect(popup.get(), &KV::CAccountListColumnSettingWidget::sigColumnsChanged, &window,
                         [this](const QVector<KV::CAccountListColumn> &columns) { told << columnText(columns); });
    }

    void open(const QString &columns)
    {
        popup->setDefaultColumns(columnsOf(columns));
        popup->showAt(QRect(window.mapToGlobal(QPoint(0, 0)), QSize(100, 20)));
        ASSERT_TRUE(QTest::qWaitForWindowExposed(popup.get()));
        list->setFocus();
        QCoreApplication::processEvents();
    }

    QString taken() { return std::exchange(told, {}).join(QStringLiteral(" | ")); }
    /// What the lines of the list say, in the same words.
    QString shown() const
    {
        QVector<KV::CAccountListColumn> columns;
        for (int line = 0; line < list->count(); ++line)
            columns.push_back({0, -1, list->item(line)->text(), list->item(line)->checkState() == Qt::Checked,
                               list->item(line)->data(KV::CAccountColumnDelegate::LockedRole).toBool()});
        return columnText(columns);
    }

    void click(int line, KV::CAccountColumnDelegate::Part part)
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->partArea(line, part).center());
    }

    void press(int line) { QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier, nameOf(line)); }
    /// With the button down, as a window system tells it.
    void dragTo(const QPoint &place)
    {
        QMouseEvent move(QEvent::MouseMove, place, list->viewport()->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(list->viewport(), &move);
    }
    void release(const QPoint &place) { QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier, place); }
    QPoint nameOf(int line) const { return list->partArea(line, KV::CAccountColumnDelegate::Part::Name).center(); }

    QWidget window;
    std::unique_ptr<KV::CAccountListColumnSettingWidget> popup;
    KV::CAccountColumnList *list = nullptr;
    QStringList told;
};
