#include "window/panel.h"

#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QVBoxLayout>

#include "window/barlabel.h"

namespace terminal {

Panel::Panel(const QString &caption, QWidget *parent)
    : QWidget(parent), titleBar(new QWidget(this)), titleLayout(new QHBoxLayout(titleBar)),
      captionLabel(new BarLabel(BarLabel::Style::Bold, titleBar)),
      summaryLabel(new BarLabel(BarLabel::Style::Dim, titleBar))
{
    setAccessibleName(caption); // of the table in it, too
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(titleBar);
    captionLabel->setText(caption);
    captionLabel->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    titleLayout->addWidget(captionLabel);
    titleLayout->addWidget(summaryLabel, 1);
    applyLook();
}

Panel::~Panel() = default;

QString Panel::caption() const
{
    return captionLabel->text();
}

void Panel::setSummary(const QString &text)
{
    summaryLabel->setText(text);
}

QString Panel::summary() const
{
    return summaryLabel->text();
}

void Panel::replaceCaption(QWidget *widget)
{
    captionLabel->hide();
    titleLayout->insertWidget(0, widget);
}

void Panel::setContents(QWidget *contents)
{
    static_cast<QVBoxLayout *>(layout())->addWidget(contents, 1);
    setFocusProxy(contents);
}

void Panel::addTitleWidget(QWidget *widget)
{
    titleLayout->addWidget(widget);
    QWidget *before = widget;
    for (QWidget *each : focusProxy()->findChildren<QWidget *>())
        // The lists of combo boxes and menus are windows of their own.
        if (each->focusPolicy() & Qt::TabFocus && each->window() == window()) {
            setTabOrder(before, each);
            before = each;
        }
}

void Panel::themeChanged()
{
    applyLook();
}

void Panel::applyLook()
{
    look = WindowLook::fromResources();
    titleBar->setFixedHeight(look.titleHeight);
    titleLayout->setContentsMargins(look.gap, 0, look.gap, 0);
    titleLayout->setSpacing(look.gap);
    captionLabel->setLook(look);
    summaryLabel->setLook(look);
    update();
}

void Panel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect title = titleBar->geometry();
    painter.fillRect(title, look.background);
    painter.fillRect(QRect(title.left(), title.bottom(), title.width(), 1), look.line);
}

} // namespace terminal
