#include "desk/historyrows.h"

#include "kdservice/evxtradertype.h"
#include "kv/cuserconfig.h"
#include "records/fieldids.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

using namespace refhost;

QString countText(qint64 sum)
{
    return QString::number(sum);
}

QString moneyText(trading::Money sum)
{
    const KV::CUserConfig *config = KV::getUserConfig();
    const auto flags = config ? config->getSegmentedFormatFlag() : utils::CFlags<utils::EFormatNumberFlag>();
    return ZB::formatDoubleNumberSpace(trading::yuanOf(sum), 2, flags, false, QString());
}

} // namespace

HistoryRows::HistoryRows(int metaId) : KV::CHpfDataModel(metaId, kdservice::TraderStock) {}

HistoryRows::~HistoryRows() = default;

void HistoryRows::takeSums(const trading::HistoryPage &page)
{
    hasSums = page.hasSums;
    sums = page.sums;
}

QString HistoryRows::getStatDispalyQString(int column) const
{
    const kdservice::FieldDes *field = columnFieldDesMap().value(column);
    if (!hasSums || !field)
        return QString();
    switch (field->fieldId) {
    case OrderQuantity:
    case DealQuantity:
        return countText(sums.quantity);
    case OrderFilled:
        return countText(sums.filled);
    case OrderCancelled:
        return countText(sums.cancelled);
    case OrderAmount:
    case DealAmount:
        return moneyText(sums.amount);
    case DealCommission:
        return moneyText(sums.charges);
    default:
        return QString();
    }
}

} // namespace terminal
