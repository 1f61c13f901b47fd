#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include "codes/codeindexsource.h"
#include "codes/cstockcodelineedit_p.h"
#include "kv/instrumentlookup.h"

namespace KV {

void CStockCodeLineEdit::inputStockCodeChar(const QString &text)
{
    if (!isEnabled())
        return;
    d->edit->setFocus(Qt::OtherFocusReason);
    if (!d->isEditing)
        d->edit->clear();
    d->edit->insert(text);
    d->edited(d->edit->text());
}

void CStockCodeLineEdit::Private::setCode(const QString &other)
{
    code = other;
    isFaulty = false;
    name = code.isEmpty() ? QString() : getInstrumentText(code.toStdString()).name;
    q->update();
}

QString CStockCodeLineEdit::Private::sideText() const
{
    if (isWarning)
        return QStringLiteral("没有匹配的证券");
    return isEditing ? QString() : name;
}

void CStockCodeLineEdit::Private::applyFilter()
{
    search.setFilter(filter);
    if (isOpen())
        find(search.text());
}

void CStockCodeLineEdit::Private::setWarning(bool on)
{
    if (isWarning == on)
        return;
    isWarning = on;
    q->update();
}

void CStockCodeLineEdit::Private::edited(const QString &text)
{
    isEditing = true;
    isFaulty = false;
    setWarning(false);
    q->update();
    find(text);
    if (isSuppressed || (text.isEmpty() && !opensOnFocus))
        closeList();
    else
        openList();
}

void CStockCodeLineEdit::Private::find(const QString &text)
{
    ZB::CodeIndexSource *source = ZB::CodeIndexSource::instance();
    source->refresh();
    search.setIndex(source->index());
    search.find(text);
    if (popup != nullptr)
        popup->refresh();
}

void CStockCodeLineEdit::Private::openList()
{
    if (popup == nullptr) {
        popup = new ZB::CodePopup(search, q);
        QObject::connect(popup, &ZB::CodePopup::sigChosen, q, [this](int hit) { chooseHit(hit); });
        popup->refresh();
    }
    if (!popup->isVisible())
        QCoreApplication::instance()->installEventFilter(this);
    popup->showAt(QRect(q->mapToGlobal(QPoint(0, 0)), q->size()));
}

void CStockCodeLineEdit::Private::closeList()
{
    if (!isOpen())
        return;
    QCoreApplication::instance()->removeEventFilter(this);
    popup->hide();
}

bool CStockCodeLineEdit::Private::eventFilter(QObject *watched, QEvent *event)
{
    const bool isOfWindow = watched == q->window();
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::NonClientAreaMouseButtonPress: {
        const auto *widget = qobject_cast<QWidget *>(watched);
        if (widget != nullptr && widget != popup && !q->isAncestorOf(widget) && widget != q)
            closeList();
        break;
    }
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowDeactivate:
        if (isOfWindow)
            closeList();
        break;
    default:
        break;
    }
    return false;
}

bool CStockCodeLineEdit::Private::keyPressed(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
        return event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier
                   ? moveInList(event->key())
                   : false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return confirm();
    case Qt::Key_Escape:
        if (!isOpen() && !isEditing)
            return false;
        cancel();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        leaveByTab();
        return false;
    default:
        return false;
    }
}

bool CStockCodeLineEdit::Private::isListKey(int key) const
{
    return key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown || key == Qt::Key_PageUp ||
           key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}

bool CStockCodeLineEdit::Private::moveInList(int key)
{
    if (!isOpen()) {
        if (key != Qt::Key_Down)
            return false;
        find(isEditing ? edit->text() : QString());
        openList();
        return true;
    }
    const int step = key == Qt::Key_PageDown || key == Qt::Key_PageUp ? popup->pageRows() : 1;
    popup->moveCurrent(key == Qt::Key_Down || key == Qt::Key_PageDown ? step : -step);
    return true;
}

