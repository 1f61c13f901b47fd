#include "popups/findbar.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

#include "popups/hintfield.h"
#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

FindBar::FindBar(QWidget *parent) : QWidget(parent)
{
    auto *row = tightRow(this);
    row->setContentsMargins(scaled(8), scaled(4), scaled(8), scaled(4));
    field = new HintField(QStringLiteral("在表格中查找"), this);
    field->setFixedWidth(scaled(220));
    QPushButton *previous = linkButton(QStringLiteral("上一个"), this);
    QPushButton *next = linkButton(QStringLiteral("下一个"), this);
    QPushButton *close = linkButton(QStringLiteral("关闭"), this);
    previous->setToolTip(QStringLiteral("Shift+F3"));
    next->setToolTip(QStringLiteral("F3"));
    close->setToolTip(QStringLiteral("Esc"));
    state = dimLabel(QString(), this);
    row->addWidget(field);
    row->addWidget(previous);
    row->addWidget(next);
    row->addWidget(state);
    row->addStretch();
    row->addWidget(close);
    connect(field, &QLineEdit::textChanged, this, &FindBar::textChanged);
    connect(previous, &QPushButton::clicked, this, [this] { Q_EMIT findRequested(false); });
    connect(next, &QPushButton::clicked, this, [this] { Q_EMIT findRequested(true); });
    connect(close, &QPushButton::clicked, this, &FindBar::closed);
    setFocusProxy(field);
    setLook(PopupLook::fromResources());
    hide();
}

QString FindBar::text() const
{
    return field->text();
}

void FindBar::activate()
{
    field->setFocus();
    field->selectAll();
}

void FindBar::setState(const QString &text, bool failed)
{
    state->setText(text);
    if (field->property("failed").toBool() == failed)
        return;
    field->setProperty("failed", failed);
    field->style()->unpolish(field);
    field->style()->polish(field);
}

void FindBar::setLook(const PopupLook &popupLook)
{
    look = popupLook;
    setFont(look.font);
    setStyleSheet(look.sheet());
}

void FindBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.raised);
    painter.fillRect(0, 0, width(), 1, look.border);
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
        Q_EMIT findRequested(!(event->modifiers() & Qt::ShiftModifier));
        return;
    case Qt::Key_Escape:
        Q_EMIT closed();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace ZB
