#include "order/ccompacttypeselectwidget.h"

#include "zb/ccombopushbutton.h"
#include "zb/csimpletextwidget.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int comboWidth = 130;

int cellSize(const char *key)
{
    return ZB::CUiResource::instance()->getSize(QLatin1String(key));
}

} // namespace

CCompactTypeSelectWidget::CCompactTypeSelectWidget(QWidget *parent) : ZB::CWidgetList(Qt::Horizontal, parent)
{
    createUi();
    setFocusPolicy(Qt::NoFocus);
}

CCompactTypeSelectWidget::~CCompactTypeSelectWidget() = default;

void CCompactTypeSelectWidget::createUi()
{
    setMargins(2, 0, 2, 0);
    caption = new ZB::CSimpleTextWidget(QStringLiteral("合约类型"), this);
    comboButton = new ZB::CComboPushButton(QStringLiteral("kv_img_combo_btn_small_nonormal"), 32, 10, 24, 3, 20, this);
    comboButton->setAdjustPopupWidth(true);
    const QString textColor = QStringLiteral("clr_btn_s_nonormal_0");
    comboButton->setTextColorKey(textColor, textColor, textColor, QStringLiteral("clr_maintoolbar_btn_disable"));
    comboButton->setAccessibleName(caption->text());
    fixSizes();
    addFixedWidget(caption, ZB::AnchorCentre);
    addFixedWidget(comboButton, ZB::AnchorCentre);
}

void CCompactTypeSelectWidget::fixSizes()
{
    resize(cellSize("siz_operation_cell_width"), cellSize("siz_operation_cell_height"));
    if (caption)
        caption->resize(caption->sizeHint());
    if (comboButton)
        comboButton->setFixedSize(ZB::scaled(comboWidth), cellSize("siz_operation_cell_height"));
}

kdservice::EVXCompactBrushSource CCompactTypeSelectWidget::getCompactBrushSourceType() const
{
    return comboButton ? static_cast<kdservice::EVXCompactBrushSource>(comboButton->currentIndex())
                       : kdservice::CompactSourceNone;
}

void CCompactTypeSelectWidget::setCompactBrushSourceType(kdservice::EVXCompactBrushSource source)
{
    if (comboButton && source != kdservice::CompactSourceNone)
        comboButton->setCurrentItem(source);
}

void CCompactTypeSelectWidget::setOpType(kdservice::EOperationType) {}

ZB::CComboPushButton *CCompactTypeSelectWidget::getComboButton() const
{
    return comboButton;
}

void CCompactTypeSelectWidget::scaleChanged()
{
    fixSizes();
    updateWidgetLengths();
    ZB::CWidgetList::scaleChanged();
}

} // namespace KV
