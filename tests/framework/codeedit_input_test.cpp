#include <gtest/gtest.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "codes/codeindexsource.h"
#include "codes/codepopup.h"
#include "kv/cstockcodelineedit.h"
#include "printtext.h"
#include "records/record.h"
#include "services/instruments.h"
#include "theme/themeservice.h"
#include "zb/clineedit.h"

using namespace refhost;

namespace {

void know(const std::string &code, const std::string &name, KV::EFilterFlag kind = KV::FilterStock)
{
    const auto record = makePlain(MetaInstrument, code);
    record->setData(InstrumentCode, code);
    record->setData(InstrumentName, name);
    record->setData(InstrumentKind, int(kind));
    Instruments::put(record);
}

/// A code field over a button in a window that writes down what arrives.
class CodeWindow : public ZB::CBaseWidget
{
public:
    explicit CodeWindow(bool opensOnFocus = false)
    {
        know("600519.SH", "贵州茅台");
        know("601963.SH", "重庆银行");
        know("601077.SH", "渝农商行");
        know("000001.SZ", "平安银行");
        know("000001.SH", "上证指数", KV::FilterIndex);
        know("AP010", "苹果2010", KV::FilterFuture);
        field = new KV::CStockCodeLineEdit(7, 1, this, opensOnFocus);
        button = new QPushButton(this);
        auto *column = new QVBoxLayout(this);
        column->addWidget(button);
        column->addWidget(field);
        resize(300, 120);
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
        button->setFocus();
        ZB::CodeIndexSource *source = ZB::CodeIndexSource::instance();
        QSignalSpy built(source, &ZB::CodeIndexSource::sigIndexChanged);
        source->refresh();
        while (!source->index() || source->index()->items().size() < 6)
            built.wait(100);
        events.clear();
    }

    bool handleEvent(int event, int first, int second, QString text, void *) override
    {
        events << QStringLiteral("%1 %2 %3 %4").arg(event).arg(first).arg(second).arg(text).trimmed();
        return true;
    }

    QString taken() { return std::exchange(events, {}).join(QStringLiteral(", ")); }
    void enter()
    {
        field->getLineEdit()->setFocus(Qt::TabFocusReason);
        events.clear();
    }
    void type(const QString &text) { QTest::keyClicks(field->getLineEdit(), text); }
    void press(Qt::Key key) { QTest::keyClick(field->getLineEdit(), key); }
    QString shown() const { return field->getLineEdit()->text(); }
    ZB::CodePopup *list() const { return field->findChild<ZB::CodePopup *>(); }
    bool isOpen() const { return list() != nullptr && list()->isVisible(); }

    KV::CStockCodeLineEdit *field;
    QPushButton *button;
    QStringList events;
};

} // namespace

TEST(CodeEditInput, TypingAndEnterChooseTheBestAnswer)
{
    CodeWindow window;
    window.field->setFocus();
    EXPECT_EQ(window.taken(), QStringLiteral("245 7 1"));
    window.type("cq");
    EXPECT_TRUE(window.isOpen());
    EXPECT_TRUE(window.field->getLineEdit()->hasFocus());
    EXPECT_EQ(window.field->getStockCode(), QString()); // not before it is chosen
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 601963.SH"));
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.shown(), QStringLiteral("601963.SH"));
    EXPECT_EQ(window.field->getLineEdit()->selectedText(), QStringLiteral("601963.SH")); // the next entry replaces it
    window.type("pa");
    window.press(Qt::Key_Enter);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 000001.SZ"));
}

TEST(CodeEditInput, ArrowsWalkTheListAndEscapeTakesTheEntryBack)
{
    CodeWindow window;
    window.field->setStockCode("600519.SH", true);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 600519.SH"));
    window.field->setStockCode("600519.SH", true);
    EXPECT_EQ(window.taken(), QString());
    window.enter();
    window.type("yh");
    EXPECT_EQ(window.list()->current(), 0);
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Down);
    EXPECT_EQ(window.list()->current(), 1); // the end of the list
    window.press(Qt::Key_Escape);
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.shown(), QStringLiteral("600519.SH"));
    window.type("yh");
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 601963.SH"));
    window.press(Qt::Key_Down); // without an entry: everything
    EXPECT_TRUE(window.isOpen());
    window.press(Qt::Key_PageDown);
    EXPECT_EQ(window.list()->current(), 5);
    window.press(Qt::Key_Escape);
    EXPECT_EQ(window.taken(), QString());
}

