#include <gtest/gtest.h>

#include <QtCore/QPointer>
#include <QtGui/QWindow>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>

#include "eventwindow.h"
#include "kv/cstockcodelineedit.h"
#include "order/ccompacttypeselectwidget.h"
#include "order/copselectcodewidget.h"
#include "records/record.h"
#include "services/instruments.h"
#include "zb/ccombopushbutton.h"
#include "zb/clineedit.h"
#include "zb/cpushbutton.h"

namespace {

const QPoint firstRow(30, 12);

/// A contract source to choose from, a code field and another field.
struct Form
{
    Form()
    {
        const auto record = refhost::makePlain(refhost::MetaInstrument, "600519.SH");
        record->setData(refhost::InstrumentCode, std::string("600519.SH"));
        refhost::Instruments::put(record);
        source = new KV::CCompactTypeSelectWidget(&window);
        combo = source->getComboButton();
        for (const char *text : {"普通", "专项", "约定"})
            combo->addItem(QString::fromUtf8(text));
        code = new KV::COpSelectCodeWidget(KV::OpParamSecondLegOpen, &window);
        code->setTradeType(kdservice::TraderStock);
        code->setGeometry(0, 60, 300, code->height());
        edit = code->getStockCodeLineEdit()->getLineEdit();
        other = new QLineEdit(&window);
        other->setGeometry(0, 140, 100, 24);
        window.self = code;
        window.showNow();
        other->setFocus();
        window.take();
    }
    QListWidget *dropDown()
    {
        QTest::mouseClick(combo, Qt::LeftButton);
        EXPECT_TRUE(combo->popup() != nullptr && QTest::qWaitForWindowExposed(combo->popup()));
        return combo->popup()->findChild<QListWidget *>();
    }
    bool isDropDownGone()
    {
        return QTest::qWaitFor([this] { return combo->popup() == nullptr; });
    }
    /// The list that opens below the code field with the first character.
    QWidget *typed(const char *text)
    {
        edit->setFocus();
        window.take();
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromLatin1(text));
        auto *list = code->findChild<QWidget *>(QStringLiteral("stock_code_popup"));
        EXPECT_TRUE(list != nullptr && QTest::qWaitForWindowExposed(list));
        return list;
    }

    EventWindow window;
    KV::CCompactTypeSelectWidget *source;
    ZB::CComboPushButton *combo;
    KV::COpSelectCodeWidget *code;
    ZB::CLineEdit *edit;
    QLineEdit *other;
};

} // namespace

TEST(OrderPopups, ADoubleClickInADropDownIsOneChoice)
{
    Form form;
    QListWidget *list = form.dropDown();
    const QPoint second = list->visualItemRect(list->item(1)).center();
    const QPointer<QWidget> place(list->viewport());
    QTest::mouseClick(place, Qt::LeftButton, Qt::NoModifier, second);
    if (place != nullptr)
        QTest::mouseDClick(place, Qt::LeftButton, Qt::NoModifier, second);
    EXPECT_TRUE(form.isDropDownGone());
    EXPECT_EQ(form.window.take(), "7 0 1 专项");
    EXPECT_EQ(form.source->getCompactBrushSourceType(), kdservice::CompactSourceSpecial);
}

TEST(OrderPopups, TheRestOfADoubleClickReachesNothingBelowThePopup)
{
    Form form;
    ZB::CPushButton below(QString(), 9, &form.window);
    below.setGeometry(form.window.rect());
    below.lower();
    below.show();
    const auto clickBelow = [&](const QPoint &global) {
        QTest::mouseClick(form.window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          form.window.mapFromGlobal(global));
    };
    QListWidget *sources = form.dropDown();
    const QPoint source = sources->viewport()->mapToGlobal(sources->visualItemRect(sources->item(1)).center());
    QTest::mouseClick(sources->viewport(), Qt::LeftButton, Qt::NoModifier, sources->viewport()->mapFromGlobal(source));
    EXPECT_TRUE(form.isDropDownGone());
    clickBelow(source);
    EXPECT_EQ(form.window.take(), "7 0 1 专项");
    EXPECT_FALSE(form.edit->hasFocus());
    clickBelow(source); // one of its own, on the code field
    EXPECT_EQ(form.window.take(), "245 4 1 this");

    QWidget *codes = form.typed("600519");
    const QPoint code = codes->mapToGlobal(firstRow);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        QTest::mouseClick(codes, Qt::LeftButton, Qt::NoModifier, firstRow);
        return !codes->isVisible();
    })) << "the codes were never ready";
    clickBelow(code);
    EXPECT_EQ(form.window.take(), "1083 4 0 600519.SH");
    EXPECT_TRUE(form.edit->hasFocus());
    form.typed("600519");
    QTest::mouseClick(codes, Qt::LeftButton, Qt::NoModifier, firstRow);
    clickBelow(form.window.mapToGlobal(QPoint(380, 280))); // elsewhere: no double-click
    EXPECT_EQ(form.window.take(), "1083 4 0 600519.SH\n245 4 0 this\n5 9 0");
}

TEST(OrderPopups, ADoubleClickInTheListOfCodesIsOneChoiceAndLeavesTheKeyboardToTheField)
{
    Form form;
    QWidget *list = form.typed("600519");
    ASSERT_TRUE(QTest::qWaitFor([&] {
        QTest::mouseDClick(list, Qt::LeftButton, Qt::NoModifier, firstRow);
        return !list->isVisible();
    })) << "the codes were never ready";
    EXPECT_EQ(form.window.take(), "1083 4 0 600519.SH");
    EXPECT_EQ(form.window.focusWidget(), form.edit);
}
