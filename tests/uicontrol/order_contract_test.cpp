#include <gtest/gtest.h>

#include <QtWidgets/QListWidget>

#include "eventwindow.h"
#include "order/ccompactselectwidget.h"
#include "order/ccompacttypeselectwidget.h"
#include "theme/themeservice.h"
#include "zb/ccheckbox.h"
#include "zb/ccombopushbutton.h"
#include "zb/clineedit.h"
#include "zb/cparametercell.h"
#include "zb/csimpletextwidget.h"

namespace {

/// A picture of a button: normal, hovered, pressed, disabled.
QImage stateOf(QAbstractButton &button, int state)
{
    button.setAttribute(Qt::WA_UnderMouse, state == 1);
    button.setDown(state == 2);
    button.setEnabled(state != 3);
    const QImage picture = button.grab().toImage();
    button.setAttribute(Qt::WA_UnderMouse, false);
    button.setDown(false);
    button.setEnabled(true);
    return picture;
}

/// A contract field of its own in a window.
struct Contract
{
    Contract() : field(new KV::CCompactSelectWidget(&window))
    {
        field->resize(230, field->height());
        window.showNow();
        cell = field->findChild<ZB::CParameterCell *>();
        box = field->findChild<ZB::CCheckBox *>();
    }
    void tick() { QTest::mouseClick(box, Qt::LeftButton); }
    std::string state() const
    {
        return QStringLiteral("'%1' %2 %3 %4")
            .arg(field->getCompactId(), field->getEnableEdit() ? QStringLiteral("free") : QStringLiteral("fixed"),
                 field->getCheckStatus() ? QStringLiteral("checked") : QStringLiteral("unchecked"),
                 box->isEnabled() ? QStringLiteral("mine") : QStringLiteral("theirs"))
            .toStdString();
    }

    EventWindow window;
    KV::CCompactSelectWidget *field;
    ZB::CParameterCell *cell;
    ZB::CCheckBox *box;
};

} // namespace

TEST(CompactTypeSelectWidget, KeepsTheSourceInItsDropDown)
{
    EventWindow window;
    KV::CCompactTypeSelectWidget widget(&window);
    window.showNow();
    EXPECT_EQ(widget.size(), QSize(230, 28));
    EXPECT_EQ(widget.findChild<ZB::CSimpleTextWidget *>()->text(), QStringLiteral("合约类型"));
    ZB::CComboPushButton *combo = widget.getComboButton();
    EXPECT_EQ(combo->size(), QSize(130, 28));
    EXPECT_EQ(static_cast<int>(widget.getCompactBrushSourceType()), -1);
    for (const char *text : {"普通", "专项", "约定"})
        combo->addItem(QString::fromUtf8(text));
    widget.setCompactBrushSourceType(kdservice::CompactSourceSpecial);
    EXPECT_EQ(widget.getCompactBrushSourceType(), kdservice::CompactSourceSpecial);
    widget.setCompactBrushSourceType(kdservice::CompactSourceNone);
    EXPECT_EQ(widget.getCompactBrushSourceType(), kdservice::CompactSourceSpecial);
    for (int type = 0; type <= 5; ++type)
        widget.setOpType(static_cast<kdservice::EOperationType>(type));
    EXPECT_EQ(widget.getCompactBrushSourceType(), kdservice::CompactSourceSpecial);
    EXPECT_EQ(window.take(), "");
    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo->popup()->findChild<QListWidget *>(), Qt::Key_Down);
    QTest::keyClick(combo->popup()->findChild<QListWidget *>(), Qt::Key_Return);
    EXPECT_EQ(static_cast<int>(widget.getCompactBrushSourceType()), 2);
    EXPECT_EQ(window.take(), "7 0 2 约定");
}

