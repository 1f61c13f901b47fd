#include <gtest/gtest.h>

#include <QtGui/QWheelEvent>
#include <QtTest/QSignalSpy>
#include <QtTest/qtestspontaneevent.h>
#include <QtWidgets/QApplication>

#include "terminal/ticketwindow.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "zb/clineedit.h"
#include "zb/csmallnormalbutton.h"

using namespace terminal;
using feed::absent;

namespace {

/// A price and a quantity of a stock between 9.00 and 11.00 in lots of 100.
struct Fields
{
    Fields() : price(new PriceField(&window)), quantity(new QuantityField(&window))
    {
        price->setGeometry(10, 10, 220, 28);
        quantity->setGeometry(10, 50, 220, 28);
        price->setTerms({0.01, 2, 100, 1, 11, 9});
        quantity->setLot(100);
        window.showNow();
    }
    static void wheel(StepField *field, QPoint delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPoint at = field->edit()->rect().center();
        QWheelEvent event(at, field->edit()->mapToGlobal(at), QPoint(), delta, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event); // as from a window system: goes on to the parents
        qApp->notify(field->edit(), &event);
    }
    static QAbstractButton *button(StepField *field, int index)
    {
        return field->findChildren<ZB::CSmallNormalButton *>()[index];
    }

    EventWindow window;
    PriceField *price;
    QuantityField *quantity;
};

} // namespace