TEST(CodeEditInput, ATextThatLeadsNowhereIsToldAndNeverBecomesTheCode)
{
    CodeWindow window;
    window.field->setStockCode("600519.SH", false);
    window.enter();
    window.type("qqqq");
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QString());
    EXPECT_EQ(window.shown(), QStringLiteral("qqqq"));
    EXPECT_EQ(window.field->getStockCode(), QStringLiteral("600519.SH"));
    window.button->setFocus();
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.shown(), QStringLiteral("600519.SH"));
    EXPECT_EQ(window.taken(), QStringLiteral("245 7 0"));
    window.enter();
    window.type("6");
    ASSERT_TRUE(window.isOpen());
    window.hide();
    EXPECT_FALSE(window.isOpen());
}

TEST(CodeEditInput, GoingOnTakesAWholeCodeByTabAlsoWhatTheListOffers)
{
    CodeWindow window;
    window.enter();
    window.type("600519");
    window.button->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 600519.SH, 245 7 0"));
    window.enter();
    window.type("6019");
    window.button->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(window.taken(), QStringLiteral("245 7 0"));
    EXPECT_EQ(window.shown(), QStringLiteral("600519.SH"));
    window.enter();
    window.type("6019");
    window.press(Qt::Key_Tab);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 601963.SH, 245 7 0"));
    EXPECT_TRUE(window.button->hasFocus());
}

TEST(CodeEditInput, AnotherWindowOrAMenuCostsNoEntry)
{
    CodeWindow window;
    window.enter();
    window.type("6019");
    for (const Qt::FocusReason reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        window.field->getLineEdit()->clearFocus();
        window.field->getLineEdit()->setFocus(reason);
        QFocusEvent leaving(QEvent::FocusOut, reason);
        QApplication::sendEvent(window.field->getLineEdit(), &leaving);
    }
    window.enter();
    window.type("6019");
    QFocusEvent leaving(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QApplication::sendEvent(window.field->getLineEdit(), &leaving);
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.shown(), QStringLiteral("6019"));
}

TEST(CodeEditInput, TheMouseChoosesWhatItStandsOn)
{
    CodeWindow window;
    window.enter();
    window.type("yh");
    const ZB::CodeListLayout layout = ZB::CodeListLayout::fit(2, window.list()->width());
    EXPECT_EQ(window.list()->size(), layout.size());
    QTest::mouseMove(window.list(), layout.rowRect(1).center());
    QTest::mouseClick(window.list(), Qt::RightButton, Qt::NoModifier, layout.rowRect(1).center());
    EXPECT_TRUE(window.isOpen());
    QTest::mouseClick(window.list(), Qt::LeftButton, Qt::NoModifier, layout.rowRect(1).center());
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 601963.SH"));
    EXPECT_FALSE(window.isOpen());

    window.type("yh");
    QTest::mouseClick(window.list(), Qt::LeftButton, Qt::NoModifier, layout.footerRect().center());
    EXPECT_TRUE(window.isOpen());
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.taken(), QString());
}

TEST(CodeEditInput, AnEmptiedFieldAndEnterTakeTheCodeAway)
{
    CodeWindow window;
    window.field->setStockCode("600519.SH", false);
    window.enter();
    window.press(Qt::Key_Delete);
    EXPECT_FALSE(window.isOpen());
    EXPECT_EQ(window.field->getStockCode(), QStringLiteral("600519.SH"));
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0"));
    EXPECT_EQ(window.field->getStockCode(), QString());
}

TEST(CodeEditInput, CharactersTypedElsewhereStartAnEntryOrGoOnWithIt)
{
    CodeWindow window;
    window.field->setStockCode("600519.SH", false);
    window.field->inputStockCodeChar("c");
    EXPECT_EQ(window.taken(), QStringLiteral("245 7 1"));
    EXPECT_EQ(window.shown(), QStringLiteral("c"));
    window.field->inputStockCodeChar("q");
    EXPECT_EQ(window.shown(), QStringLiteral("cq"));
    EXPECT_TRUE(window.isOpen());
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 601963.SH"));
}

TEST(CodeEditInput, ADisabledFieldTakesNoCharacters)
{
    CodeWindow window;
    window.field->setStockCode("600519.SH", false);
    window.field->setEnabled(false);
    window.field->inputStockCodeChar("c");
    EXPECT_EQ(window.shown(), QStringLiteral("600519.SH"));
    EXPECT_FALSE(window.isOpen());
    EXPECT_TRUE(window.button->hasFocus());
    EXPECT_EQ(window.taken(), QString());
    window.field->setEnabled(true);
    window.field->inputStockCodeChar("c");
    EXPECT_EQ(window.shown(), QStringLiteral("c"));
}

