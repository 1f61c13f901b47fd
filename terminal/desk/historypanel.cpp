#include "desk/historypanel.h"

#include "desk/historytable.h"
#include "records/fieldids.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;
using Kind = trading::HistoryQuery::Kind;

HistoryPanel::HistoryPanel(Kind kind, QWidget *parent)
    : TablePanel(kind == Kind::Orders ? QStringLiteral("历史委托") : QStringLiteral("历史成交"),
                 new HistoryTable(kind == Kind::Orders ? HistoryOrdersTable : HistoryDealsTable, kind), parent),
      historyTable(static_cast<HistoryTable *>(&table()))
{
    if (kind == Kind::Orders)
        arrangeColumns({{OrderDay, 84},
                        {OrderEntryTime, 96},
                        {OrderCode, 88},
                        {InstrumentName, 76},
                        {OrderDirection, 54},
                        {OrderOffset, 54},
                        {OrderPrice, 80},
                        {OrderQuantity, 84},
                        {OrderFilled, 84},
                        {OrderAveragePrice, 80},
                        {OrderAmount, 96},
                        {OrderStatus, 56},
                        {OrderAccount, 84},
                        {OrderNumber, 84},
                        {OrderRejectReason, 160}},
                       3);
    else
        arrangeColumns({{DealDay, 84},
                        {DealTime, 96},
                        {DealCode, 88},
                        {InstrumentName, 76},
                        {DealDirection, 54},
                        {DealOffset, 54},
                        {DealPrice, 80},
                        {DealQuantity, 84},
                        {DealAmount, 96},
                        {DealCommission, 76},
                        {DealRealised, 96},
                        {DealAccount, 84},
                        {DealNumber, 84},
                        {DealOrder, 84}},
                       3);
    connect(historyTable, &HistoryTable::stateChanged, this, &HistoryPanel::refresh);
    HistoryPanel::refresh();
}

HistoryPanel::~HistoryPanel() = default;

void HistoryPanel::open(const QString &path)
{
    historyTable->open(path);
    if (isVisible())
        historyTable->renew();
}

void HistoryPanel::refresh()
{
    setSummary(historyTable->stateText());
}

void HistoryPanel::showEvent(QShowEvent *event)
{
    TablePanel::showEvent(event);
    historyTable->renew();
}

} // namespace terminal
