#include <gtest/gtest.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>

#include "codes/codepopup.h"
#include "eventwindow.h"
#include "kv/cstockcodelineedit.h"
#include "order/copselectcodewidget.h"
#include "order/coptypebutton.h"
#include "records/record.h"
#include "services/instruments.h"
#include "theme/themeservice.h"
#include "zb/ccheckbox.h"
#include "zb/clineedit.h"

namespace {

void know(const std::string &code, const std::string &name, KV::EFilterFlag kind = KV::FilterStock)
{
    const auto record = refhost::makePlain(refhost::MetaInstrument, code);
    record->setData(refhost::InstrumentCode, code);
    record->setData(refhost::InstrumentName, name);
    record->setData(refhost::InstrumentKind, static_cast<int>(kind));
    refhost::Instruments::put(record);
}

/// A code field with a direction, under another field that has the keyboard first.
struct Field
{
    explicit Field(int id = KV::OpParamFirstLegLong)
    {
        know("600519.SH", "贵州茅台");
        know("601963.SH", "重庆银行");
        know("600001.SH", "上证工业", KV::FilterIndex);
        other = new QLineEdit(&window);
        code = new KV::COpSelectCodeWidget(static_cast<KV::EOpParamWidgetID>(id), &window);
        code->setTradeType(kdservice::TraderStock);
        code->setGeometry(10, 60, 300, code->height());
        window.self = code;
        window.showNow();
        other->setFocus();
        window.take();
    }
    KV::CStockCodeLineEdit *lineEdit() const { return code->getStockCodeLineEdit(); }
    KV::COpTypeButton *button() const { return code->findChild<KV::COpTypeButton *>(); }
    void type(const QString &text)
    {
        lineEdit()->getLineEdit()->setFocus();
        QTest::keyClicks(lineEdit()->getLineEdit(), text);
    }
    /// Whether the open list is as high as so many codes make it.
    bool offers(int codes) const
    {
        const auto *list = code->findChild<ZB::CodePopup *>();
        return list != nullptr && list->isVisible() &&
               list->height() == ZB::CodeListLayout::fit(codes, list->width()).size().height();
    }
    /// A click on another part of the strip.
    template <typename Widget, typename... Arguments>
    void click(Arguments... arguments)
    {
        Widget part(arguments..., code);
        part.setGeometry(0, 0, 20, 20);
        part.show();
        part.raise();
        QTest::mouseClick(&part, Qt::LeftButton);
    }

    EventWindow window;
    QLineEdit *other;
    KV::COpSelectCodeWidget *code;
};

} // namespace

TEST(OpSelectCodeWidget, HasADirectionForSomeIdsOnly)
{
    QStringList with;
    for (int id = 0; id <= 23; ++id) {
        KV::COpSelectCodeWidget code(static_cast<KV::EOpParamWidgetID>(id), nullptr);
        if (code.findChild<KV::COpTypeButton *>())
            with << QString::number(id);
        EXPECT_EQ(code.isLong(), !with.isEmpty() && with.last() == QString::number(id));
    }
    EXPECT_EQ(with.join(QLatin1Char(' ')).toStdString(), "1 2 3 4 18 19 20 21");
}

TEST(OpSelectCodeWidget, StartsWithTheCodeOfItsLineEditAndForFutures)
{
    KV::COpSelectCodeWidget code(KV::OpParamCode, nullptr);
    EXPECT_EQ(code.getStockCode(), QString());
    EXPECT_EQ(code.getTradeType(), kdservice::TraderFuture);
    EXPECT_EQ(code.height(), 52);
    refhost::ThemeService::instance().setScale(2);
    EXPECT_EQ(code.height(), 104);
    refhost::ThemeService::instance().setScale(1);
}

TEST(OpSelectCodeWidget, KeepsTheCodeThatItIsGivenWithoutAnEvent)
{
    Field field;
    field.code->setStockCode(QStringLiteral("600519.SH"));
    EXPECT_EQ(field.code->getStockCode(), QStringLiteral("600519.SH"));
    EXPECT_EQ(field.lineEdit()->getStockCode(), QStringLiteral("600519.SH"));
    field.code->setStockCode(QStringLiteral("601963.SH"), QStringLiteral("whatever"));
    EXPECT_EQ(field.lineEdit()->getStockCode(), QStringLiteral("601963.SH"));
    field.code->clearCode();
    EXPECT_EQ(field.code->getStockCode(), QString());
    EXPECT_EQ(field.lineEdit()->getStockCode(), QString());
    EXPECT_EQ(field.window.take(), "");
}

