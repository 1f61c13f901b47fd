#include <QtCore/QDateTime>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QListView>
#include <QtWidgets/QTreeView>
#include <algorithm>

#include "popups/columnpopup.h"
#include "popups/markpopup.h"
#include "table/tableshell.h"
#include "zb/cuiresource.h"
#include "zb/etableflag.h"
#include "zb/messagebox.h"

namespace ZB {

/// Under the header, where the columns that it is about can be seen.
QRect TableShell::popupAnchor() const
{
    return QRect(grid->mapToGlobal(QPoint(0, 0)), QSize(grid->width(), grid->look().headerHeight));
}

void TableShell::closePopup()
{
    if (popup)
        popup->abandon();
    popup.clear();
}

void TableShell::openColumns(bool freezing)
{
    if (!isShowing())
        return;
    restoreNow();
    closePopup();
    auto *box = new ColumnPopup(widget);
    popup = box;
    fillColumns(box);
    connectColumns(box);
    connectColumnSets(box);
    box->showAt(popupAnchor(), Qt::RightEdge);
    if (freezing)
        box->focusFrozenColumns();
    else
        box->setFocus();
}

void TableShell::fillColumns(ColumnPopup *box)
{
    ColumnPopupState state;
    for (const int column : grid->columnOrder())
        if (const TableColumnInfo &info = columns[std::size_t(column)].info; info.offered)
            state.columns.push_back({column, info.name, grid->column(column).visible});
    state.frozenColumns = grid->frozenColumns();
    state.rowNumbers = frame.showRowNumbers;
    state.statistics = frame.showStatistics;
    state.columnSets = columnSets.keys();
    state.columnSet = frame.columnSet;
    box->setState(state);
}

void TableShell::connectColumns(ColumnPopup *box)
{
    const auto on = [this, box](auto signal, auto action) { QObject::connect(box, signal, widget, action); };
    on(&ColumnPopup::visibleChanged, [this](int column, bool visible) { showColumn(column, visible); });
    on(&ColumnPopup::orderChanged, [this](const std::vector<int> &order) { orderOffered(order); });
    on(&ColumnPopup::frozenColumnsChanged, [this](int count) { setFrozenColumns(count); });
    on(&ColumnPopup::rowNumbersChanged, [this](bool shown) {
        frame.showRowNumbers = shown;
        grid->setRowNumbersVisible(shown && (flags & TableRowNumbers));
        saveSoon();
    });
    on(&ColumnPopup::statisticsChanged, [this](bool shown) {
        frame.showStatistics = shown;
        updateStatistics();
        saveSoon();
    });
    on(&ColumnPopup::fitRequested, [this] { fitAll(); });
    on(&ColumnPopup::resetRequested, [this, box] {
        resetColumns();
        fillColumns(box);
    });
}

void TableShell::connectColumnSets(ColumnPopup *box)
{
    const auto on = [this, box](auto signal, auto action) { QObject::connect(box, signal, widget, action); };
    on(&ColumnPopup::setSaved, [this, box](const QString &name) {
        saveColumnSet(name);
        fillColumns(box);
    });
    on(&ColumnPopup::setChosen, [this, box](const QString &name) {
        applyColumnSet(name);
        fillColumns(box);
    });
    on(&ColumnPopup::setDeleted, [this, box](const QString &name) {
        removeColumnSet(name);
        fillColumns(box);
    });
}

void TableShell::openMarks()
{
    if (!isShowing())
        return;
    closePopup();
    std::vector<MarkPopup::Column> numbers;
    for (const int column : grid->columnOrder())
        if (grid->column(column).numeric)
            numbers.push_back({column, columns[std::size_t(column)].info.name});
    // Large orders are told by quantities and amounts, and those are what is summed.
    std::stable_partition(numbers.begin(), numbers.end(), [this](const MarkPopup::Column &offered) {
        return !grid->source()->statisticsText(offered.column).isEmpty();
    });
    auto *box = new MarkPopup(numbers, frame.marks, widget);
    popup = box;
    QObject::connect(box, &MarkPopup::marksChanged, widget,
                     [this](const QVector<CTableRowMark> &marks) { setRowMarks(marks); });
    box->showAt(popupAnchor(), Qt::RightEdge);
}

namespace {

/// Qt's own box for files, where the system has none: places and dates are cut off in it as it comes.
void giveRoom(QFileDialog &dialog)
{
    if (auto *places = dialog.findChild<QListView *>(QStringLiteral("sidebar")))
        places->setMinimumWidth(scaled(120));
    auto *files = dialog.findChild<QTreeView *>();
    if (!files || files->header()->count() == 0)
        return;
    files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    dialog.resize(scaled(760), scaled(460));
}

} // namespace

void TableShell::askExport()
{
    auto *dialog = new QFileDialog(widget, QStringLiteral("导出数据"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilters({QStringLiteral("Excel 工作簿 (*.xlsx)"), QStringLiteral("CSV 文件 (*.csv)")});
    dialog->setDefaultSuffix(QStringLiteral("xlsx"));
    dialog->setLabelText(QFileDialog::LookIn, QStringLiteral("位置"));
    dialog->setLabelText(QFileDialog::FileName, QStringLiteral("文件名"));
    dialog->setLabelText(QFileDialog::FileType, QStringLiteral("类型"));
    dialog->setLabelText(QFileDialog::Accept, QStringLiteral("保存"));
    dialog->setLabelText(QFileDialog::Reject, QStringLiteral("取消"));
    dialog->selectFile(
        QStringLiteral("导出_%1.xlsx").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_HHmmss"))));
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString &filter) {
        dialog->setDefaultSuffix(filter.contains(QLatin1String("csv")) ? QStringLiteral("csv")
                                                                       : QStringLiteral("xlsx"));
    });
    QObject::connect(
        dialog, &QFileDialog::fileSelected, widget,
        [this](const QString &path) {
            const QPointer<QWidget> self(widget);
            const bool whole = exportTo(path);
            if (!self || whole || transfer.wasCancelled())
                return;
            showInformation(widget, QStringLiteral("数据导出"),
                            QStringLiteral("导出失败：%1").arg(transfer.errorText()));
        },
        Qt::QueuedConnection);
    giveRoom(*dialog);
    dialog->open();
}

} // namespace ZB
