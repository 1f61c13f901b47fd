#include "zb/ccombopushbutton.h"

#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <algorithm>
#include <vector>

#include "widgets/buttonpaint.h"
#include "widgets/combobuttonaccessible.h"
#include "widgets/combopopup.h"
#include "zb/cuiresource.h"
#include "zb/ewidgetevent.h"

namespace ZB {

namespace {

struct Item
{
    QString text;
    QVariant userData;
};

} // namespace

class CComboPushButton::Private
{
public:
    /// A list that has been closed lives on for a while.
    ComboPopup *openPopup() const { return popup && popup->isVisible() ? popup.data() : nullptr; }

    int id = 0;
    int mostRows = 0;
    int textMargin = 0;
    int rowHeight = 0;
    int frame = 0;
    int arrowWidth = 0;
    bool adjustPopupWidth = false;
    std::vector<Item> items;
    int current = -1;
    QPointer<ComboPopup> popup;
};

CComboPushButton::CComboPushButton(const QString &imageKey, int mostRows, int textMargin, int rowHeight, int frame,
                                   int arrowWidth, QWidget *parent)
    : CPushButton(imageKey, 0, parent), d(std::make_unique<Private>())
{
    ComboButtonAccessible::install();
    d->mostRows = mostRows;
    d->textMargin = textMargin;
    d->rowHeight = rowHeight;
    d->frame = frame;
    d->arrowWidth = arrowWidth;
}

CComboPushButton::~CComboPushButton() = default;

void CComboPushButton::setEventId(int id)
{
    d->id = id;
}

int CComboPushButton::eventId() const
{
    return d->id;
}

void CComboPushButton::addItem(const QString &text, const QVariant &userData)
{
    d->items.push_back({text, userData});
    updateGeometry();
    if (d->current < 0)
        setCurrentItem(0);
}

void CComboPushButton::clear()
{
    if (d->popup)
        d->popup->close();
    d->items.clear();
    d->current = -1;
    setText(QString());
}

int CComboPushButton::count() const
{
    return static_cast<int>(d->items.size());
}

QString CComboPushButton::itemText(int index) const
{
    return index >= 0 && index < count() ? d->items[static_cast<size_t>(index)].text : QString();
}

QVariant CComboPushButton::itemData(int index) const
{
    return index >= 0 && index < count() ? d->items[static_cast<size_t>(index)].userData : QVariant();
}

int CComboPushButton::currentIndex() const
{
    return d->current;
}

QString CComboPushButton::currentText() const
{
    return itemText(d->current);
}

void CComboPushButton::setCurrentItem(int index)
{
    if (index < 0 || index >= count())
        return;
    d->current = index;
    setText(itemText(index));
    ComboButtonAccessible::valueChanged(this);
}

void CComboPushButton::setAdjustPopupWidth(bool adjust)
{
    d->adjustPopupWidth = adjust;
}

QWidget *CComboPushButton::popup() const
{
    return d->openPopup();
}

void CComboPushButton::showPopup()
{
    if (d->items.empty() || d->openPopup())
        return;
    QStringList texts;
    for (const Item &item : d->items)
        texts << item.text;
    const ComboPopup::Metrics metrics{d->mostRows, scaled(d->textMargin), scaled(d->rowHeight), scaled(d->frame)};
    d->popup = new ComboPopup(texts, d->current, metrics, this);
    connect(d->popup, &ComboPopup::picked, this, [this](int index) {
        if (index >= count())
            return;
        setCurrentItem(index);
        deliverEvent(EventItemChosen, d->id, index, itemText(index), nullptr);
    });
    connect(d->popup, &QObject::destroyed, this, [this] { update(); });
    d->popup->open(QRect(mapToGlobal(QPoint(0, 0)), size()), d->adjustPopupWidth);
}

QSize CComboPushButton::sizeHint() const
{
    int width = 0;
    for (const Item &item : d->items)
        width = std::max(width, fontMetrics().horizontalAdvance(item.text));
    return QSize(width + scaled(d->textMargin) + scaled(d->arrowWidth), scaled(d->rowHeight));
}

void CComboPushButton::themeChanged()
{
    if (d->popup)
        d->popup->close(); // it was laid out for the look before
    CPushButton::themeChanged();
}

void CComboPushButton::slotClicked(bool)
{
    showPopup();
}

QRect CComboPushButton::textRect() const
{
    return rect().adjusted(scaled(d->textMargin), 0, -scaled(d->arrowWidth), 0);
}

void CComboPushButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintGround(painter);
    painter.setFont(font());
    painter.setPen(textColor());
    const QRect place = textRect();
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
    paintDropArrow(painter, QRect(width() - scaled(d->arrowWidth), 0, scaled(d->arrowWidth), height()), textColor());
    if (hasFocus() || d->openPopup())
        paintFocusRing(painter, rect());
}

void CComboPushButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down || event->key() == Qt::Key_F4)
        click();
    else
        CPushButton::keyPressEvent(event);
}

void CComboPushButton::hideEvent(QHideEvent *event)
{
    if (d->popup)
        d->popup->close();
    CPushButton::hideEvent(event);
}

} // namespace ZB
