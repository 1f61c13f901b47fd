#include "window/stepfield.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QFocusEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QRegularExpressionValidator>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <utility>

#include "window/ticketids.h"
#include "zb/clineedit.h"
#include "zb/csmallnormalbutton.h"
#include "zb/cuiresource.h"

namespace terminal {

namespace {

constexpr int bigStep = 10;
constexpr int wheelStep = 120;
constexpr int buttonWidth = 26;
constexpr int buttonGap = 3;

int scaleOf(Qt::KeyboardModifiers modifiers)
{
    return modifiers.testFlag(Qt::ShiftModifier) ? bigStep : 1;
}

/// 0 for a key that does not step.
int stepsOf(const QKeyEvent &event)
{
    switch (event.key()) {
    case Qt::Key_Up:
        return scaleOf(event.modifiers());
    case Qt::Key_Down:
        return -scaleOf(event.modifiers());
    case Qt::Key_PageUp:
        return bigStep;
    case Qt::Key_PageDown:
        return -bigStep;
    default:
        return 0;
    }
}

} // namespace

StepField::StepField(const QString &name, const QString &pattern, QWidget *parent)
    : QWidget(parent), field(new ZB::CLineEdit(TicketStep, this)), less(nullptr), more(nullptr)
{
    less = addButton(QStringLiteral("−"), QStringLiteral("减小") + name, -1);
    more = addButton(QStringLiteral("+"), QStringLiteral("增大") + name, 1);
    field->setAccessibleName(name);
    field->setTextFontKey(QStringLiteral("fnt_quote_list_volumn_price"));
    field->setAlignment(Qt::AlignHCenter);
    field->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), field));
    field->installEventFilter(this);
    setFocusProxy(field);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(field, &QLineEdit::textEdited, this, [this] {
        setFaulty(false);
        typed();
        Q_EMIT edited();
    });
}

StepField::~StepField() = default;

ZB::CSmallNormalButton *StepField::addButton(const QString &sign, const QString &name, int steps)
{
    auto *button = new ZB::CSmallNormalButton(TicketStep, true, ZB::NormalButtonRaised, this);
    button->setText(sign);
    button->setAccessibleName(name);
    button->setToolTip(
        name + QStringLiteral(" (%1 键，按住 Shift 十倍)").arg(steps > 0 ? QStringLiteral("↑") : QStringLiteral("↓")));
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoRepeat(true);
    connect(button, &QAbstractButton::clicked, this,
            [this, steps] { stepByUser(steps * scaleOf(QApplication::keyboardModifiers())); });
    return button;
}

QString StepField::text() const
{
    return field->text();
}

void StepField::setText(const QString &text)
{
    field->setText(text);
    setFaulty(false);
}

void StepField::setFaulty(bool faulty)
{
    field->setWarning(faulty);
}

QSize StepField::sizeHint() const
{
    return QSize(ZB::scaled(180), ZB::CUiResource::instance()->getSize(QStringLiteral("siz_operation_cell_height")));
}

QSize StepField::minimumSizeHint() const
{
    return QSize(2 * ZB::scaled(buttonWidth + buttonGap) + ZB::scaled(40), sizeHint().height());
}

void StepField::themeChanged()
{
    updateGeometry();
    place();
}

void StepField::stepByUser(int steps)
{
    step(steps);
    field->selectAll();
    Q_EMIT edited();
}

bool StepField::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != field)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress:
        return keyPressed(*static_cast<QKeyEvent *>(event));
    case QEvent::FocusIn:
        focusCame(static_cast<QFocusEvent *>(event)->reason());
        return false;
    case QEvent::MouseButtonRelease:
        if (std::exchange(selectsOnRelease, false) && !field->hasSelectedText())
            field->selectAll();
        return false;
    default:
        return false;
    }
}

/// Whoever comes to the number means another one, unless it was only a menu or another window that went away. A press
/// of the mouse would take the marks off again at once.
void StepField::focusCame(Qt::FocusReason reason)
{
    selectsOnRelease = reason == Qt::MouseFocusReason;
    if (!selectsOnRelease && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
        field->selectAll();
}

bool StepField::keyPressed(const QKeyEvent &key)
{
    if (const int steps = stepsOf(key)) {
        stepByUser(steps);
        return true;
    }
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isEnter)
        Q_EMIT entered();
    return isEnter;
}

void StepField::wheelEvent(QWheelEvent *event)
{
    if (!isEnabled())
        return;
    const QPoint turn = event->angleDelta();
    wheelRest += turn.y() != 0 ? turn.y() : turn.x(); // some systems turn the wheel sideways while Shift is down
    const int steps = wheelRest / wheelStep;
    wheelRest -= steps * wheelStep;
    if (steps != 0)
        stepByUser(steps * scaleOf(event->modifiers()));
    event->accept();
}

void StepField::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place();
}

void StepField::place()
{
    const int side = ZB::scaled(buttonWidth);
    const int inset = side + ZB::scaled(buttonGap);
    less->setGeometry(0, 0, side, height());
    more->setGeometry(width() - side, 0, side, height());
    field->setGeometry(inset, 0, std::max(0, width() - 2 * inset), height());
}

} // namespace terminal
