#include "soak/soakday.h"

#include <QtWidgets/QHBoxLayout>
#include <boost/make_shared.hpp>
#include <utility>

#include "log/chpflogwidget.h"
#include "model/chpfthreaddatamodel.h"
#include "order/cquotespriceslist.h"
#include "table/chpfdatatable.h"
#include "theme/themeservice.h"

namespace soak {

namespace {

constexpr int orderCount = 50000;
constexpr int openedRows = 20000;
constexpr int updatesPerFeed = 400;
constexpr int linesPerBlock = 100;
constexpr int blocksPerFeed = 10;
constexpr int feedInterval = 20;    // ms
constexpr int actionInterval = 100; // ms
constexpr int sampleInterval = 250; // ms
constexpr int soakTableId = 900;

const char *const codes[] = {"600519.SH", "600000.SH", "000001.SZ", "300750.SZ", "688981.SH"};

} // namespace

SoakDay::SoakDay(WatchedApplication &application, unsigned seed)
    : random(seed), watch(application),
      table(new KV::CHpfDataTable(soakTableId, refhost::MetaMarketOrder, this, kdservice::TraderStock, false)),
      log(new KV::CHpfLogWidget(1, this)), ladder(new KV::CQuotesPricesList(KV::EOpParamWidgetID(1), this))
{
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(table, 3);
    layout->addWidget(log, 2);
    auto *form = new QWidget(this);
    auto *column = new QVBoxLayout(form);
    column->addWidget(ladder, 1);
    layout->addWidget(form);
    resize(1400, 800);
    ladder->setQuoteType(KV::QuoteLevel2Vertical);

    std::vector<boost::shared_ptr<kdservice::IData>> records;
    for (int number = 0; number < orderCount; ++number) {
        orders.push_back(refhost::makeOrder(refhost::MetaMarketOrder, "order-" + std::to_string(number)));
        orders.back()->setData(refhost::OrderCode, std::string(codes[random() % std::size(codes)]));
        orders.back()->setData(refhost::OrderPrice, 10 + 0.01 * static_cast<double>(random() % 1000));
        orders.back()->setData(refhost::OrderQuantity, qint64(100 * (1 + random() % 50)));
        records.push_back(orders.back());
    }
    table->updateDatas(records, false);
    table->setSortColumns({{table->getColumnIdByFileId(refhost::OrderPrice), 1}});

    brief = std::make_unique<BriefPanels>(table, orders, form, seed);

    connect(&feedTimer, &QTimer::timeout, this, &SoakDay::feed);
    connect(&actionTimer, &QTimer::timeout, this, &SoakDay::act);
    connect(&sampleTimer, &QTimer::timeout, this, &SoakDay::sample);
}

SoakDay::~SoakDay() = default;

void SoakDay::start()
{
    show();
    for (; briefCount < BriefPanels::stepsOfRound; ++briefCount) { // threads that the first one starts stay
        brief->act(briefCount);
        QApplication::processEvents();
    }
    clock.start();
    stalls.restart();
    waited = waitedForCore();
    feedTimer.start(feedInterval);
    actionTimer.start(actionInterval);
    sampleTimer.start(sampleInterval);
}

/// A changed copy of an order that the table holds, which takes that one's place.
boost::shared_ptr<refhost::OrderRecord> SoakDay::changedOrder()
{
    boost::shared_ptr<refhost::OrderRecord> &order = orders[random() % orders.size()];
    order = refhost::copyOf(*order);
    order->setData(refhost::OrderPrice, 10 + 0.01 * static_cast<double>(random() % 1000));
    order->setData(refhost::OrderFilled, qint64(random() % 1000));
    return order;
}

void SoakDay::feed()
{
    watch.nameEvent(QStringLiteral("feed"));
    std::vector<boost::shared_ptr<kdservice::IData>> records;
    for (int i = 0; i < updatesPerFeed; ++i)
        records.push_back(changedOrder());
    table->updateDatas(records, false);
    updateCount += updatesPerFeed;

    for (int block = 0; block < blocksPerFeed; ++block) {
        QString text;
        for (int line = 0; line < linesPerBlock; ++line)
            text += QStringLiteral("09:30:00.%1 委托 600519.SH 买入 %2 股，价格 %3，等待成交回报\n")
                        .arg(line)
                        .arg(lineCount + line)
                        .arg(block);
        text.chop(1);
        log->dataCallBack(text, block % 3);
        lineCount += linesPerBlock;
    }
    showQuote();
}

void SoakDay::showQuote()
{
    const auto quote = boost::make_shared<quoter::QuoterAllData>();
    quote->previousClose = 15;
    quote->latestPrice = 15 + 0.01 * static_cast<double>(random() % 100);
    for (std::size_t level = 0; level < quoter::QuoterAllData::depth; ++level) {
        quote->askPrices[level] = quote->latestPrice + 0.01 * static_cast<double>(level + 1);
        quote->bidPrices[level] = quote->latestPrice - 0.01 * static_cast<double>(level + 1);
        quote->askVolumes[level] = qint64(random() % 100000);
        quote->bidVolumes[level] = qint64(random() % 100000);
    }
    ladder->setQuoterAllData(quote, boost::make_shared<kdservice::CInstrumentDetail>());
}

void SoakDay::openTable()
{
    opened = std::make_unique<KV::CHpfDataTable>(soakTableId + 1, refhost::MetaMarketOrder, nullptr,
                                                 kdservice::TraderStock, false);
    const auto model = boost::make_shared<KV::CHpfThreadDataModel>(refhost::MetaMarketOrder, kdservice::TraderStock);
    opened->setDataModel(model.get());
    opened->resize(800, 600);
    opened->show();
    model->addDatas(KV::CHpfThreadDataModel::Records(orders.begin(), orders.begin() + openedRows));
}

void SoakDay::act()
{
    const int code = table->getColumnIdByFileId(refhost::OrderCode);
    QSet<QString> chosen;
    refhost::ThemeService &themes = refhost::ThemeService::instance();
    switch (actionCount++ % 20) {
    case 0:
        watch.nameEvent(QStringLiteral("filter"));
        chosen = {QString::fromLatin1(codes[random() % std::size(codes)])};
        table->onFilterTrigger(code, 0, chosen);
        break;
    case 4:
        watch.nameEvent(QStringLiteral("filter taken off"));
        table->clearFilter();
        break;
    case 2:
    case 12:
        watch.nameEvent(QStringLiteral("sort"));
        table->setSortColumns({{static_cast<int>(random() % 8), static_cast<int>(random() % 2)}});
        break;
    case 5:
        watch.nameEvent(QStringLiteral("theme"));
        themes.setTheme(themes.theme() == QLatin1String("dark") ? QStringLiteral("light") : QStringLiteral("dark"));
        break;
    case 7:
        watch.nameEvent(QStringLiteral("scale"));
        themes.setScale(themes.scale() > 1 ? 1 : 1.5);
        break;
    case 8:
    case 16:
        watch.nameEvent(QStringLiteral("table opened"));
        openTable();
        break;
    case 11: // while its load may still be under way
    case 19:
        watch.nameEvent(QStringLiteral("table closed"));
        opened.reset();
        break;
    case 13:
        watch.nameEvent(QStringLiteral("search in the log"));
        log->findText(QStringLiteral("成交"));
        break;
    case 14:
        watch.nameEvent(QStringLiteral("line breaks in the log"));
        log->findText(QString());
        log->slotAutoLine(!log->isAutoLine());
        break;
    case 15:
        watch.nameEvent(QStringLiteral("log cleared"));
        log->clear();
        break;
    case 17:
        watch.nameEvent(QStringLiteral("search in the table"));
        table->find(QStringLiteral("300750"), true);
        break;
    case 1:
    case 6:
    case 9:
    case 10:
        watch.nameEvent(BriefPanels::nameOf(briefCount));
        brief->act(briefCount++);
        break;
    default:
        watch.nameEvent(QStringLiteral("row selected"));
        table->selectKey(orders[random() % orders.size()]->getKey());
    }
}

void SoakDay::sample()
{
    watch.nameEvent(QStringLiteral("figures taken"));
    Figures figures = presentFigures();
    figures.seconds = static_cast<double>(clock.elapsed()) / 1000;
    figures.worstStall = stalls.takeRecentWorst();
    const double waitedNow = waitedForCore();
    figures.waited = waitedNow - std::exchange(waited, waitedNow);
    taken.push_back(figures);
}

} // namespace soak
