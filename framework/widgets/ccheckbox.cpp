#include "zb/ccheckbox.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <algorithm>

#include "popups/checkmark.h"
#include "popups/popuplook.h"
#include "widgets/buttonpaint.h"
#include "zb/cuiresource.h"
#include "zb/ewidgetevent.h"

namespace ZB {

namespace {

constexpr int margin = 2;
constexpr int gap = 4;
constexpr int leastHeight = 20;
// Thousandths by which the fill of a checked box steps back.
constexpr int hoverShare = 180;
constexpr int pressedShare = 360;

} // namespace

CCheckBox::CCheckBox(int eventId, const QString &text, QWidget *parent)
    : CEventWidgetT<QAbstractButton>(parent), id(eventId)
{
    setText(text);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractButton::clicked, this,
            [this](bool isNowChecked) { deliverEvent(EventChecked, id, isNowChecked ? 1 : 0, QString(), nullptr); });
    CCheckBox::themeChanged();
}

CCheckBox::~CCheckBox() = default;

int CCheckBox::eventId() const
{
    return id;
}

QSize CCheckBox::sizeHint() const
{
    const int words = text().isEmpty() ? 0 : scaled(gap) + fontMetrics().horizontalAdvance(text());
    return QSize(2 * scaled(margin) + checkMarkSize() + words, scaled(leastHeight));
}

QSize CCheckBox::minimumSizeHint() const
{
    return sizeHint();
}

void CCheckBox::themeChanged()
{
    setFont(*CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal")));
    updateGeometry();
    update();
}

bool CCheckBox::event(QEvent *event)
{
    if (changesState(*event))
        update();
    return CEventWidgetT<QAbstractButton>::event(event);
}

void CCheckBox::paintEvent(QPaintEvent *)
{
    PopupLook look = PopupLook::fromResources();
    const ButtonState state = stateOf(*this);
    if (state == StateHover || state == StatePressed) {
        look.border = look.dimText = look.accent;
        look.accent = mixed(look.accent, look.background, state == StatePressed ? pressedShare : hoverShare);
        look.background = state == StatePressed ? look.pressed : look.hover;
    }
    QPainter painter(this);
    // In a box that is a little too narrow the text stays whole, and the gaps give.
    const int side = checkMarkSize();
    const int spare = width() - side - fontMetrics().horizontalAdvance(text());
    const int left = std::clamp(spare / 4, 0, scaled(margin));
    const int between = std::clamp(spare - 2 * left, scaled(1), scaled(gap));
    const QRect square(left, (height() - side) / 2, side, side);
    paintCheckMark(painter, square, isChecked() ? Qt::Checked : Qt::Unchecked, isEnabled(), look);
    painter.setFont(font());
    painter.setPen(*CUiResource::instance()->getColor(isEnabled() ? QStringLiteral("clr_text_default")
                                                                  : QStringLiteral("clr_text_disabled")));
    const QRect place = rect().adjusted(left + side + between, 0, 0, 0);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
    if (hasFocus())
        paintFocusRing(painter, rect());
}

void CCheckBox::keyPressEvent(QKeyEvent *event)
{
    if (!clickedByEnter(*this, *event))
        CEventWidgetT<QAbstractButton>::keyPressEvent(event);
}

} // namespace ZB
