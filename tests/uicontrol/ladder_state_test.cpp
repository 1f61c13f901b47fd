#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <boost/smart_ptr/make_shared.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "codes/codeindexsource.h"
#include "kv/cstockcodelineedit.h"
#include "loggedlines.h"
#include "order/quotevalue.h"
#include "records/record.h"
#include "services/instruments.h"
#include "theme/themeservice.h"
#include "uicontrol/ladderwindow.h"
#include "utils/clogcenter.h"
#include "zb/clineedit.h"
#include "zb/cuiresource.h"

using namespace KV;

namespace {

std::string text(const QSize &size)
{
    return std::to_string(size.width()) + "x" + std::to_string(size.height());
}

int themeSize(const char *key)
{
    return ZB::CUiResource::instance()->getSize(QLatin1String(key));
}

} // namespace

TEST(QuotesPricesList, EveryCodeThatIsSetStandsInTheDetailedLogBetweenTwoRules)
{
    LadderWindow window;
    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    const auto logged = std::make_shared<LoggedLines>();
    const log4cxx::LevelPtr before = logger->getLevel();
    logger->addAppender(logged);
    logger->setLevel(log4cxx::Level::getInfo());
    window.list->setStockCode(QStringLiteral("000001.SZ"));
    EXPECT_EQ(logged->text('|'), "") << "nobody asked for details";
    logger->setLevel(log4cxx::Level::getDebug());
    window.list->setStockCode(QStringLiteral("000001.SZ"));
    window.list->setStockCode(QStringLiteral("苹果%s"));
    logger->removeAppender(logged);
    logger->setLevel(before);
    const std::string rule(40, '=');
    EXPECT_EQ(logged->text('|'), "|" + rule + "|Set stock code to 000001.SZ.|" + rule + "|||" + rule +
                                     "|Set stock code to 苹果%s.|" + rule + "|");
}

TEST(QuotesPricesList, EveryClickStandsInTheLogBeforeItIsToldWithWhatItWasMadeWith)
{
    LadderWindow window(QuoteLevel2Vertical);
    window.give(plainQuote());
    const log4cxx::LoggerPtr logger = utils::getStdLogger();
    const auto logged = std::make_shared<LoggedLines>();
    const log4cxx::LevelPtr before = logger->getLevel();
    logger->addAppender(logged);
    logger->setLevel(log4cxx::Level::getWarn());
    const QuotesLayout places = window.places();
    const QPoint price(places.asks[0].price.right - 4, places.asks[0].band.center().y());
    window.click(price);
    EXPECT_EQ(logged->text('|'), "") << "nobody asked for it";
    logger->setLevel(log4cxx::Level::getInfo());
    window.takeEvents();
    window.whenTold = [&](int event) { logged->lines.push_back("told " + std::to_string(event)); };
    window.click(price);
    window.click(places.priceTypes[1].rect.center());
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Return);
    EXPECT_EQ(logged->levels, (std::set<int>{log4cxx::Level::INFO_INT}));
    logger->removeAppender(logged);
    logger->setLevel(before);
    EXPECT_EQ(logged->text('|'),
              "[3535] [KV::CQuotesGraphWidget::mouseReleaseEvent] User click price 10.06 in tradeType 1|told 1128|"
              "[3535] [KV::CQuotesGraphWidget::mouseReleaseEvent] User click priceType 3 in tradeType 1|told 1127|"
              "[3535] [KV::CQuotesGraphWidget::keyPressEvent] User click price 10.06 in tradeType 1|told 1128");
}

TEST(QuotesPricesList, PaintsABusyQuoteOnceAFrameAndTheLastSnapshotAlways)
{
    class PaintCount : public QObject
    {
    public:
        int paints = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
    LadderWindow window;
    PaintCount count;
    window.graph->installEventFilter(&count);
    quoter::QuoterAllData quote = plainQuote();
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 200; ++i) {
        quote.askPrices[0] = 10.06 + 0.01 * i;
        window.list->setQuoterAllData(boost::make_shared<quoter::QuoterAllData>(quote), window.detail);
        QTest::qWait(1);
    }
    EXPECT_LE(count.paints, clock.elapsed() / 16 + 2);
    EXPECT_GE(count.paints, 3);
    const int painted = count.paints;
    EXPECT_TRUE(QTest::qWaitFor([&] { return count.paints > painted || clock.elapsed() > 2000; }));
    const QuoteValuePlace place = window.places().asks[0].price;
    window.click({place.right - 5, place.baseline - 3});
    EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 12.0500");
}

