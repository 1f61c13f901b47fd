#include "uicontrol/accountwindow.h"

#include <gtest/gtest.h>

#include <QtGui/QCursor>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeWidgetItemIterator>
#include <QtWidgets/QVBoxLayout>

AccountWindow::AccountWindow()
{
    using namespace kdservice;
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    auto known = std::make_unique<refhost::Accounts>();
    accounts = known.get();
    refhost::setAccountData(std::move(known));
    accounts->putAccount({"600001", QStringLiteral("现货一号"), TraderStock, {}});
    accounts->putAccount({"800001", QStringLiteral("期货一号"), TraderFuture, {}});
    accounts->putAccount({"800002", QString(), TraderFuture, {}});
    accounts->putAccount({"900001", QStringLiteral("全能"), TraderStock | TraderFuture, {}});
    accounts->putComposedAccount({"Z1", QStringLiteral("组合一"), TraderFuture, {"800001", "800002"}});
    accounts->putGroup(QStringLiteral("套利"), {"900001", "800001", "600001"});
    accounts->putGroup(QStringLiteral("股票组"), {"600001"});

    combo = new KV::CAccountsComboBox(31, this);
    button = new QPushButton(this);
    auto *column = new QVBoxLayout(this);
    column->addWidget(combo);
    column->addWidget(button);
    popup = combo->findChild<KV::CAccountsTree *>();
    tree = popup->findChild<QTreeWidget *>();
    resize(220, 90);
    move(40, 40);
    show();
    activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    combo->setFocus();
    QCursor::setPos(mapToGlobal(QPoint(5, 5)));
    QApplication::processEvents();
    events.clear();
}

AccountWindow::~AccountWindow()
{
    delete combo;
    refhost::setAccountData(nullptr);
    refhost::setUserConfig(nullptr);
}

bool AccountWindow::handleEvent(int event, int first, int second, QString text, void *)
{
    events << QStringLiteral("%1 %2 %3 %4").arg(event).arg(first).arg(second).arg(text).trimmed();
    return true;
}

QString AccountWindow::taken()
{
    return std::exchange(events, {}).join(QStringLiteral(", "));
}

QStringList AccountWindow::lines() const
{
    QStringList all;
    for (QTreeWidgetItemIterator at(tree); *at != nullptr; ++at) {
        const QTreeWidgetItem *entry = *at;
        all << QString(entry->parent() == nullptr ? 0 : 2, QLatin1Char(' ')) +
                   QStringLiteral("%1 %2 %3").arg(entry->type()).arg(entry->data(0, 256).toString(), entry->text(0));
    }
    return all;
}

QTreeWidgetItem *AccountWindow::item(const QString &id) const
{
    for (QTreeWidgetItemIterator at(tree); *at != nullptr; ++at)
        if ((*at)->data(0, 256).toString() == id)
            return *at;
    ADD_FAILURE() << "no item " << id.toStdString();
    return nullptr;
}

void AccountWindow::click(const QString &id, bool twice)
{
    const QPoint at = tree->visualItemRect(item(id)).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    if (twice)
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, at);
}

void AccountWindow::clickLikeAWindowSystem(const QString &id)
{
    QCursor::setPos(tree->viewport()->mapToGlobal(tree->visualItemRect(item(id)).center()));
    popup->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == popup; }));
    click(id);
}

void AccountWindow::open()
{
    combo->showPopup();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(popup));
    QCursor::setPos(popup->mapToGlobal(popup->rect().center())); // or else it is left, and closes
    QApplication::processEvents();
    QApplication::setActiveWindow(this);
    combo->setFocus();
    EXPECT_TRUE(combo->hasFocus());
    EXPECT_TRUE(isOpen());
}

void AccountWindow::press(Qt::Key key)
{
    QTest::keyClick(combo, key);
}
