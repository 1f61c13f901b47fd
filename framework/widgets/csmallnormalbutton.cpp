#include "zb/csmallnormalbutton.h"

#include <QtGui/QPainter>

#include "widgets/buttonpaint.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int sideMargin = 8;
constexpr int smallHeight = 20;

/// Theme keys of a type, by state.
struct TypeKeys
{
    const char *ground[ButtonStates];
    const char *border;
    const char *text;
};

const TypeKeys &keysOf(ENormalButtonType type)
{
    static const TypeKeys plain = {
        {"clr_background", "clr_background_hover", "clr_background_pressed", "clr_background"},
        "clr_border",
        "clr_btn_text_color"};
    static const TypeKeys raised = {
        {"clr_btn_background_color", "clr_background_hover", "clr_background_pressed", "clr_btn_background_color"},
        "clr_border",
        "clr_btn_text_color"};
    static const TypeKeys accent = {
        {"clr_accent_fill", "clr_accent_fill_hover", "clr_accent_fill_press", "clr_btn_background_color"},
        nullptr,
        "clr_text_on_fill"};
    static const TypeKeys rise = {
        {"clr_global_rise_fill", "clr_rise_fill_hover", "clr_rise_fill_press", "clr_btn_background_color"},
        nullptr,
        "clr_text_on_fill"};
    static const TypeKeys fall = {
        {"clr_global_fall_fill", "clr_fall_fill_hover", "clr_fall_fill_press", "clr_btn_background_color"},
        nullptr,
        "clr_text_on_fill"};
    switch (type) {
    case NormalButtonRaised:
        return raised;
    case NormalButtonAccent:
        return accent;
    case NormalButtonRise:
        return rise;
    case NormalButtonFall:
        return fall;
    default:
        return plain;
    }
}

} // namespace

class CSmallNormalButton::Private
{
public:
    void look();

    ENormalButtonType type = NormalButtonPlain;
    bool framed = false;
    QColor ground[ButtonStates];
    QColor border;
    QColor disabledBorder;
    QColor text;
    QColor disabledText;
};

void CSmallNormalButton::Private::look()
{
    CUiResource *resource = CUiResource::instance();
    const auto color = [resource](const char *key) { return *resource->getColor(QLatin1String(key)); };
    const TypeKeys &keys = keysOf(type);
    for (int state = 0; state < ButtonStates; ++state)
        ground[state] = color(keys.ground[state]);
    border = framed && keys.border ? color(keys.border) : QColor();
    disabledBorder = framed ? color("clr_line") : QColor();
    text = color(keys.text);
    disabledText = color("clr_text_disabled");
}

CSmallNormalButton::CSmallNormalButton(int eventId, bool framed, ENormalButtonType type, QWidget *parent)
    : CPushButton(QString(), eventId, parent), d(std::make_unique<Private>())
{
    d->type = type;
    d->framed = framed;
    d->look();
}

CSmallNormalButton::~CSmallNormalButton() = default;

void CSmallNormalButton::setButtonType(ENormalButtonType type)
{
    if (d->type == type)
        return;
    d->type = type;
    themeChanged();
}

ENormalButtonType CSmallNormalButton::buttonType() const
{
    return d->type;
}

QSize CSmallNormalButton::sizeHint() const
{
    return QSize(fontMetrics().horizontalAdvance(text()) + 2 * scaled(sideMargin), scaled(smallHeight));
}

void CSmallNormalButton::themeChanged()
{
    d->look();
    CPushButton::themeChanged();
}

void CSmallNormalButton::paintGround(QPainter &painter)
{
    const ButtonState state = stateOf(*this);
    paintButtonBox(painter, rect(), d->ground[state], state == StateDisabled ? d->disabledBorder : d->border);
}

QColor CSmallNormalButton::textColor() const
{
    return isEnabled() ? d->text : d->disabledText;
}

} // namespace ZB
