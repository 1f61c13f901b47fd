#include "desk/ownorderspanel.h"

#include "desk/deskrecords.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/barbutton.h"
#include "window/tableids.h"

namespace terminal {

using namespace refhost;

namespace {

using Command = OwnOrdersPanel::Command;

const struct
{
    Command command;
    const char *text;
    const char *tip;
} commands[] = {
    {Command::CancelBuys, "撤买", "撤销所有未成交的买单（F7）"},
    {Command::CancelSells, "撤卖", "撤销所有未成交的卖单（F8）"},
    {Command::CancelAll, "全撤", "撤销所有未成交的委托（F9）"},
    {Command::Reprice, "改价", "撤销当前一笔委托，未成部分改按对手价重新委托（F10）"},
    {Command::CloseAll, "全平", "按对手价卖出或平掉全部持仓（F12）"},
};

} // namespace

OwnOrdersPanel::OwnOrdersPanel(QWidget *parent)
    : OwnRecordsPanel(QStringLiteral("委托"), OwnOrdersTable, MetaOwnOrder, OrderAccount, OrderDay, parent)
{
    table().setEmptyText(QStringLiteral("没有委托"));
    arrangeColumns({{OrderEntryTime, 96},
                    {OrderCode, 88},
                    {InstrumentName, 76},
                    {OrderDirection, 54},
                    {OrderOffset, 54},
                    {OrderPrice, 80},
                    {OrderQuantity, 76},
                    {OrderFilled, 76},
                    {OrderUnfilled, 76},
                    {OrderCancelled, 76},
                    {OrderStatus, 56},
                    {OrderAveragePrice, 80},
                    {OrderAccount, 72},
                    {OrderNumber, 72},
                    {OrderRejectReason, 200}},
                   3);
    addCommands();
    applyLook();
}

OwnOrdersPanel::~OwnOrdersPanel() = default;

void OwnOrdersPanel::addCommands()
{
    for (const auto &each : commands) {
        auto *button = new BarButton(this);
        button->setText(QString::fromUtf8(each.text));
        button->setToolTip(QString::fromUtf8(each.tip));
        connect(button, &BarButton::clicked, this, [this, command = each.command] { Q_EMIT commanded(command); });
        addTitleWidget(button);
        buttons.push_back(button);
    }
    auto *settings = new BarButton(this);
    settings->setText(QStringLiteral("设置"));
    settings->setToolTip(QStringLiteral("确认、提示音、单笔上限、结束交易日"));
    settings->setOpensMenu(true);
    addTitleWidget(settings);
    buttons.push_back(settings);
}

qint64 OwnOrdersPanel::currentOrder() const
{
    const auto row = table().currentData();
    return row ? DeskRecords::numberOf(row->key()) : 0;
}

void OwnOrdersPanel::themeChanged()
{
    OwnRecordsPanel::themeChanged();
    applyLook();
}

void OwnOrdersPanel::applyLook()
{
    const WindowLook present = WindowLook::fromResources();
    for (BarButton *button : buttons)
        button->setLook(present);
}

} // namespace terminal
