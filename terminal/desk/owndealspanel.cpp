#include "desk/owndealspanel.h"

#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;

OwnDealsPanel::OwnDealsPanel(QWidget *parent)
    : OwnRecordsPanel(QStringLiteral("成交"), OwnDealsTable, MetaOwnDeal, DealAccount, DealDay, parent)
{
    table().setEmptyText(QStringLiteral("没有成交"));
    arrangeColumns({{DealTime, 96},
                    {DealCode, 88},
                    {InstrumentName, 76},
                    {DealDirection, 54},
                    {DealOffset, 54},
                    {DealPrice, 80},
                    {DealQuantity, 84},
                    {DealAmount, 100},
                    {DealCommission, 84},
                    {DealRealised, 96},
                    {DealAccount, 72},
                    {DealNumber, 72},
                    {DealOrder, 72}},
                   3);
}

OwnDealsPanel::~OwnDealsPanel() = default;

} // namespace terminal