TEST(OpSelectCodeWidget, SwitchesItsDirectionAtAClickAndTellsWhichItIsNow)
{
    Field field(KV::OpParamThirdLegOpen);
    QTest::mouseClick(field.button(), Qt::LeftButton);
    EXPECT_FALSE(field.code->isLong());
    QTest::keyClick(field.button(), Qt::Key_Space);
    EXPECT_TRUE(field.code->isLong());
    EXPECT_EQ(field.window.take(), "1084 20 0\n1084 20 1");
    field.code->setDirection(false);
    field.code->setLocked(true);
    QTest::mouseClick(field.button(), Qt::LeftButton);
    EXPECT_FALSE(field.code->isLong());
    field.code->setLocked(false);
    QTest::mouseClick(field.button(), Qt::LeftButton);
    EXPECT_EQ(field.window.take(), "1084 20 1");
}

TEST(OpSelectCodeWidget, PassesOtherEventsOn)
{
    Field with;
    with.click<ZB::CPushButton>(QString(), 1);
    with.click<ZB::CCheckBox>(8, QString());
    EXPECT_TRUE(with.code->isLong());
    EXPECT_EQ(with.window.take(), "5 1 0\n69 8 1");
    Field without(KV::OpParamCode);
    without.click<ZB::CPushButton>(QString(), 0);
    without.code->setDirection(true);
    without.code->setLocked(true);
    EXPECT_FALSE(without.code->isLong());
    EXPECT_EQ(without.window.take(), "5 0 0");
    EXPECT_FALSE(without.code->handleEvent(17, 0, 0, QString(), nullptr));
    EXPECT_FALSE(with.code->handleEvent(5, 1, 0, QString(), nullptr));
    EXPECT_TRUE(with.code->handleEvent(245, 0, 1, QString(), nullptr));
    EXPECT_TRUE(with.code->handleEvent(5, 0, 0, QString(), nullptr));
}

TEST(OpSelectCodeWidget, TellsTheCodeThatTheUserTypes)
{
    Field field(KV::OpParamSecondLegOpen);
    field.lineEdit()->getLineEdit()->setFocus();
    EXPECT_EQ(field.window.take(), "245 4 1 this");
    QTest::keyClicks(field.lineEdit()->getLineEdit(), QStringLiteral("600519"));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        QTest::keyClick(field.lineEdit()->getLineEdit(), Qt::Key_Return);
        return !field.code->getStockCode().isEmpty();
    }));
    EXPECT_EQ(field.window.take(), "1083 4 0 600519.SH");
    EXPECT_EQ(field.code->getStockCode(), QStringLiteral("600519.SH"));
    field.other->setFocus();
    EXPECT_EQ(field.window.take(), "245 4 0 this");
    QTest::mouseClick(field.lineEdit()->getLineEdit(), Qt::LeftButton);
    QTest::keyClick(field.lineEdit()->getLineEdit(), Qt::Key_Delete); // all of it, which the click has marked
    QTest::keyClick(field.lineEdit()->getLineEdit(), Qt::Key_Return);
    EXPECT_EQ(field.code->getStockCode(), QString());
    EXPECT_EQ(field.window.take(), "245 4 1 this\n1083 4 0");
    EXPECT_TRUE(field.code->handleEvent(1082, 0, 0, QStringLiteral("601963.SH"), nullptr));
    EXPECT_EQ(field.window.take(), "1083 4 0 601963.SH");
}

TEST(OpSelectCodeWidget, TellsWhenAWhiteListTakesTheCodeAway)
{
    Field field;
    field.code->setStockCode(QStringLiteral("601963.SH"));
    field.code->setWhiteList({{QStringLiteral("SH"), {QStringLiteral("600519")}}}, true);
    EXPECT_EQ(field.lineEdit()->getStockCode(), QString());
    EXPECT_EQ(field.code->getStockCode(), QString());
    EXPECT_EQ(field.window.take(), "1083 1 0");
}

