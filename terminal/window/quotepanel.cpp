#include "window/quotepanel.h"

#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;

namespace {

constexpr int rowActivated = 69;
constexpr int currentRowChanged = 70;

} // namespace

QuotePanel::QuotePanel(QWidget *parent) : TablePanel(QStringLiteral("行情"), QuoteTable, MetaQuote, parent)
{
    table().setEmptyText(QStringLiteral("没有行情"));
    arrangeColumns({{QuoteCode, 80},
                    {InstrumentName, 92},
                    {QuoteLast, 72},
                    {QuoteChange, 64},
                    {QuoteChangeRatio, 72},
                    {QuoteVolume, 84},
                    {QuoteTurnover, 84},
                    {QuoteHigh, 72},
                    {QuoteLow, 72},
                    {QuoteOpen, 72},
                    {QuotePrevClose, 72},
                    {QuoteBidPrice, 72},
                    {QuoteAskPrice, 72},
                    {QuoteTime, 76}},
                   2);
    QuotePanel::refresh();
}

QuotePanel::~QuotePanel() = default;

void QuotePanel::setCurrentCode(const QString &code)
{
    const bool hasRow = table().getDataByKey(code) != nullptr;
    awaited = hasRow ? QString() : code;
    if (hasRow)
        table().selectKey(code.toStdString());
}

void QuotePanel::take(const FeedPump::Records &records)
{
    TablePanel::take(records);
    if (!awaited.isEmpty() && table().getDataByKey(awaited))
        setCurrentCode(QString(awaited));
}

void QuotePanel::refresh()
{
    const int shown = shownCount();
    const int all = allCount();
    setSummary(shown == all ? QStringLiteral("%1 只").arg(all) : QStringLiteral("筛选 %1 / %2 只").arg(shown).arg(all));
}

bool QuotePanel::handleEvent(int event, int, int, QString text, void *)
{
    if (event == currentRowChanged && !text.isEmpty())
        Q_EMIT codeChosen(text);
    else if (event == rowActivated && !text.isEmpty())
        Q_EMIT codeActivated(text);
    return event == currentRowChanged || event == rowActivated;
}

} // namespace terminal