TEST(CodeEditInput, LooksDifferentInEveryState)
{
    for (const char *theme : {"dark", "light"}) {
        ThemeService::instance().setTheme(QLatin1String(theme));
        CodeWindow window;
        window.field->setStockCode("600519.SH", false);
        QCoreApplication::processEvents();
        QStringList names;
        QList<QImage> pictures;
        const auto take = [&](const char *name) {
            const QImage picture = window.field->grab().toImage();
            EXPECT_FALSE(pictures.contains(picture))
                << theme << ": " << name << " is like " << names.value(pictures.indexOf(picture)).toStdString();
            pictures << picture;
            names << QLatin1String(name);
        };
        take("normal");
        window.field->setAttribute(Qt::WA_UnderMouse);
        take("hovered");
        window.field->setAttribute(Qt::WA_UnderMouse, false);
        window.field->setWarning(true);
        take("wrong");
        window.field->setStockCode("601963.SH", false);
        take("another code"); // is not wrong
        window.field->setStockCode("600519.SH", false);
        EXPECT_EQ(window.field->grab().toImage(), pictures[0]);
        window.field->setEnabled(false);
        take("disabled");
        window.field->setEnabled(true);
        window.enter();
        take("with the keyboard");
        window.type("qqqq");
        window.press(Qt::Key_Return);
        take("an entry that leads nowhere");
    }
    ThemeService::instance().setTheme(QStringLiteral("dark"));
}

TEST(CodeEditInput, SettingsDecideWhatIsOffered)
{
    CodeWindow window(true);
    EXPECT_EQ(int(window.field->getTradeType()), 15990783);
    window.enter();
    ASSERT_TRUE(window.isOpen()); // with the focus already, and with everything
    const auto offered = [&window] { return window.list()->height(); };
    const auto height = [&window](int rows) {
        return ZB::CodeListLayout::fit(rows, window.list()->width()).size().height();
    };
    EXPECT_EQ(offered(), height(6));
    window.field->setOperationType(kdservice::OperationBuy);
    EXPECT_EQ(offered(), height(5));
    window.field->setTradeType(kdservice::TraderFuture);
    EXPECT_EQ(int(window.field->getTradeType()), 2);
    EXPECT_EQ(offered(), height(1));
    window.field->setTradeType(kdservice::TraderStock);
    window.field->setWhiteList({{"SZ", {}}}, false);
    EXPECT_EQ(offered(), height(1));
    window.field->setFlag(KV::FilterBond);
    EXPECT_EQ(offered(), height(0));
    window.field->setEnableAll();
    EXPECT_EQ(offered(), height(4));
    EXPECT_EQ(window.taken(), QString());
}

TEST(CodeEditInput, AWhiteListThatTakesTheCodeAwayTells)
{
    CodeWindow window;
    window.field->setStockCode("600519.SH", false);
    window.field->setWhiteList({{"SH", {"600519"}}}, true); // has it
    window.field->setWhiteList({{"SZ", {}}}, false);        // leaves it
    EXPECT_EQ(window.field->getStockCode(), QStringLiteral("600519.SH"));
    EXPECT_EQ(window.taken(), QString());
    window.field->setWhiteList({{"SZ", {}}}, true);
    EXPECT_EQ(window.field->getStockCode(), QString());
    EXPECT_EQ(window.shown(), QString());
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0"));
    window.field->setWhiteList({{"SH", {}}}, true); // nothing to take away
    EXPECT_EQ(window.taken(), QString());
}

TEST(CodeEditInput, AnInstrumentThatBecomesKnownIsFoundAtOnce)
{
    CodeWindow window;
    window.enter();
    window.type("300750");
    ASSERT_TRUE(window.isOpen());
    EXPECT_EQ(window.list()->current(), -1);
    QSignalSpy built(ZB::CodeIndexSource::instance(), &ZB::CodeIndexSource::sigIndexChanged);
    know("300750.SZ", "宁德时代");
    ZB::CodeIndexSource::instance()->refresh();
    ASSERT_TRUE(built.wait(5000));
    EXPECT_EQ(window.list()->current(), 0);
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.taken(), QStringLiteral("1082 7 0 300750.SZ"));
}

TEST(CodeEditInput, AFieldThatDiesInItsOwnEventHurtsNobody)
{
    CodeWindow window;
    struct Deleting : CodeWindow
    {
        bool handleEvent(int event, int, int, QString, void *) override
        {
            if (event == 1082)
                delete std::exchange(field, nullptr);
            return true;
        }
    } other;
    other.enter();
    other.type("600519");
    other.button->setFocus();
    EXPECT_EQ(other.field, nullptr);
}