/// Enter takes what the list offers. Before the codes are ready it waits; where nothing answers it says so.
bool CStockCodeLineEdit::Private::confirm()
{
    if (!isOpen() && !isEditing)
        return false;
    if (isEditing && edit->text().isEmpty() && !isOpen()) {
        choose(QString());
        return true;
    }
    if (!isOpen()) {
        find(edit->text());
        openList();
    }
    if (popup->current() >= 0)
        chooseHit(popup->current());
    else if (search.hasIndex())
        setWarning(true);
    return true;
}

void CStockCodeLineEdit::Private::chooseHit(int hit)
{
    choose(search.item(search.hits()[static_cast<std::size_t>(hit)]).code);
}

void CStockCodeLineEdit::Private::choose(const QString &other)
{
    setCode(other);
    cancel();
    q->deliverEvent(eventCodeChosen, id, 0, code, nullptr);
}

void CStockCodeLineEdit::Private::cancel()
{
    closeList();
    isEditing = false;
    setWarning(false);
    edit->setText(code);
    if (edit->hasFocus())
        edit->selectAll();
    else
        edit->setCursorPosition(0);
    q->update();
}

void CStockCodeLineEdit::Private::focusCame(Qt::FocusReason reason)
{
    selectsOnRelease = reason == Qt::MouseFocusReason;
    if (!isEditing && reason != Qt::PopupFocusReason)
        edit->selectAll();
    q->update();
    if (opensOnFocus && !isSuppressed && !isEditing && reason != Qt::PopupFocusReason &&
        reason != Qt::ActiveWindowFocusReason) {
        find(QString());
        openList();
    }
    q->deliverEvent(eventCodeFocus, id, 1, QString(), nullptr);
}

/// Another window or a menu may come and go without costing the entry. Whoever goes on to another field with a whole
/// code typed means it; less than that is dropped.
void CStockCodeLineEdit::Private::focusLeft(Qt::FocusReason reason)
{
    const QPointer<CStockCodeLineEdit> field(q);
    closeList();
    q->update();
    if (isEditing && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
        find(edit->text());
        if (search.isExact())
            chooseHit(0);
        else
            cancel();
    }
    if (field != nullptr)
        q->deliverEvent(eventCodeFocus, id, 0, QString(), nullptr);
}

void CStockCodeLineEdit::Private::leaveByTab()
{
    if (isEditing && isOpen() && popup->current() >= 0 && !edit->text().isEmpty())
        chooseHit(popup->current());
}

bool CStockCodeLineEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != d->edit)
        return ZB::CBaseWidget::eventFilter(watched, event);
    const QPointer<CStockCodeLineEdit> self(this);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (d->isOpen() && d->isListKey(static_cast<QKeyEvent *>(event)->key()))
            event->accept(); // no shortcut of the window gets in between
        break;
    case QEvent::KeyPress:
        if (d->keyPressed(static_cast<QKeyEvent *>(event)))
            return true;
        break;
    case QEvent::FocusIn:
        d->focusCame(static_cast<QFocusEvent *>(event)->reason());
        break;
    case QEvent::FocusOut:
        d->focusLeft(static_cast<QFocusEvent *>(event)->reason());
        break;
    case QEvent::MouseButtonRelease:
        if (std::exchange(d->selectsOnRelease, false) && !d->edit->hasSelectedText() && !d->isEditing)
            d->edit->selectAll();
        break;
    default:
        break;
    }
    return self == nullptr; // an event has cost the field its life: nobody is left to hear this one
}

/// A click beside the text is one on the field.
void CStockCodeLineEdit::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        d->edit->setFocus(Qt::MouseFocusReason);
}

void CStockCodeLineEdit::enterEvent(QEvent *event)
{
    ZB::CBaseWidget::enterEvent(event);
    update();
}

void CStockCodeLineEdit::leaveEvent(QEvent *event)
{
    ZB::CBaseWidget::leaveEvent(event);
    update();
}

void CStockCodeLineEdit::hideEvent(QHideEvent *event)
{
    d->closeList();
    ZB::CBaseWidget::hideEvent(event);
}

void CStockCodeLineEdit::changeEvent(QEvent *event)
{
    ZB::CBaseWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        d->cancel();
        update();
    }
}

} // namespace KV
