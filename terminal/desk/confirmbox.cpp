#include "desk/confirmbox.h"

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <algorithm>

#include "popups/popuplook.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int narrowestText = 280; ///< pixels at 100 %
constexpr int widestText = 560;

bool boxesShown = true;

void buildBox(QDialog &box, const QString &text, const QString &yes, EnterMeans enter)
{
    const ZB::PopupLook look = ZB::PopupLook::fromResources();
    box.setFont(look.font);
    box.setStyleSheet(look.sheet());
    QPalette colors = box.palette();
    colors.setColor(QPalette::Window, look.background);
    box.setPalette(colors);
    auto *column = new QVBoxLayout(&box);
    column->setContentsMargins(ZB::scaled(20), ZB::scaled(16), ZB::scaled(20), ZB::scaled(14));
    column->setSpacing(ZB::scaled(14));
    auto *message = new QLabel(text, &box);
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    message->ensurePolished(); // an order stands on one line
    const int widest = message->fontMetrics().size(0, text).width() + 1;
    message->setMinimumWidth(std::clamp(widest, ZB::scaled(narrowestText), ZB::scaled(widestText)));
    column->addWidget(message);
    auto *row = new QHBoxLayout;
    row->setSpacing(ZB::scaled(8));
    auto *accept = new QPushButton(yes, &box);
    auto *reject = new QPushButton(QStringLiteral("取消"), &box);
    QPushButton *chosen = enter == EnterMeans::Yes ? accept : reject;
    chosen->setDefault(true);
    chosen->setFocus();
    row->addStretch();
    row->addWidget(accept);
    row->addWidget(reject);
    column->addLayout(row);
    QObject::connect(accept, &QPushButton::clicked, &box, &QDialog::accept);
    QObject::connect(reject, &QPushButton::clicked, &box, &QDialog::reject);
}

} // namespace

bool askToConfirm(QWidget *parent, const QString &title, const QString &text, const QString &yes, EnterMeans enter)
{
    if (!boxesShown)
        return true;
    // The parent may go while the box is open, and takes it along.
    const QPointer<QDialog> box(new QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint));
    box->setObjectName(QStringLiteral("confirmBox"));
    box->setWindowTitle(title);
    buildBox(*box, text, yes, enter);
    const bool isAccepted = box->exec() == QDialog::Accepted;
    if (!box)
        return false;
    delete box;
    return isAccepted;
}

void setConfirmBoxesShown(bool shown)
{
    boxesShown = shown;
}

} // namespace terminal