TEST(QuotesPricesList, HasTheFixedSizeOfItsLayoutAndAccount)
{
    CQuotesPricesList list(OpParamQuotes);
    const std::string normal = text({themeSize("kv_siz_code_quotes_width"), themeSize("kv_siz_code_quotes_height")});
    const std::string vertical =
        text({themeSize("kv_siz_code_quotes_width"), themeSize("kv_siz_code_quotes_height_L2V")});
    const std::string horizontal =
        text({themeSize("kv_siz_code_quotes_width_L2H"), themeSize("kv_siz_code_quotes_height_L2H")});
    const auto sizeOf = [&](int type, kdservice::EVxTraderType trader) {
        list.setTradeType(trader);
        list.setQuoteType(static_cast<EQuoteType>(type));
        EXPECT_EQ(list.minimumSize(), list.maximumSize());
        return text(list.maximumSize());
    };
    for (const auto trader : {kdservice::TraderStock, kdservice::TraderOption}) {
        EXPECT_EQ(sizeOf(0, trader), vertical);
        EXPECT_EQ(sizeOf(1, trader), horizontal);
        EXPECT_EQ(sizeOf(2, trader), normal);
        EXPECT_EQ(sizeOf(7, trader), "0x0");
    }
    for (const auto trader : {kdservice::TraderFuture, kdservice::TraderCredit, kdservice::TraderStockOption})
        for (const int type : {0, 1, 2, 7})
            EXPECT_EQ(sizeOf(type, trader), normal);
}

TEST(QuotesPricesList, IsNoWiderThanItsLayoutHasUseForWhateverTheThemeSays)
{
    refhost::ThemeService &themes = refhost::ThemeService::instance();
    QTemporaryDir folder;
    for (const auto &[name, both, narrow, broad] :
         {std::tuple("slim", 170, 170, 170), std::tuple("exact", 230, 230, 230), std::tuple("wide", 231, 230, 231),
          std::tuple("huge", 900, 230, 400)}) {
        QFile file(folder.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral(R"({"name": "%1", "title": "%1", "sizes": {"kv_siz_code_quotes_width": %2,
            "kv_siz_code_quotes_width_L2H": %2}})")
                       .arg(QLatin1String(name))
                       .arg(both)
                       .toUtf8());
        file.close();
        ASSERT_EQ(themes.loadFile(file.fileName()).toStdString(), "");
        for (const int scale : {1, 2}) {
            SCOPED_TRACE(QStringLiteral("%1 at %2").arg(QLatin1String(name)).arg(scale).toStdString());
            CQuotesPricesList list(OpParamQuotes);
            themes.setTheme(QLatin1String(name));
            themes.setScale(scale);
            EXPECT_EQ(list.maximumWidth(), narrow * scale);
            list.setQuoteType(QuoteLevel2Vertical);
            EXPECT_EQ(list.maximumWidth(), narrow * scale);
            list.setQuoteType(QuoteLevel2Horizontal);
            EXPECT_EQ(list.maximumWidth(), broad * scale);
            list.setTradeType(kdservice::TraderFuture);
            EXPECT_EQ(list.maximumWidth(), narrow * scale) << "this account has the ordinary layout only";
        }
    }
    themes.setTheme(QStringLiteral("dark"));
    themes.setScale(1);
}

TEST(QuotesPricesList, TheCancelRowAddsFifteenPixelsAndASelectorItsHeight)
{
    CQuotesPricesList list(OpParamQuotes);
    const int plain = list.height();
    list.setShowCancelOrder(true);
    EXPECT_EQ(list.height(), plain + 15);
    list.setShowCancelOrder(false);
    auto *selector = new CSelectCodeWidget;
    list.setSelectCodeWidget(selector);
    EXPECT_GE(selector->height(), 50);
    EXPECT_EQ(selector->minimumHeight(), selector->preferredHeight());
    EXPECT_EQ(list.height(), plain + selector->preferredHeight());
    auto *another = new CSelectCodeWidget;
    list.setSelectCodeWidget(another);
    EXPECT_TRUE(selector->isHidden());
    EXPECT_EQ(list.height(), plain + another->preferredHeight());
    delete another;
    EXPECT_EQ(list.getSelectCodeWidget(), nullptr);
    QApplication::processEvents();
    EXPECT_EQ(list.height(), plain);

    refhost::ThemeService::instance().setScale(2.0);
    EXPECT_EQ(list.height(), 2 * plain);
    EXPECT_EQ(list.width(), themeSize("kv_siz_code_quotes_width"));
    refhost::ThemeService::instance().setScale(1.0);
}

