#include "popups/taskstrip.h"

#include <QtGui/QPainter>
#include <QtWidgets/QPushButton>

#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

TaskStrip::TaskStrip(QWidget *parent) : QWidget(parent), stop(linkButton(QStringLiteral("取消"), this))
{
    stop->setFocusPolicy(Qt::NoFocus);
    connect(stop, &QPushButton::clicked, this, &TaskStrip::cancelRequested);
    setLook(PopupLook::fromResources());
    hide();
}

void TaskStrip::setTask(const QString &text)
{
    if (task == text)
        return;
    task = text;
    update();
}

void TaskStrip::setProgress(int progress)
{
    if (done == progress)
        return;
    done = progress;
    update();
}

int TaskStrip::progress() const
{
    return done;
}

void TaskStrip::setLook(const PopupLook &popupLook)
{
    look = popupLook;
    setFont(look.font);
    setStyleSheet(look.sheet());
    resize(sizeHint());
    update();
}

QSize TaskStrip::sizeHint() const
{
    return QSize(scaled(280), scaled(32));
}

void TaskStrip::resizeEvent(QResizeEvent *)
{
    const QSize size = stop->sizeHint();
    stop->setGeometry(width() - size.width() - scaled(4), (height() - size.height()) / 2, size.width(), size.height());
}

void TaskStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), mixed(look.border, look.dimText, 400));
    const QRect inside = rect().adjusted(1, 1, -1, -1);
    painter.fillRect(inside, look.raised);
    QRect bar = inside;
    bar.setTop(bar.bottom() - scaled(2));
    painter.fillRect(bar, look.border);
    bar.setWidth(bar.width() * done / 1000);
    painter.fillRect(bar, look.accent);
    painter.setFont(look.font);
    painter.setPen(look.text);
    painter.drawText(inside.adjusted(scaled(10), 0, -stop->width(), -scaled(2)), Qt::AlignVCenter,
                     QStringLiteral("%1 %2%").arg(task).arg(done / 10));
}

} // namespace ZB