TEST(CompactTypeSelectWidget, DressesItsDropDownAndTakesNoKeyboardItself)
{
    EventWindow window;
    KV::CCompactTypeSelectWidget widget(&window);
    ZB::CComboPushButton *combo = widget.getComboButton();
    combo->addItem(QStringLiteral("普通"));
    window.showNow();
    combo->clearFocus();
    EXPECT_EQ(widget.focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(combo->imageKey(), QStringLiteral("kv_img_combo_btn_small_nonormal"));
    const QImage ours[] = {stateOf(*combo, 0), stateOf(*combo, 1), stateOf(*combo, 2), stateOf(*combo, 3)};
    const QString enabled = QStringLiteral("clr_btn_s_nonormal_0");
    const QString disabled = QStringLiteral("clr_maintoolbar_btn_disable");
    combo->setTextColorKey(enabled, enabled, enabled, disabled);
    for (int state = 0; state < 4; ++state)
        EXPECT_EQ(ours[state], stateOf(*combo, state)) << state;
    combo->setTextColorKey(disabled, disabled, disabled, enabled);
    for (int state = 0; state < 4; ++state)
        EXPECT_NE(ours[state], stateOf(*combo, state)) << state;
}

TEST(CompactTypeSelectWidget, DoesWithoutItsParts)
{
    EventWindow window;
    KV::CCompactTypeSelectWidget widget(&window);
    window.showNow();
    delete widget.getComboButton();
    EXPECT_EQ(widget.getComboButton(), nullptr);
    EXPECT_EQ(widget.getCompactBrushSourceType(), kdservice::CompactSourceNone);
    EXPECT_EQ(static_cast<int>(widget.getCompactBrushSourceType()), 32);
    widget.setCompactBrushSourceType(kdservice::CompactSourceSpecial);
    delete widget.findChild<ZB::CSimpleTextWidget *>();
    refhost::ThemeService::instance().setScale(2);
    EXPECT_EQ(widget.size(), QSize(460, 56));
    refhost::ThemeService::instance().setScale(1);
}

TEST(CompactTypeSelectWidget, FollowsTheScale)
{
    EventWindow window;
    KV::CCompactTypeSelectWidget widget(&window);
    window.showNow();
    const auto *caption = widget.findChild<ZB::CSimpleTextWidget *>();
    const int before = caption->width();
    refhost::ThemeService::instance().setScale(2);
    EXPECT_EQ(widget.getComboButton()->size(), QSize(260, 56));
    EXPECT_EQ(caption->width(), caption->sizeHint().width());
    EXPECT_GT(caption->width(), before);
    EXPECT_EQ(widget.getComboButton()->x(), caption->geometry().right() + 1);
    refhost::ThemeService::instance().setScale(1);
}

TEST(CompactSelectWidget, StartsLockedAndEmpty)
{
    Contract contract;
    EXPECT_EQ(contract.state(), "'' fixed unchecked mine");
    EXPECT_EQ(contract.field->getOpenDate(), QStringLiteral("-1"));
    EXPECT_FALSE(contract.field->isCompactDone());
    EXPECT_EQ(contract.field->objectName(), QStringLiteral("compact_select_widget"));
}

TEST(CompactSelectWidget, ItsCheckBoxUnlocksTheCellAndTheEventGoesOn)
{
    Contract contract;
    contract.tick();
    EXPECT_EQ(contract.state(), "'' free checked mine");
    EXPECT_EQ(contract.window.take(), "69 1 1");
    QTest::keyClicks(contract.cell->getLineEdit(), QStringLiteral("C7"));
    EXPECT_EQ(contract.window.take(), "70 1 1\n70 1 1");
    QTest::keyClick(contract.box, Qt::Key_Space);
    EXPECT_EQ(contract.state(), "'C7' fixed unchecked mine"); // what was typed stays
    EXPECT_EQ(contract.window.take(), "69 1 0");
    EXPECT_TRUE(contract.field->handleEvent(119, 0, 0, QString(), nullptr));
    EXPECT_EQ(contract.window.take(), "70 1 0");
    EXPECT_FALSE(contract.field->handleEvent(69, 1, 0, QString(), nullptr));
    EXPECT_FALSE(contract.field->handleEvent(70, 1, 0, QString(), nullptr));
    contract.field->setEnableEdit(true); // by the host, and the box is not checked
    QTest::mouseClick(contract.cell->getLineEdit(), Qt::LeftButton);
    QTest::keyClick(contract.cell->getLineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(contract.state(), "'C' free unchecked mine");
    EXPECT_EQ(contract.window.take(), "70 1 0");
    ZB::CPushButton other(QString(), 5, contract.field);
    other.setGeometry(0, 0, 10, 10);
    other.show();
    QTest::mouseClick(&other, Qt::LeftButton);
    EXPECT_EQ(contract.window.take(), "5 5 0");
}

TEST(CompactSelectWidget, GivesTheKeyboardToItsPartsOnly)
{
    Contract contract;
    EXPECT_EQ(contract.field->focusPolicy(), Qt::NoFocus);
    contract.box->setFocus();
    QTest::keyClick(contract.box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(contract.box->hasFocus()) << "a locked cell has no keyboard";
    QTest::keyClick(contract.box, Qt::Key_Return);
    EXPECT_EQ(contract.window.take(), "69 1 1");
    QTest::keyClick(contract.box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(contract.cell->getLineEdit()->hasFocus());
    QTest::keyClick(contract.window.focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(contract.box->hasFocus());
}

TEST(CompactSelectWidget, DoesWithoutItsParts)
{
    Contract contract;
    contract.field->setCommand(QStringLiteral("C42"));
    delete contract.box;
    EXPECT_FALSE(contract.field->getCheckStatus());
    contract.field->setCheckStatus(true);
    EXPECT_FALSE(contract.field->getCheckStatus());
    contract.field->setCommand(QString());
    EXPECT_TRUE(contract.field->getEnableEdit());
    QTest::keyClicks(contract.cell->getLineEdit(), QStringLiteral("1"));
    EXPECT_EQ(contract.window.take(), "70 1 0");
    contract.field->resize(100, contract.field->height());
    EXPECT_EQ(contract.cell->width(), 100);
    delete contract.cell;
    EXPECT_EQ(contract.field->getCompactId(), QString());
    contract.field->setCommand(QStringLiteral("C1"));
    contract.field->setEnableEdit(false);
    EXPECT_TRUE(contract.field->getEnableEdit());
    EXPECT_FALSE(contract.field->handleEvent(69, 1, 1, QString(), nullptr));
    refhost::ThemeService::instance().setScale(1.5);
    contract.field->resize(300, contract.field->height());
    EXPECT_EQ(contract.field->minimumSizeHint(), QSize(0, 42));
    EXPECT_EQ(contract.field->sizeHint(), QSize(0, 42));
    refhost::ThemeService::instance().setScale(1);
}

TEST(CompactSelectWidget, ACommandFixesTheContractUntilItIsCleared)
{
    Contract contract;
    contract.field->setCommand(QStringLiteral("C42"));
    EXPECT_EQ(contract.state(), "'C42' fixed checked theirs");
    contract.tick();
    EXPECT_EQ(contract.state(), "'C42' fixed checked theirs");
    contract.field->setCommand(QString());
    EXPECT_EQ(contract.state(), "'' free unchecked mine");
    contract.field->setCheckStatus(true);
    contract.field->setEnableEdit(false);
    contract.field->setCompactId(QStringLiteral("C1"));
    EXPECT_EQ(contract.state(), "'C1' fixed checked mine");
    EXPECT_EQ(contract.window.take(), "");
}

TEST(CompactSelectWidget, LaysItsChildrenOutAtEveryWidthAndScale)
{
    Contract contract;
    QStringList layouts;
    const auto tell = [&] {
        const auto text = [](const QRect &r) {
            return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
        };
        layouts << text(contract.cell->geometry()) + QStringLiteral(" | ") + text(contract.box->geometry());
    };
    tell();
    contract.field->resize(101, contract.field->height());
    tell();
    contract.field->resize(20, contract.field->height());
    tell();
    refhost::ThemeService::instance().setScale(1.5);
    contract.field->resize(345, contract.field->height());
    tell();
    refhost::ThemeService::instance().setScale(1);
    EXPECT_EQ(layouts.join(QLatin1Char('\n')).toStdString(), "0,0 187x28 | 190,4 40x20\n"
                                                             "0,0 58x28 | 61,4 40x20\n"
                                                             "0,0 0x28 | -20,4 40x20\n"
                                                             "0,0 280x42 | 285,6 60x30");
}
