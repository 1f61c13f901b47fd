#include "dialogs/informationbox.h"

#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

InformationBox::InformationBox(QWidget *parent, const QString &title, const QString &text)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), look(PopupLook::fromResources())
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(title);
    setFont(look.font);
    setStyleSheet(look.sheet());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(scaled(20), scaled(16), scaled(20), scaled(14));
    column->setSpacing(scaled(14));
    auto *message = new QLabel(text, this);
    message->setTextFormat(Qt::PlainText);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    message->setWordWrap(true);
    message->setMinimumWidth(scaled(240));
    column->addWidget(message);
    auto *row = new QWidget(this);
    auto *buttons = tightRow(row);
    auto *accept = new QPushButton(QStringLiteral("确定"), row);
    accept->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(accept);
    column->addWidget(row);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
}

void InformationBox::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.background);
}

} // namespace ZB
