#include "widgets/combopopup.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QVBoxLayout>
#include <algorithm>

#include "popups/clickguard.h"
#include "zb/cstandscrollbar.h"
#include "zb/cstylesheetcenter.h"

namespace ZB {

ComboPopup::ComboPopup(const QStringList &texts, int current, const Metrics &popupMetrics, QWidget *parent)
    : PopupFrame(parent), metrics(popupMetrics), list(new QListWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(metrics.frame, metrics.frame, metrics.frame, metrics.frame);
    layout->addWidget(list);
    list->setStyleSheet(CStyleSheetCenter::getStyle(QStringLiteral("QListWidget")) +
                        QStringLiteral("QListWidget, QListWidget:focus { border: none; }"
                                       "QListWidget::item { min-height: %1px; max-height: %1px; padding: 0 %2px; }")
                            .arg(metrics.rowHeight)
                            .arg(metrics.textMargin));
    list->setFont(look.font);
    list->setUniformItemSizes(true);
    list->setMouseTracking(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setVerticalScrollBar(new CStandScrollBar(0, Qt::Vertical, list));
    list->addItems(texts);
    list->setCurrentRow(current);
    list->installEventFilter(this);
    list->viewport()->installEventFilter(this);
    connect(list, &QListWidget::itemEntered, list, [this](QListWidgetItem *item) { list->setCurrentItem(item); });
    setFocusProxy(list);
}

ComboPopup::~ComboPopup() = default;

void ComboPopup::open(const QRect &button, bool fitsTexts)
{
    const int rows = std::clamp(list->count(), 1, std::max(1, metrics.mostRows));
    int width = button.width();
    if (fitsTexts) {
        const int scrollBar = list->count() > rows ? list->verticalScrollBar()->sizeHint().width() : 0;
        width = std::max(width, list->sizeHintForColumn(0) + scrollBar + 2 * metrics.frame);
    }
    setFixedSize(width, rows * metrics.rowHeight + 2 * metrics.frame);
    showAt(button);
    list->setFocus();
    list->scrollToItem(list->currentItem());
}

/// Who hears of the choice may destroy the button, and with it this.
void ComboPopup::pick(int index)
{
    close();
    if (index >= 0)
        Q_EMIT picked(index);
}

void ComboPopup::keyPressEvent(QKeyEvent *event)
{
    const bool closes = event->key() == Qt::Key_F4 || event->key() == Qt::Key_Tab;
    if (closes)
        close();
    else
        PopupFrame::keyPressEvent(event);
}

/// Takes the keys before the list does, which would leave Enter to a dialog and Space to its selection.
bool ComboPopup::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            pick(list->currentRow());
            return true;
        }
    }
    if (watched == list->viewport() && event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        const QListWidgetItem *item = mouse->button() == Qt::LeftButton ? list->itemAt(mouse->pos()) : nullptr;
        if (item != nullptr) {
            ClickGuard::startAt(mouse->globalPos());
            pick(list->row(item));
        }
        return true;
    }
    return PopupFrame::eventFilter(watched, event);
}

} // namespace ZB
