#include "popups/columnpopup.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <algorithm>

#include "popups/checkbutton.h"
#include "popups/checklist.h"

namespace ZB {

namespace {

constexpr int fewestLines = 6; ///< of the list of columns
constexpr int mostLines = 14;

} // namespace

ColumnPopup::ColumnPopup(QWidget *parent) : PopupFrame(parent)
{
    build();
}

void ColumnPopup::setState(const ColumnPopupState &state)
{
    filling = true;
    columns = state.columns;
    std::vector<CheckItem> items;
    for (const ColumnPopupState::Column &each : columns)
        items.push_back({each.name, QString(), each.visible, each.column});
    list->setFixedHeight(list->lineHeight() * std::clamp(int(items.size()), fewestLines, mostLines));
    list->setItems(std::move(items));
    frozen->setRange(0, int(columns.size()));
    frozen->setValue(state.frozenColumns);
    rowNumbers->setChecked(state.rowNumbers);
    statistics->setChecked(state.statistics);
    setNames = state.columnSets;
    sets->clear();
    sets->addItems(setNames);
    sets->setCurrentIndex(setNames.indexOf(state.columnSet));
    sets->setEditText(state.columnSet);
    filling = false;
    updateSetButtons();
}

void ColumnPopup::focusFrozenColumns()
{
    frozen->setFocus();
    frozen->selectAll();
}

/// A table without any column could not be opened again: the last one stays.
void ColumnPopup::tellVisible(int item)
{
    const auto &items = list->items();
    if (std::none_of(items.begin(), items.end(), [](const CheckItem &each) { return each.checked; })) {
        std::vector<CheckItem> kept = items;
        const auto last = std::find_if(columns.begin(), columns.end(), [](const auto &each) { return each.visible; });
        const int column = last == columns.end() ? -1 : last->column;
        for (CheckItem &each : kept)
            each.checked = item < 0 ? each.id == column : &each - kept.data() == item;
        list->setItems(std::move(kept));
    }
    for (const CheckItem &each : std::vector<CheckItem>(list->items())) {
        const auto known = std::find_if(columns.begin(), columns.end(),
                                        [&each](const auto &column) { return column.column == each.id; });
        if (known == columns.end() || known->visible == each.checked)
            continue;
        known->visible = each.checked;
        Q_EMIT visibleChanged(each.id, each.checked);
    }
}

void ColumnPopup::tellOrder()
{
    std::vector<int> order;
    for (const CheckItem &each : list->items())
        order.push_back(each.id);
    Q_EMIT orderChanged(order);
}

void ColumnPopup::updateSetButtons()
{
    const QString name = sets->currentText().trimmed();
    save->setEnabled(!name.isEmpty());
    remove->setEnabled(setNames.contains(name));
}

bool ColumnPopup::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            list->setFocus();
            return true;
        }
    }
    return PopupFrame::eventFilter(watched, event);
}

} // namespace ZB
