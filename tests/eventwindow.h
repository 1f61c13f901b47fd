#pragma once

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtTest/QTest>
#include <functional>

#include "zb/cbasewidget.h"

/// A shown window that writes down the events that reach it, a line each: "event first second text", and "this" behind
/// it when the pointer is that of `self`.
class EventWindow : public ZB::CBaseWidget
{
public:
    EventWindow() { resize(400, 300); }

    void showNow()
    {
        show();
        activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
    }

    bool handleEvent(int event, int first, int second, QString text, void *pointer) override
    {
        QString line = QStringLiteral("%1 %2 %3 %4").arg(event).arg(first).arg(second).arg(text).trimmed();
        if (pointer)
            line += pointer == self ? QStringLiteral(" this") : QStringLiteral(" pointer");
        lines << line;
        if (answer)
            answer(event);
        return true;
    }

    /// What has come since the last call.
    std::string take()
    {
        const std::string all = lines.join(QLatin1Char('\n')).toStdString();
        lines.clear();
        return all;
    }

    void *self = nullptr;
    std::function<void(int)> answer;

private:
    QStringList lines;
};