TEST(QuotesPricesList, WithoutASelectorItsCallsDoNothing)
{
    CQuotesPricesList list(OpParamQuotes);
    EXPECT_EQ(list.getStockCode().toStdString(), "");
    list.inputStockCodeChar(QStringLiteral("6"));
    list.setCodeEditFocus();
    list.setDrawTop(true);
    list.setOperationType(kdservice::OperationBuy);
    list.setUiEnabled(false, false);
    EXPECT_FALSE(list.findChild<CQuotesGraphWidget *>(QStringLiteral("mqlt_tavesk_quotepriceslist"))->isEnabled());
}

TEST(QuotesPricesList, HandsItsSettingsOnToTheSelector)
{
    CQuotesPricesList list(OpParamQuotes);
    auto *selector = new CSelectCodeWidget;
    list.setTradeType(kdservice::TraderOption);
    list.setSelectCodeWidget(selector);
    EXPECT_EQ(selector->getTradeType(), kdservice::TraderOption) << "what was set before it came";
    EXPECT_EQ(selector->getStockCodeLineEdit()->getTradeType(), kdservice::TraderOption);
    selector->setStockCode(QStringLiteral("600000.SH"));
    EXPECT_EQ(list.getStockCode().toStdString(), "600000.SH");
    list.setTradeType(kdservice::TraderFuture);
    EXPECT_EQ(selector->getTradeType(), kdservice::TraderFuture);
    EXPECT_EQ(selector->getStockCodeLineEdit()->getTradeType(), kdservice::TraderFuture);
    list.setTradeOpType(77);
    EXPECT_EQ(selector->getTradeOpType(), 77U);
    list.setDrawTop(false);
    EXPECT_FALSE(selector->isDrawTop());
    list.setUiEnabled(false, true);
    EXPECT_FALSE(selector->isEnabled());
    EXPECT_TRUE(list.findChild<CQuotesGraphWidget *>()->isEnabled());
}

TEST(QuotesPricesList, TypingOverTheQuoteStartsTheEntryOfACode)
{
    LadderWindow window;
    auto *selector = new CSelectCodeWidget;
    window.list->setSelectCodeWidget(selector);
    selector->setStockCode(QStringLiteral("600000.SH"));
    EXPECT_FALSE(selector->getStockCodeLineEdit()->isVisible());
    QTest::keyClicks(window.graph, QStringLiteral("3"));
    EXPECT_TRUE(selector->isEditing());
    EXPECT_TRUE(selector->getStockCodeLineEdit()->isVisible());
    ZB::CLineEdit *inner = selector->getStockCodeLineEdit()->getLineEdit();
    EXPECT_EQ(inner->text().toStdString(), "3");
    EXPECT_TRUE(inner->hasFocus());
    window.list->inputStockCodeChar(QStringLiteral("600"));
    EXPECT_EQ(inner->text().toStdString(), "600") << "the text is replaced";
    EXPECT_EQ(inner->selectedText().toStdString(), "") << "the next character is added";

    window.graph->setFocus();

    selector->setCompletionSuppressed(true);
    window.list->setCodeEditFocus();
    EXPECT_FALSE(selector->isCompletionSuppressed());
    EXPECT_TRUE(selector->isEditing());
    EXPECT_TRUE(inner->hasFocus());
    EXPECT_EQ(inner->selectedText(), inner->text());

    selector->getStockCodeLineEdit()->setStockCode(QStringLiteral("000001.SZ"), true);
    EXPECT_FALSE(selector->isEditing());
    EXPECT_EQ(window.list->getStockCode().toStdString(), "000001.SZ");
    EXPECT_TRUE(window.takeEvents().contains(QStringLiteral("1082 0 0 000001.SZ")));
}

