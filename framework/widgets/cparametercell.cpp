#include "zb/cparametercell.h"

#include <algorithm>

#include "zb/clineedit.h"
#include "zb/csimpletextwidget.h"
#include "zb/cuiresource.h"
#include "zb/ewidgetevent.h"

namespace ZB {

namespace {

constexpr int labelMargin = 2;
constexpr int labelCharacters = 4; ///< names of up to so many leave the fields of a form in one line
constexpr int labelGap = 4;
constexpr int gap = 6;
constexpr int leastField = 40;

} // namespace

class CParameterCell::Private
{
public:
    explicit Private(CParameterCell &cell) : q(cell) {}

    /// Where the field begins.
    int fieldLeft() const;
    void place();

    CParameterCell &q;
    int id = 0;
    int labelHeight = 0; ///< at 100 %; 0: that of the cell
    CSimpleTextWidget *label = nullptr;
    CSimpleTextWidget *unit = nullptr;
    CLineEdit *field = nullptr;
};

int CParameterCell::Private::fieldLeft() const
{
    const QFontMetrics metrics(*CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal")));
    const int column = labelCharacters * metrics.horizontalAdvance(QStringLiteral("字"));
    return scaled(labelMargin) + std::max(column, label->sizeHint().width()) + scaled(labelGap);
}

void CParameterCell::Private::place()
{
    const int height = q.height();
    const int labelLine = labelHeight > 0 ? std::min(scaled(labelHeight), height) : height;
    const int unitWidth = unit->text().isEmpty() ? 0 : unit->sizeHint().width() + scaled(gap);
    const int left = fieldLeft();
    label->setGeometry(scaled(labelMargin), (height - labelLine) / 2, left - scaled(labelMargin) - scaled(labelGap),
                       labelLine);
    field->setGeometry(left, 0, std::max(0, q.width() - left - unitWidth), height);
    unit->setVisible(unitWidth > 0);
    unit->setGeometry(q.width() - unitWidth + scaled(gap), 0, std::max(0, unitWidth - scaled(gap)), height);
}

CParameterCell::CParameterCell(int eventId, const QString &labelName, const QString &unit, QWidget *parent)
    : CBaseWidget(parent), d(std::make_unique<Private>(*this))
{
    d->id = eventId;
    d->label = new CSimpleTextWidget(labelName, this);
    d->unit = new CSimpleTextWidget(unit, this);
    d->field = new CLineEdit(eventId, this);
    d->field->setAccessibleName(labelName);
    setFocusProxy(d->field);
    connect(d->field, &QLineEdit::textEdited, this,
            [this](const QString &text) { deliverEvent(EventParameterEdited, d->id, 0, text, nullptr); });
    d->place();
}

CParameterCell::~CParameterCell() = default;

int CParameterCell::eventId() const
{
    return d->id;
}

void CParameterCell::setLabelNameHeight(int height)
{
    d->labelHeight = height;
    d->place();
}

void CParameterCell::setString(const QString &text)
{
    d->field->setText(text);
}

QString CParameterCell::toString() const
{
    return d->field->text();
}

CLineEdit *CParameterCell::getLineEdit() const
{
    return d->field;
}

QSize CParameterCell::sizeHint() const
{
    const QSize field = d->field->sizeHint();
    return QSize(minimumSizeHint().width() - scaled(leastField) + field.width(),
                 std::max(field.height(), scaled(d->labelHeight)));
}

QSize CParameterCell::minimumSizeHint() const
{
    const int unitWidth = d->unit->text().isEmpty() ? 0 : d->unit->sizeHint().width() + scaled(gap);
    return QSize(d->fieldLeft() + scaled(leastField) + unitWidth, d->label->sizeHint().height());
}

void CParameterCell::themeChanged()
{
    CBaseWidget::themeChanged();
    d->place();
}

void CParameterCell::resizeEvent(QResizeEvent *event)
{
    CBaseWidget::resizeEvent(event);
    d->place();
}

} // namespace ZB
