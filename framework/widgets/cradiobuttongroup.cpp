#include "zb/cradiobuttongroup.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QButtonGroup>
#include <utility>

#include "widgets/radiosegment.h"
#include "zb/cuiresource.h"
#include "zb/ewidgetevent.h"

namespace ZB {

class CRadioButtonGroup::Private
{
public:
    RadioSegment *segment(int buttonId) const { return static_cast<RadioSegment *>(buttons->button(buttonId)); }
    void uncheck();
    /// The outer edges of the strip are those of its first and last button.
    void join();

    int id = 0;
    int spacing = 0;
    bool canUncheck = false;
    Qt::Orientation orientation = Qt::Horizontal;
    QButtonGroup *buttons = nullptr;
    QBoxLayout *layout = nullptr;
    QList<int> order;
    bool wasChecked = false; ///< whether the button under the finger was the checked one when it was pressed
};

/// An exclusive group does not let its last one go.
void CRadioButtonGroup::Private::uncheck()
{
    buttons->setExclusive(false);
    if (QAbstractButton *checked = buttons->checkedButton())
        checked->setChecked(false);
    buttons->setExclusive(true);
    for (QAbstractButton *button : buttons->buttons())
        button->setFocusPolicy(Qt::StrongFocus);
}

void CRadioButtonGroup::Private::join()
{
    const bool lying = orientation == Qt::Horizontal;
    const Qt::Edges sides = lying ? Qt::TopEdge | Qt::BottomEdge : Qt::LeftEdge | Qt::RightEdge;
    const Qt::Edge first = lying ? Qt::LeftEdge : Qt::TopEdge;
    const Qt::Edge last = lying ? Qt::RightEdge : Qt::BottomEdge;
    for (int button : order) {
        Qt::Edges ends = sides;
        ends.setFlag(first, spacing > 0 || button == order.first());
        ends.setFlag(last, spacing > 0 || button == order.last());
        segment(button)->setEnds(ends);
    }
}

CRadioButtonGroup::CRadioButtonGroup(QWidget *parent, int eventId, int spacing, bool canUncheck,
                                     Qt::Orientation orientation)
    : CBaseWidget(parent), d(std::make_unique<Private>())
{
    d->id = eventId;
    d->spacing = spacing;
    d->canUncheck = canUncheck;
    d->orientation = orientation;
    d->buttons = new QButtonGroup(this);
    d->layout = new QBoxLayout(orientation == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, this);
    d->layout->setContentsMargins(0, 0, 0, 0);
    d->layout->setSpacing(scaled(spacing));
    const auto pressed = QOverload<int>::of(&QButtonGroup::idPressed);
    connect(d->buttons, pressed, this, [this](int button) { d->wasChecked = checkedId() == button; });
    connect(d->buttons, &QButtonGroup::idClicked, this, [this](int button) {
        const bool letsGo = d->canUncheck && std::exchange(d->wasChecked, false);
        if (letsGo)
            d->uncheck();
        deliverEvent(EventRadioChosen, d->id, letsGo ? -1 : button, QString(), nullptr);
    });
}

CRadioButtonGroup::~CRadioButtonGroup() = default;

int CRadioButtonGroup::eventId() const
{
    return d->id;
}

void CRadioButtonGroup::addButton(const QString &text, int buttonId)
{
    if (buttonId < 0)
        return;
    if (RadioSegment *known = d->segment(buttonId)) {
        known->setText(text);
        return;
    }
    auto *segment = new RadioSegment(text, this);
    d->buttons->addButton(segment, buttonId);
    d->layout->addWidget(segment);
    d->order << buttonId;
    d->join();
    updateGeometry();
}

QList<int> CRadioButtonGroup::buttonIds() const
{
    return d->order;
}

QString CRadioButtonGroup::buttonText(int buttonId) const
{
    const RadioSegment *segment = d->segment(buttonId);
    return segment ? segment->text() : QString();
}

int CRadioButtonGroup::checkedId() const
{
    return d->buttons->checkedId();
}

void CRadioButtonGroup::setCheckedById(int buttonId)
{
    if (!d->segment(buttonId)) {
        d->uncheck();
        return;
    }
    d->segment(buttonId)->setChecked(true);
    for (int other : d->order) // Tab comes to the checked one
        d->segment(other)->setFocusPolicy(other == buttonId ? Qt::StrongFocus : Qt::ClickFocus);
}

void CRadioButtonGroup::themeChanged()
{
    d->layout->setSpacing(scaled(d->spacing));
    for (int button : d->order)
        d->segment(button)->applyTheme();
    CBaseWidget::themeChanged();
}

} // namespace ZB
