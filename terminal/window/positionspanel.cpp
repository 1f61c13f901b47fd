#include "window/positionspanel.h"

#include "feed/instrumentrules.h"
#include "records/record.h"
#include "services/instruments.h"
#include "table/cdatatable.h"

namespace terminal {

namespace {

using namespace refhost;
using trading::yuanOf;

constexpr int heldOnly = 1;

/// Lets positions without a quantity not pass: one that was closed while a filter hid it must not come back.
class PositionTable : public KV::CDataTable
{
public:
    PositionTable(int tableId, QWidget *parent) : KV::CDataTable(tableId, MetaPosition, parent)
    {
        onFilter(fieldID2columnID(PositionQuantity), heldOnly, QString());
    }

protected:
    bool passFilter(const RecordPtr &record, int, int type, QString) const override
    {
        return type != heldOnly || record->getLong(PositionQuantity) > 0;
    }
};

std::string keyOf(const trading::AccountBook &book, const trading::AccountBook::PositionKey &key)
{
    return book.account().id + '/' + key.first + '/' + static_cast<char>(key.second);
}

/// No value where there is nothing to divide by.
double ratioOf(trading::Money part, trading::Money whole)
{
    return whole > 0 ? static_cast<double>(part) / static_cast<double>(whole) : feed::absent<double>;
}

} // namespace

PositionsPanel::PositionsPanel(int tableId, QWidget *parent, bool hasFutures)
    : RecordPanel(QStringLiteral("持仓"), QStringLiteral("条"), new PositionTable(tableId, nullptr), parent)
{
    table().setEmptyText(QStringLiteral("没有持仓"));
    std::vector<Column> columns = {{PositionAccount, 70},   {PositionCode, 84},       {InstrumentName, 76},
                                   {PositionQuantity, 72},  {PositionAvailable, 72},  {PositionToday, 72},
                                   {PositionCostPrice, 80}, {PositionLastPrice, 76},  {PositionValue, 108},
                                   {PositionProfit, 104},   {PositionProfitRatio, 72}};
    if (hasFutures) {
        columns.insert(columns.begin() + 3, {PositionSideName, 48});
        columns.push_back({PositionDayProfit, 104});
        columns.push_back({PositionMargin, 92});
    }
    arrangeColumns(columns, 3);
    RecordPanel::refresh();
}

PositionsPanel::~PositionsPanel() = default;

int PositionsPanel::recordCount() const
{
    return static_cast<int>(records.size());
}

void PositionsPanel::take(const trading::AccountSource &source, const trading::AccountChanges &changes)
{
    for (const auto &[account, key] : changes.positions)
        show(source.books().at(account), key);
}

/// Its instrument may be told of later than the position itself, where that comes from a file.
PositionsPanel::RecordPtr PositionsPanel::recordOf(const std::string &recordKey, const std::string &code)
{
    RecordPtr &record = records[recordKey];
    if (record && record->getIData(PositionInstrument))
        return record;
    const auto instrument = Instruments::find(code);
    if (record && !instrument)
        return record;
    record = record ? copyOf(*record) : makePlain(MetaPosition, recordKey);
    record->setNested(PositionInstrument, instrument);
    return record;
}

void PositionsPanel::show(const trading::AccountBook &book, const trading::AccountBook::PositionKey &key)
{
    const std::string recordKey = keyOf(book, key);
    const trading::Position *position = book.position(key);
    if (!position)
        return remove(recordKey);
    const RecordPtr record = recordOf(recordKey, key.first);
    fill(*record, book, *position);
    table().updateData(record, /* flag */ false);
}

void PositionsPanel::remove(const std::string &recordKey)
{
    const auto found = records.find(recordKey);
    if (found == records.end())
        return;
    found->second->setData(PositionQuantity, qint64(0));
    table().removeDataByKey(recordKey);
    records.erase(found);
}

void PositionsPanel::fill(PlainRecord &record, const trading::AccountBook &book,
                          const trading::Position &position) const
{
    const qint64 quantity = position.quantity();
    const qint64 price = book.lastPrice(position.code);
    const auto value = trading::amountOf(price, quantity, position.multiplier);
    const bool isShort = position.side == trading::PositionSide::Short;
    record.setData(PositionAccount, position.account);
    record.setData(PositionCode, position.code);
    record.setData(PositionSide, static_cast<int>(position.side));
    record.setData(PositionSideName, std::string(position.kind != feed::InstrumentKind::Future ? "持有"
                                                 : isShort                                     ? "空"
                                                                                               : "多"));
    record.setData(PositionQuantity, quantity);
    record.setData(PositionFrozen, position.old.held + position.today.held);
    const bool sellsToday = sellsOnSameDay || trading::sellsOnSameDay(position.kind);
    if (position.kind == feed::InstrumentKind::Future)
        record.setData(PositionMargin, yuanOf(book.margin(position)));
    record.setData(PositionAvailable,
                   (sellsToday ? quantity - position.today.held : position.old.quantity) - position.old.held);
    record.setData(PositionToday, position.today.quantity);
    const auto units = static_cast<double>(quantity) * position.multiplier;
    record.setData(PositionCostPrice, units > 0 ? yuanOf(position.openCost) / units : feed::absent<double>);
    if (price <= 0 || !value)
        return;
    const trading::Money profit = isShort ? position.openCost - *value : *value - position.openCost;
    record.setData(PositionLastPrice, feed::priceOfUnits(price));
    record.setData(PositionValue, yuanOf(*value));
    record.setData(PositionProfit, yuanOf(profit));
    const trading::Money dayProfit = isShort ? position.basis() - *value : *value - position.basis();
    record.setData(PositionDayProfit, yuanOf(dayProfit));
    record.setData(PositionProfitRatio, ratioOf(profit, position.openCost));
}

} // namespace terminal
