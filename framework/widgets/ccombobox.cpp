#include "zb/ccombobox.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QStyleOptionComboBox>

#include "widgets/buttonpaint.h"
#include "zb/cstylesheetcenter.h"
#include "zb/cuiresource.h"
#include "zb/ewidgetevent.h"

namespace ZB {

namespace {

constexpr int textMargin = 8;
constexpr int arrowWidth = 20;

} // namespace

CComboBox::CComboBox(int eventId, QWidget *parent) : CEventWidgetT<QComboBox>(parent), id(eventId)
{
    setFocusPolicy(Qt::StrongFocus);
    connect(this, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { deliverEvent(EventItemChosen, id, index, itemText(index), nullptr); });
    CComboBox::themeChanged();
}

CComboBox::~CComboBox() = default;

int CComboBox::eventId() const
{
    return id;
}

void CComboBox::setWarning(bool on)
{
    if (warning == on)
        return;
    warning = on;
    update();
}

void CComboBox::themeChanged()
{
    setStyleSheet(CStyleSheetCenter::getStyle(QStringLiteral("QComboBox")));
    setFont(*CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal")));
    updateGeometry();
    update();
}

QString CComboBox::shownText() const
{
    return currentText();
}

bool CComboBox::isHint() const
{
    return false;
}

/// Asking for the view instead would make one.
bool CComboBox::isOpen() const
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    return option.state.testFlag(QStyle::State_On);
}

void CComboBox::paintEvent(QPaintEvent *)
{
    const auto color = [](const char *key) { return *CUiResource::instance()->getColor(QLatin1String(key)); };
    const bool isPressed = isEnabled() && isOpen();
    const bool isHovered = isEnabled() && underMouse();
    const char *ground = isPressed   ? "clr_background_pressed"
                         : isHovered ? "clr_background_hover"
                                     : "clr_btn_background_color";
    const char *line = !isEnabled() ? "clr_line" : warning ? "clr_text_error" : "clr_border";
    QPainter painter(this);
    paintButtonBox(painter, rect(), color(ground), color(line));
    painter.setFont(font());
    const QColor text = color(!isEnabled() ? "clr_text_disabled"
                              : isHint()   ? "clr_text_second"
                                           : "clr_btn_s_nonormal_0");
    painter.setPen(text);
    const QRect place = rect().adjusted(scaled(textMargin), 0, -scaled(arrowWidth), 0);
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(shownText(), Qt::ElideRight, place.width()));
    paintDropArrow(painter, QRect(width() - scaled(arrowWidth), 0, scaled(arrowWidth), height()), text);
    if (hasFocus() || isPressed)
        paintFocusRing(painter, rect(), warning);
}

void CComboBox::keyPressEvent(QKeyEvent *event)
{
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Down;
    if (opens)
        showPopup();
    else
        CEventWidgetT<QComboBox>::keyPressEvent(event);
}

void CComboBox::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

} // namespace ZB
