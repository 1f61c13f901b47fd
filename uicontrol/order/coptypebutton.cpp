#include "order/coptypebutton.h"

namespace KV {

namespace {

const QString longImage = QStringLiteral("kv_img_btn_red_small");
const QString shortImage = QStringLiteral("kv_img_btn_green_small");
const QString wordColor = QStringLiteral("clr_operation_direction_text");

} // namespace

COpTypeButton::COpTypeButton(int style, EOpParamWidgetID id, QWidget *parent)
    : ZB::CPushButton(longImage, style, parent), widgetId(id)
{
    setAccessibleDescription(showDirection() ? QStringLiteral("多空方向") : QStringLiteral("开仓或平仓"));
    setDirection(true);
}

COpTypeButton::~COpTypeButton() = default;

void COpTypeButton::setDirection(bool isLong)
{
    longFlag = isLong;
    setImageKey(isLong ? longImage : shortImage);
    if (showDirection())
        setText(isLong ? QStringLiteral("多") : QStringLiteral("空"));
    else
        setText(isLong ? QStringLiteral("开") : QStringLiteral("平"));
    setTextColorKey(wordColor, wordColor, wordColor, wordColor);
}

bool COpTypeButton::isLong() const
{
    return longFlag;
}

void COpTypeButton::switchDirection()
{
    setDirection(!longFlag);
}

bool COpTypeButton::showDirection() const
{
    switch (widgetId) {
    case OpParamFirstLegLong:
    case OpParamSecondLegLong:
    case OpParamThirdLegLong:
    case OpParamFourthLegLong:
        return true;
    default:
        return false;
    }
}

} // namespace KV
