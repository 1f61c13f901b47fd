#include "zb/cpushbutton.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>

#include "widgets/buttonpaint.h"
#include "zb/cuiresource.h"
#include "zb/ewidgetevent.h"

namespace ZB {

namespace {

constexpr int sideMargin = 10;
constexpr int plainHeight = 24;

} // namespace

class CPushButton::Private
{
public:
    int id = 0;
    QString imageKey;
    QString fontKey = QStringLiteral("fnt_default_normal");
    QString colorKeys[ButtonStates] = {QStringLiteral("clr_btn_text_color"), QStringLiteral("clr_btn_text_color"),
                                       QStringLiteral("clr_btn_text_color"), QStringLiteral("clr_text_disabled")};
};

CPushButton::CPushButton(const QString &imageKey, int eventId, QWidget *parent)
    : CEventWidgetT<QAbstractButton>(parent), d(std::make_unique<Private>())
{
    d->id = eventId;
    d->imageKey = imageKey;
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractButton::clicked, this, &CPushButton::slotClicked);
    CPushButton::themeChanged();
}

CPushButton::~CPushButton() = default;

int CPushButton::eventId() const
{
    return d->id;
}

void CPushButton::setImageKey(const QString &key)
{
    d->imageKey = key;
    update();
}

QString CPushButton::imageKey() const
{
    return d->imageKey;
}

void CPushButton::setTextColorKey(const QString &normal, const QString &hover, const QString &pressed,
                                  const QString &disabled)
{
    d->colorKeys[StateNormal] = normal;
    d->colorKeys[StateHover] = hover;
    d->colorKeys[StatePressed] = pressed;
    d->colorKeys[StateDisabled] = disabled;
    update();
}

void CPushButton::setTextFontKey(const QString &key)
{
    d->fontKey = key;
    themeChanged();
}

QSize CPushButton::sizeHint() const
{
    const QSize image = d->imageKey.isEmpty() ? QSize(0, scaled(plainHeight))
                                              : CUiResource::instance()->getPixmap(d->imageKey)->size() /
                                                    CUiResource::instance()->getPixmap(d->imageKey)->devicePixelRatio();
    return image.expandedTo(QSize(fontMetrics().horizontalAdvance(text()) + 2 * scaled(sideMargin), 0));
}

QSize CPushButton::minimumSizeHint() const
{
    return QSize(0, fontMetrics().height());
}

void CPushButton::themeChanged()
{
    setFont(*CUiResource::instance()->getFont(d->fontKey));
    updateGeometry();
    update();
}

void CPushButton::slotClicked(bool isChecked)
{
    deliverEvent(EventClicked, d->id, isChecked ? 1 : 0, QString(), nullptr);
}

void CPushButton::paintGround(QPainter &painter)
{
    if (!d->imageKey.isEmpty())
        paintStretched(painter, rect(), *CUiResource::instance()->getPixmap(d->imageKey + keyEnding(stateOf(*this))));
}

QColor CPushButton::textColor() const
{
    return *CUiResource::instance()->getColor(d->colorKeys[stateOf(*this)]);
}

QRect CPushButton::textRect() const
{
    return rect();
}

bool CPushButton::event(QEvent *event)
{
    if (changesState(*event))
        update();
    return CEventWidgetT<QAbstractButton>::event(event);
}

void CPushButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintGround(painter);
    painter.setFont(font());
    painter.setPen(textColor());
    const QRect place = textRect();
    painter.drawText(place, Qt::AlignCenter, fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
    if (hasFocus())
        paintFocusRing(painter, rect());
}

void CPushButton::keyPressEvent(QKeyEvent *event)
{
    if (!clickedByEnter(*this, *event))
        CEventWidgetT<QAbstractButton>::keyPressEvent(event);
}

} // namespace ZB