TEST(StepField, ArrowKeysStepAndShiftAndThePageKeysTakeTen)
{
    Fields fields;
    fields.price->setPrice(10);
    const QSignalSpy edited(fields.price, &StepField::edited);
    const struct
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char *after;
    } presses[] = {{Qt::Key_Up, Qt::NoModifier, "10.01"},     {Qt::Key_Up, Qt::ShiftModifier, "10.11"},
                   {Qt::Key_Down, Qt::NoModifier, "10.10"},   {Qt::Key_Down, Qt::ShiftModifier, "10.00"},
                   {Qt::Key_PageUp, Qt::NoModifier, "10.10"}, {Qt::Key_PageDown, Qt::NoModifier, "10.00"},
                   {Qt::Key_PageDown, Qt::NoModifier, "9.90"}};
    for (const auto &press : presses) {
        QTest::keyClick(fields.price->edit(), press.key, press.modifiers);
        EXPECT_EQ(fields.price->text(), QString::fromLatin1(press.after));
    }
    EXPECT_EQ(edited.count(), 7);
    fields.quantity->setQuantity(200);
    QTest::keyClick(fields.quantity->edit(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(fields.quantity->quantity(), 1200);
}

TEST(StepField, TheWheelStepsByWholeNotchesEverywhereOnIt)
{
    Fields fields;
    fields.price->setPrice(10);
    Fields::wheel(fields.price, {0, 120});
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.01"));
    Fields::wheel(fields.price, {0, -240});
    EXPECT_EQ(fields.price->text(), QStringLiteral("9.99"));
    for (int part = 0; part < 7; ++part) // a wheel without notches
        Fields::wheel(fields.price, {0, 40});
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.01"));
    Fields::wheel(fields.price, {0, -40});
    Fields::wheel(fields.price, {0, -120}, Qt::ShiftModifier);
    EXPECT_EQ(fields.price->text(), QStringLiteral("9.91"));
    Fields::wheel(fields.price, {120, 0}, Qt::ShiftModifier); // sideways
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.01"));
    fields.price->setEnabled(false);
    Fields::wheel(fields.price, {0, 120});
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.01"));
}

TEST(StepField, ItsButtonsStepWithoutTakingTheKeyboard)
{
    Fields fields;
    fields.quantity->setFocus();
    fields.price->setPrice(10);
    QTest::mouseClick(Fields::button(fields.price, 1), Qt::LeftButton);
    QTest::mouseClick(Fields::button(fields.price, 1), Qt::LeftButton);
    QTest::mouseClick(Fields::button(fields.price, 0), Qt::LeftButton);
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.01"));
    EXPECT_TRUE(fields.quantity->edit()->hasFocus());
}

TEST(StepField, ComingToItMarksTheNumberSoThatTypingReplacesIt)
{
    Fields fields;
    const auto typed = [&fields](const char *keys) {
        QTest::keyClicks(fields.price->edit(), QLatin1String(keys));
        return fields.price->text();
    };
    fields.price->setPrice(10);
    fields.quantity->setFocus();
    QTest::mouseClick(fields.price->edit(), Qt::LeftButton);
    EXPECT_EQ(typed("9"), QStringLiteral("9"));
    QTest::mouseClick(fields.price->edit(), Qt::LeftButton); // a second click sets the cursor
    QTest::keyClick(fields.price->edit(), Qt::Key_End);
    EXPECT_EQ(typed(".5"), QStringLiteral("9.5"));
    fields.quantity->setFocus();
    fields.price->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(typed("8"), QStringLiteral("8"));
}

TEST(StepField, AnEmptyPriceStartsAtTheLastOneElseAtTheLimit)
{
    Fields fields;
    QTest::keyClick(fields.price->edit(), Qt::Key_Up);
    EXPECT_EQ(fields.price->text(), QStringLiteral("9.00"));
    fields.price->setPrice(absent<double>);
    fields.price->setReferencePrice(10.5);
    QTest::keyClick(fields.price->edit(), Qt::Key_Up);
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.50"));
    fields.price->setTerms({0.5, 1, 1, 1, absent<double>, absent<double>});
    fields.price->setPrice(absent<double>);
    fields.price->setReferencePrice(absent<double>);
    QTest::keyClick(fields.price->edit(), Qt::Key_Down);
    EXPECT_EQ(fields.price->text(), QStringLiteral("0.5"));
    QTest::keyClick(fields.quantity->edit(), Qt::Key_Down);
    EXPECT_EQ(fields.quantity->text(), QStringLiteral("100"));
}

TEST(StepField, TakesOnlyWhatANumberIsMadeOf)
{
    Fields fields;
    const auto typed = [](StepField *field, const char *text) {
        field->edit()->clear();
        QTest::keyClicks(field->edit(), QString::fromUtf8(text));
        return field->text();
    };
    EXPECT_EQ(typed(fields.price, "-1a0.5.5"), QStringLiteral("10.55"));
    EXPECT_EQ(fields.price->price(), 10.55);
    fields.price->edit()->setText(QStringLiteral("10。5")); // as a Chinese input method writes the point
    EXPECT_EQ(fields.price->price(), 10.5);
    for (const char *none : {"", "."}) {
        EXPECT_EQ(typed(fields.price, none), QLatin1String(none));
        EXPECT_EQ(fields.price->price(), absent<double>);
    }
    EXPECT_EQ(typed(fields.price, "1."), QStringLiteral("1."));
    EXPECT_EQ(fields.price->price(), 1);
    EXPECT_EQ(typed(fields.quantity, "1.5e9-0000000000"), QStringLiteral("159000000"));
    EXPECT_EQ(fields.quantity->quantity(), 159'000'000);
    EXPECT_EQ(typed(fields.quantity, ""), QString());
    EXPECT_EQ(fields.quantity->quantity(), absent<qint64>);
}

TEST(PriceField, TheWordsOfATypeGiveWayToANumberThatIsTypedOrStepped)
{
    Fields fields;
    fields.price->setPrice(10);
    fields.price->setPriceType(KV::PriceLimit);
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.00"));
    fields.price->setPriceType(KV::PriceOpposite);
    EXPECT_EQ(fields.price->text(), QStringLiteral("对手价"));
    EXPECT_EQ(fields.price->price(), absent<double>);
    fields.price->setPriceType(KV::PriceOwnBest);
    EXPECT_EQ(fields.price->text(), QStringLiteral("本方最优"));
    fields.price->edit()->end(false);
    QTest::keyClicks(fields.price->edit(), QStringLiteral("9.5"));
    EXPECT_EQ(fields.price->text(), QStringLiteral("9.5"));
    EXPECT_EQ(fields.price->priceType(), KV::PriceLimit);
    fields.price->setPriceType(KV::PriceBestFive);
    QTest::keyClick(fields.price->edit(), Qt::Key_Backspace);
    EXPECT_EQ(fields.price->text(), QString());
    fields.price->setPriceType(KV::PriceBestFive);
    fields.price->setReferencePrice(10.5);
    QTest::keyClick(fields.price->edit(), Qt::Key_Up);
    EXPECT_EQ(fields.price->text(), QStringLiteral("10.50"));
    EXPECT_EQ(fields.price->priceType(), KV::PriceLimit);
    fields.price->setPriceType(KV::PriceOpposite);
    fields.price->setPriceType(KV::PriceLimit);
    EXPECT_EQ(fields.price->text(), QString());
}