TEST(QuotesPricesList, AnOperationLeavesOutWhatCannotBeTraded)
{
    const std::string index = "000300.SH";
    const auto record = refhost::makePlain(refhost::MetaInstrument, index);
    record->setData(refhost::InstrumentCode, index);
    record->setData(refhost::InstrumentName, std::string("沪深300"));
    record->setData(refhost::InstrumentKind, int(FilterIndex));
    refhost::Instruments::put(record);
    ZB::CodeIndexSource *source = ZB::CodeIndexSource::instance();
    source->refresh();
    ASSERT_TRUE(QTest::qWaitFor([&] { return source->index() && !source->index()->items().empty(); }));
    LadderWindow window;
    window.list->setSelectCodeWidget(new CSelectCodeWidget);
    CStockCodeLineEdit *edit = window.list->getSelectCodeWidget()->getStockCodeLineEdit();
    const auto chosen = [&] {
        edit->clearCode();
        window.list->setCodeEditFocus();
        QTest::keyClicks(edit->getLineEdit(), QStringLiteral("000300"));
        QTest::keyClick(edit->getLineEdit(), Qt::Key_Return);
        return edit->getStockCode().toStdString();
    };
    EXPECT_EQ(chosen(), index);
    window.list->setOperationType(kdservice::OperationBuy);
    EXPECT_EQ(chosen(), "") << "nobody trades an index";
}

TEST(QuotesPricesList, QuickOrdersNeedToBeAllowed)
{
    CQuotesPricesList list(OpParamQuotes);
    list.setQuickOrder(true);
    EXPECT_FALSE(list.isQuickOrder());
    list.setCanUseQuickOrder(true);
    EXPECT_FALSE(list.isQuickOrder());
    list.setQuickOrder(true);
    EXPECT_TRUE(list.isQuickOrder());
    list.setCanUseQuickOrder(false);
    EXPECT_FALSE(list.isQuickOrder());
    list.setCanUseQuickOrder(true);
    EXPECT_FALSE(list.isQuickOrder()) << "the permission alone switches nothing on";
}

TEST(QuoteValue, KnowsWhatIsMissing)
{
    using namespace quotevalue;
    EXPECT_EQ(CQuoteData().price, 0);
    EXPECT_EQ(CQuoteData().volume, 0);
    EXPECT_EQ(volumeOf(5), 5);
    EXPECT_EQ(volumeOf((qint64(7) << 32) + 12), 12) << "the low 32 bits";
    EXPECT_EQ(volumeOf(2147483647), noVolume);
    EXPECT_EQ(volumeOf(std::numeric_limits<qint64>::max()), noVolume);
    EXPECT_EQ(volumeText(0).toStdString() + volumeText(noVolume).toStdString(), "--");
    EXPECT_EQ(volumeText(1234567).toStdString(), "1234567");
    EXPECT_EQ(quotevalue::change(noPrice, 10), noPrice);
    EXPECT_EQ(quotevalue::change(10, noPrice), noPrice);
    EXPECT_EQ(quotevalue::change(0, 10), noPrice);
    EXPECT_NEAR(quotevalue::change(10.5, 10), 0.5, 1e-9);
}

TEST(QuoteValue, BecomesTextByItsTick)
{
    using namespace quotevalue;
    EXPECT_EQ(decimalsOf(0.01), 2);
    EXPECT_EQ(decimalsOf(0.010000000000000002), 2);
    EXPECT_EQ(decimalsOf(0.005), 3);
    EXPECT_EQ(decimalsOf(0.2), 1);
    EXPECT_EQ(decimalsOf(1), 0);
    EXPECT_EQ(decimalsOf(5), 0);
    for (const double unusable : {0.0, -1.0, noPrice, std::nan("")})
        EXPECT_EQ(decimalsOf(unusable), 2);
    EXPECT_EQ(priceText(15.929999999999999, 2).toStdString(), "15.93");
    EXPECT_EQ(priceText(0, 2).toStdString(), "-");
    EXPECT_EQ(changeText(0.1, 2).toStdString(), "+0.10");
    EXPECT_EQ(changeText(-0.1, 2).toStdString(), "-0.10");
    EXPECT_EQ(changeText(0, 2).toStdString(), "0.00") << "no change is a value";
    EXPECT_EQ(changeText(1e-12, 2).toStdString(), "0.00") << "noise has no sign";
    EXPECT_EQ(changeText(noPrice, 2).toStdString(), "-");
    EXPECT_EQ(ageText(8).toStdString(), "8秒");
    EXPECT_EQ(ageText(185).toStdString(), "3分05秒");
    EXPECT_EQ(ageText(7440).toStdString(), "2小时04分");
}
