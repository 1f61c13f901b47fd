#include "window/orderstreampanel.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QLineEdit>

#include "pagemodel/chpfpagedatamodel.h"
#include "popups/hintfield.h"
#include "records/fieldids.h"
#include "window/barbutton.h"
#include "window/pagedrows.h"
#include "window/pagedstreamtable.h"
#include "window/tableids.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

using namespace refhost;

constexpr int typingMs = 150;
constexpr int searchWidth = 120; ///< pixels at 100 %
constexpr int searchHeight = 22;

/// In the order in which a desk asks for them.
const struct
{
    int mode;
    const char *text;
    const char *tip;
} statusModes[] = {{0, "全部", "所有委托"},
                   {1, "未完成", "可撤的委托：未成交和部分成交"},
                   {3, "已撤/废单", "没有全部成交就结束的委托"},
                   {2, "已成", "全部成交的委托"}};

} // namespace

OrderStreamPanel::OrderStreamPanel(QWidget *parent)
    : TablePanel(QStringLiteral("逐笔委托"), new PagedStreamTable(OrderStreamTable, MetaMarketOrder, nullptr), parent),
      streamTable(static_cast<PagedStreamTable *>(&table())), statuses(new QButtonGroup(this)),
      search(new ZB::HintField(QStringLiteral("搜索代码"), this))
{
    // Wide enough for nine-figure sums in groups: a number that does not fit is not shown at all.
    arrangeColumns({{OrderEntryTime, 90},
                    {OrderCode, 78},
                    {InstrumentName, 76},
                    {OrderDirection, 50},
                    {OrderPrice, 70},
                    {OrderQuantity, 84},
                    {OrderFilled, 84},
                    {OrderCancelled, 84},
                    {OrderStatus, 52},
                    {OrderAveragePrice, 76},
                    {OrderAmount, 90}},
                   3);
    addStatuses();
    addSearch();
    connect(streamTable, &PagedStreamTable::filterRestored, this, &OrderStreamPanel::showFilter);
    applyLook();
    OrderStreamPanel::refresh();
}

OrderStreamPanel::~OrderStreamPanel() = default;

void OrderStreamPanel::addStatuses()
{
    for (const auto &each : statusModes) {
        auto *button = new BarButton(this);
        button->setText(QString::fromUtf8(each.text));
        button->setToolTip(QString::fromUtf8(each.tip));
        button->setCheckable(true);
        statuses->addButton(button, each.mode);
        addTitleWidget(button);
    }
    statuses->button(0)->setChecked(true);
    connect(statuses, &QButtonGroup::idClicked, this, [this](int mode) {
        streamTable->setStatus(mode);
        refresh();
    });
}

/// While somebody types the list waits for the end of the word; Enter does not wait, Escape empties the field.
void OrderStreamPanel::addSearch()
{
    search->setClearButtonEnabled(true);
    search->setToolTip(QStringLiteral("只看代码中含有这些字的委托，区分大小写"));
    addTitleWidget(search);
    searchDelay.setSingleShot(true);
    searchDelay.setInterval(typingMs);
    connect(&searchDelay, &QTimer::timeout, this, &OrderStreamPanel::applySearch);
    connect(search, &QLineEdit::textEdited, &searchDelay, QOverload<>::of(&QTimer::start));
    connect(search, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty())
            applySearch();
    });
    connect(search, &QLineEdit::returnPressed, this, &OrderStreamPanel::applySearch);
    auto *clear = new QAction(search);
    clear->setShortcut(Qt::Key_Escape);
    clear->setShortcutContext(Qt::WidgetShortcut);
    search->addAction(clear);
    connect(clear, &QAction::triggered, search, &QLineEdit::clear);
}

void OrderStreamPanel::applySearch()
{
    searchDelay.stop();
    streamTable->setCodeSearch(search->text().trimmed());
    refresh();
}

/// The filters were cleared from the table, or what was asked for was taken back.
void OrderStreamPanel::showFilter()
{
    const QSignalBlocker quiet(search);
    searchDelay.stop();
    search->setText(streamTable->pages().codeSearch());
    if (QAbstractButton *button = statuses->button(streamTable->pages().exFilterStatus()))
        button->setChecked(true);
    refresh();
}

void OrderStreamPanel::take(const FeedPump::Records &records)
{
    streamTable->rows().take(records);
    sayWhyEmpty();
}

void OrderStreamPanel::refresh()
{
    TablePanel::refresh();
    sayWhyEmpty();
}

/// What an empty list says: whether there are no orders, or none of those there are is asked for.
void OrderStreamPanel::sayWhyEmpty()
{
    table().setEmptyText(allCount() > 0 ? QStringLiteral("没有符合条件的委托") : QStringLiteral("没有委托"));
}

int OrderStreamPanel::shownCount() const
{
    return streamTable->pages().shownSize();
}

int OrderStreamPanel::allCount() const
{
    return streamTable->pages().originalSize();
}

void OrderStreamPanel::showNow()
{
    streamTable->showNow();
}

void OrderStreamPanel::themeChanged()
{
    TablePanel::themeChanged();
    applyLook();
}

void OrderStreamPanel::applyLook()
{
    const WindowLook present = WindowLook::fromResources();
    for (QAbstractButton *button : statuses->buttons())
        static_cast<BarButton *>(button)->setLook(present);
    search->setFont(present.font);
    // The title is lower than the rows of a dialog, which the theme's fields are made for.
    search->setStyleSheet(QStringLiteral("QLineEdit { min-height: 0; padding: 0 %1px; }").arg(ZB::scaled(6)));
    search->setFixedSize(ZB::scaled(searchWidth), ZB::scaled(searchHeight));
}

} // namespace terminal
