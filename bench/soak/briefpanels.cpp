#include "soak/briefpanels.h"

#include <QtCore/QSet>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>

#include "account/caccountscombobox.h"
#include "grid/gridview.h"
#include "kv/cstockcodelineedit.h"
#include "services/instruments.h"
#include "table/cdatatable.h"
#include "table/chpfdatatable.h"
#include "window/pagedrows.h"
#include "window/pagedstreamtable.h"
#include "window/userhand.h"
#include "zb/clineedit.h"

namespace soak {

namespace {

constexpr int recordTableId = 910;
constexpr int pagedTableId = 911;
constexpr int storedRecords = 500;
constexpr int pagedRecords = 5000;
constexpr int instruments = 300;
const Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;

const char *const names[] = {"record table opened",
                             "record table changed, filtered, sorted",
                             "filter box opened",
                             "filter box used and closed",
                             "record table closed, paged table opened",
                             "paged table sorted and filtered",
                             "box of columns opened",
                             "box of columns closed, paged table closed",
                             "accounts and codes opened",
                             "accounts and codes closed, rows exported"};

static_assert(std::size(names) == BriefPanels::stepsOfRound);

} // namespace

BriefPanels::BriefPanels(KV::CHpfDataTable *shown, const Orders &all, QWidget *form, unsigned seed)
    : random(seed), orders(all), table(shown), accounts(new KV::CAccountsComboBox(1, form)),
      codes(new KV::CStockCodeLineEdit(2, 0, form, false))
{
    form->layout()->addWidget(accounts);
    form->layout()->addWidget(codes);
    for (int number = 600000; number < 600000 + instruments; ++number) {
        const std::string code = std::to_string(number) + ".SH";
        const auto instrument = refhost::makeRecord(refhost::MetaInstrument, code);
        instrument->setData(refhost::InstrumentCode, code);
        refhost::Instruments::put(instrument);
    }
}

BriefPanels::~BriefPanels() = default;

QString BriefPanels::nameOf(int step)
{
    return QString::fromLatin1(names[static_cast<std::size_t>(step) % std::size(names)]);
}

void BriefPanels::act(int step)
{
    switch (static_cast<std::size_t>(step) % std::size(names)) {
    case 0:
        return openRecords();
    case 1:
        return useRecords();
    case 2:
        return openBox(Qt::Key_Down, Qt::AltModifier);
    case 3:
        terminal::UserHand::type(QStringLiteral("600"));
        return closeBox();
    case 4:
        records.reset();
        return openPages();
    case 5:
        return usePages();
    case 6:
        return openBox(Qt::Key_O, controlShift);
    case 7:
        closeBox();
        return pages.reset();
    case 8:
        return openLists();
    default:
        closeLists();
        exportRows();
    }
}

void BriefPanels::openRecords()
{
    records = std::make_unique<KV::CDataTable>(recordTableId, refhost::MetaMarketOrder, nullptr);
    records->resize(700, 400);
    QVector<KV::CDataTable::RecordPtr> stored;
    for (int i = 0; i < storedRecords; ++i)
        stored.push_back(orders[random() % orders.size()]);
    records->updateDatas(stored);
    records->show();
}

void BriefPanels::useRecords()
{
    if (!records)
        return;
    QSet<QString> chosen{QStringLiteral("600000.SH"), QStringLiteral("300750.SZ")};
    records->onFilterTrigger(records->fieldID2columnID(refhost::OrderCode), ZB::FilterExact, chosen);
    for (int i = 0; i < storedRecords / 5; ++i)
        records->updateData(orders[random() % orders.size()], false);
    records->setSortColumns({{records->fieldID2columnID(refhost::OrderPrice), 1}});
}

void BriefPanels::openPages()
{
    pages = std::make_unique<terminal::PagedStreamTable>(pagedTableId, refhost::MetaMarketOrder, nullptr);
    pages->resize(700, 400);
    QVector<terminal::PagedRows::Record> taken;
    for (int i = 0; i < pagedRecords; ++i)
        taken.push_back(orders[random() % orders.size()]);
    pages->rows().take(taken);
    pages->show();
    pages->showNow();
}

void BriefPanels::usePages()
{
    if (!pages)
        return;
    QSet<QString> chosen{QStringLiteral("600519.SH")};
    pages->onFilterTrigger(pages->getColumnIdByFileId(refhost::OrderCode), ZB::FilterExact, chosen);
    pages->setSortColumns({{pages->getColumnIdByFileId(refhost::OrderPrice), 0}});
    pages->showNow();
}

/// By the keys that a user has for it. The window may not be the active one: another that was just opened is.
void BriefPanels::openBox(int key, Qt::KeyboardModifiers modifiers)
{
    auto *grid = table->findChild<ZB::GridView *>();
    const int column = table->getColumnIdByFileId(refhost::OrderCode);
    grid->scrollToColumn(column);
    const ZB::GridLook &look = grid->look();
    terminal::UserHand::click(
        grid, QPoint(grid->headerRect(column).center().x(), look.headerHeight + look.rowHeight + look.rowHeight / 2));
    QKeyEvent press(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(grid, &press);
    box = QApplication::activePopupWidget();
    boxCount += !box.isNull();
}

void BriefPanels::closeBox()
{
    if (box)
        terminal::UserHand::key(Qt::Key_Escape);
    if (box)
        box->close(); // whatever has the keyboard in it
}

void BriefPanels::openLists()
{
    codes->inputStockCodeChar(QStringLiteral("6"));
    accounts->showPopup();
    for (const QWidget *window : QApplication::topLevelWidgets())
        boxCount += window->isVisible() && (window->parentWidget() == accounts || window->parentWidget() == codes);
}

void BriefPanels::closeLists()
{
    accounts->hidePopup();
    codes->clearCode();
}

void BriefPanels::exportRows()
{
    const char *const kind = exportCount % 2 == 0 ? "csv" : "xlsx";
    exportCount += table->exportData(folder.filePath(QStringLiteral("rows.%1").arg(QLatin1String(kind))));
}

} // namespace soak