TEST(OpSelectCodeWidget, TakesCharactersTypedElsewhereAndTheFocus)
{
    Field field;
    field.code->inputStockCodeChar(QStringLiteral("6"));
    EXPECT_TRUE(field.code->isAncestorOf(QApplication::focusWidget()));
    EXPECT_EQ(field.lineEdit()->getLineEdit()->text(), QStringLiteral("6"));
    field.other->setFocus();
    field.code->setOpEnabled(false);
    field.code->inputStockCodeChar(QStringLiteral("0"));
    EXPECT_EQ(field.lineEdit()->getLineEdit()->text(), QString());
    EXPECT_TRUE(field.other->hasFocus());
    field.code->setOpEnabled(true);
    field.code->setFocus();
    EXPECT_TRUE(field.lineEdit()->hasFocus() || field.lineEdit()->isAncestorOf(QApplication::focusWidget()));
}

TEST(OpSelectCodeWidget, SettingsDecideWhatItsLineEditOffers)
{
    Field field;
    field.type(QStringLiteral("60"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return field.offers(3); })) << "the codes were never ready";
    field.code->setOperationType(kdservice::OperationBuy);
    EXPECT_TRUE(field.offers(2)) << "no index";
    field.code->setOperationType(kdservice::OperationNone);
    field.code->setStockCodeLineEditFlag(KV::FilterIndex);
    EXPECT_TRUE(field.offers(1));
    field.code->setWhiteList({{QStringLiteral("SZ"), {}}}, false);
    EXPECT_TRUE(field.offers(0));
    field.code->setEnableAll();
    EXPECT_TRUE(field.offers(3));
    field.code->setTradeType(kdservice::TraderFuture);
    EXPECT_EQ(field.code->getTradeType(), kdservice::TraderFuture);
    EXPECT_TRUE(field.offers(1)) << "the index, which nobody trades";
    EXPECT_EQ(field.window.take(), "245 1 1 this");
}

TEST(OpSelectCodeWidget, SettingsDecideWhatItsLineEditLooksLike)
{
    Field field;
    ZB::CLineEdit *edit = field.lineEdit()->getLineEdit();
    field.code->setEmptyHintText(QStringLiteral("代码"));
    EXPECT_EQ(edit->emptyHintText(), QStringLiteral("代码"));
    const QRect inside = edit->geometry();
    field.code->setBorderWidth(3);
    EXPECT_EQ(edit->geometry().left(), inside.left() + 2);
    EXPECT_EQ(edit->font().pixelSize(), 16);
    field.code->setTextFontKey(QStringLiteral("fnt_default_normal"));
    EXPECT_EQ(edit->font().pixelSize(), 12);
    const QFont ofButton = field.button()->font();
    edit->setStyleSheet(QString());
    field.button()->setFont(QFont(QStringLiteral("monospace"), 40));
    field.code->setFixFont(); // the fonts of the theme again, in all of it
    EXPECT_FALSE(edit->styleSheet().isEmpty());
    EXPECT_EQ(field.button()->font(), ofButton);
    field.code->setOpEnabled(false);
    EXPECT_FALSE(field.lineEdit()->isEnabled());
    EXPECT_TRUE(field.button()->isEnabled());
}

TEST(OpSelectCodeWidget, DoesWithoutItsLineEdit)
{
    Field field;
    delete field.lineEdit();
    field.code->setStockCode(QStringLiteral("600519.SH"));
    field.code->setTradeType(kdservice::TraderStock);
    field.code->setOperationType(kdservice::OperationBuy);
    field.code->setStockCodeLineEditFlag(KV::FilterStock);
    field.code->setWhiteList({}, false);
    field.code->setEnableAll();
    field.code->setBorderWidth(1);
    field.code->setTextFontKey(QStringLiteral("fnt_default_normal"));
    field.code->setEmptyHintText(QStringLiteral("代码"));
    field.code->setOpEnabled(true);
    field.code->inputStockCodeChar(QStringLiteral("6"));
    field.code->setFixFont();
    EXPECT_EQ(static_cast<int>(field.code->getTradeType()), 15990783);
    EXPECT_EQ(field.code->getStockCode(), QStringLiteral("600519.SH"));
}
