#include <QtCore/QPointer>
#include <QtGui/QCursor>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeWidget>

#include "account/caccountstree.h"

namespace KV {

/// The box looks pressed while its popup is open. A popup that was clicked into has the window system's activation: it
/// goes back to where the combo box is. (A tool window's isActiveWindow() is true also while its parent's window is
/// active.)
void CAccountsTree::setVisible(bool visible)
{
    const QPointer<QWidget> box(parentWidget());
    const bool wasActive = QApplication::activeWindow() == this;
    ZB::CBaseWidget::setVisible(visible);
    if (box == nullptr)
        return;
    box->update();
    if (!visible && wasActive)
        box->activateWindow();
}

/// Whether an object is the box, or a widget that moves it by moving.
bool CAccountsTree::isAround(const QObject *object) const
{
    const QWidget *box = parentWidget();
    const auto *widget = qobject_cast<const QWidget *>(object);
    return box != nullptr && widget != nullptr && (widget == box || widget->isAncestorOf(box));
}

bool CAccountsTree::isLeft() const
{
    const QWidget *active = QApplication::activeWindow();
    return active != this && parentWidget() != nullptr && active != parentWidget()->window();
}

bool CAccountsTree::eventFilter(QObject *watched, QEvent *event)
{
    const QWidget *box = parentWidget();
    const bool isMoved = event->type() == QEvent::Move && isAround(watched);
    const bool isResized =
        event->type() == QEvent::Resize && box != nullptr && (watched == box || watched == box->window());
    const bool isDeactivated = event->type() == QEvent::WindowDeactivate && isAround(watched) && isLeft();
    if (isMoved || isResized || isDeactivated)
        hide();
    return false;
}

/// Whoever clicked into the popup and goes on to another place leaves it. A press on the combo box closes it itself.
void CAccountsTree::changeEvent(QEvent *event)
{
    ZB::CBaseWidget::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || QApplication::activeWindow() == this || !isVisible())
        return;
    const QPoint cursor = QCursor::pos();
    const QWidget *box = parentWidget();
    const bool isOnBox = box != nullptr && box->rect().contains(box->mapFromGlobal(cursor));
    if (isLeft() || (!isOnBox && !rect().contains(mapFromGlobal(cursor))))
        hide();
}

void CAccountsTree::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        tree->setCurrentItem(clicked);
        hide();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        hide();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (QTreeWidgetItem *item = tree->currentItem())
            item->setExpanded(event->key() == Qt::Key_Right);
        break;
    default:
        if (QTreeWidgetItem *item = itemByKey(event->key()))
            tree->setCurrentItem(item);
    }
}

/// Null where the key leads nowhere.
QTreeWidgetItem *CAccountsTree::itemByKey(int key) const
{
    QTreeWidgetItem *first = tree->topLevelItem(0);
    QTreeWidgetItem *last = first;
    while (last != nullptr && tree->itemBelow(last) != nullptr)
        last = tree->itemBelow(last);
    if (first == nullptr || !(first->flags() & Qt::ItemIsSelectable))
        return nullptr;
    QTreeWidgetItem *current = tree->currentItem();
    switch (key) {
    case Qt::Key_Down:
        return current == nullptr ? first : tree->itemBelow(current);
    case Qt::Key_Up:
        return current == nullptr ? last : tree->itemAbove(current);
    case Qt::Key_Home:
        return first;
    case Qt::Key_End:
        return last;
    default:
        return nullptr;
    }
}

} // namespace KV
