#include "window/fundspanel.h"

#include "records/record.h"
#include "table/cdatatable.h"
#include "window/columnsbutton.h"

namespace terminal {

namespace {

using namespace refhost;
using trading::yuanOf;

} // namespace

FundsPanel::FundsPanel(int tableId, QWidget *parent, bool hasFutures)
    : RecordPanel(QStringLiteral("资金"), QStringLiteral("个账户"), new KV::CDataTable(tableId, MetaFunds, nullptr),
                  parent)
{
    table().setEmptyText(QStringLiteral("没有账户"));
    std::vector<Column> shown = {{FundsAccount, 80},        {FundsName, 92},        {FundsTotal, 120},
                                 {FundsAvailable, 120},     {FundsFrozen, 104},     {FundsWithdrawable, 120},
                                 {FundsPositionValue, 120}, {FundsProfitToday, 112}};
    if (hasFutures)
        shown.insert(shown.end() - 1, {{FundsMargin, 108}, {FundsFloating, 112}});
    arrangeColumns(shown, 1);
    std::vector<int> fields;
    for (const Column &column : shown)
        fields.push_back(column.fieldId);
    columns = new ColumnsButton(table(), fields, 1, this);
    addTitleWidget(columns);
    columns->setLook(WindowLook::fromResources());
    RecordPanel::refresh();
}

FundsPanel::~FundsPanel() = default;

void FundsPanel::themeChanged()
{
    RecordPanel::themeChanged();
    columns->setLook(WindowLook::fromResources());
}

void FundsPanel::setRemark(const QString &text)
{
    titleRemark = text;
    refresh();
}

QString FundsPanel::remark() const
{
    return titleRemark;
}

void FundsPanel::take(const trading::AccountSource &source, const trading::AccountChanges &changes)
{
    for (const std::string &account : changes.accounts)
        show(source.books().at(account));
}

void FundsPanel::show(const trading::AccountBook &book)
{
    const trading::Account &account = book.account();
    auto &record = records[account.id];
    if (!record) {
        record = makePlain(MetaFunds, account.id);
        record->setData(FundsAccount, account.id);
        record->setData(FundsName, account.name);
        record->setData(FundsCurrency, 0);
    }
    const trading::Funds funds = book.funds();
    record->setData(FundsTotal, yuanOf(funds.total));
    record->setData(FundsAvailable, yuanOf(funds.available));
    record->setData(FundsFrozen, yuanOf(funds.frozen));
    record->setData(FundsWithdrawable, yuanOf(funds.withdrawable));
    record->setData(FundsPositionValue, yuanOf(funds.positionValue));
    if (account.kind == trading::AccountKind::Future)
        record->setData(FundsMargin, yuanOf(funds.margin));
    record->setData(FundsFloating, yuanOf(funds.floating));
    record->setData(FundsProfitToday, yuanOf(funds.profitToday));
    table().updateData(record, /* flag */ false);
}

} // namespace terminal
