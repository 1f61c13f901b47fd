#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <gtest/gtest.h>

#include "desk/confirmbox.h"

using namespace terminal;

namespace {

/// How many lines of text the box shows for a question.
int linesOf(const QString &question)
{
    int lines = 0;
    QTimer::singleShot(0, qApp, [&lines] {
        auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!box)
            return;
        const auto *label = box->findChild<QLabel *>();
        lines = qRound(double(label->heightForWidth(label->width())) / label->fontMetrics().height());
        box->reject();
    });
    EXPECT_FALSE(askToConfirm(nullptr, QStringLiteral("委托"), question, QStringLiteral("委托")));
    return lines;
}

} // namespace

TEST(ConfirmBox, AnOrderStandsOnOneLine)
{
    const QString order = QStringLiteral("60001001  买入 606018.SH 青岚科技  价格 23.54  数量 500 股  金额 11,770.00");
    EXPECT_EQ(linesOf(order), 1);
    EXPECT_EQ(linesOf(order + QLatin1Char('\n') + order), 2);
    EXPECT_GT(linesOf(order + order + order), 1) << "the box does not grow without end";
}
