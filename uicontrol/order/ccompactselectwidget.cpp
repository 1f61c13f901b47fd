#include "order/ccompactselectwidget.h"

#include <QtGui/QResizeEvent>
#include <algorithm>

#include "zb/ccheckbox.h"
#include "zb/cparametercell.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int eventChecked = 69;
constexpr int eventContractChanged = 70;
constexpr int eventParameterEdited = 119;
constexpr int checkBoxId = 1;
constexpr int checkBoxWidth = 40;
constexpr int childGap = 3;
constexpr int labelNameHeight = 24;

} // namespace

CCompactSelectWidget::CCompactSelectWidget(QWidget *parent)
    : ZB::CBaseWidget(parent, QStringLiteral("compact_select_widget"))
{
    createUi();
    setFocusPolicy(Qt::NoFocus);
}

CCompactSelectWidget::~CCompactSelectWidget() = default;

void CCompactSelectWidget::createUi()
{
    idCell = new ZB::CParameterCell(0, QStringLiteral("合约号"), QString(), this);
    idCell->setLabelNameHeight(labelNameHeight);
    idCell->setEnabled(false);
    checkBox = new ZB::CCheckBox(checkBoxId, QStringLiteral("指定"), this);
    fixSizes();
}

void CCompactSelectWidget::fixSizes()
{
    setFixedHeight(ZB::CUiResource::instance()->getSize(QStringLiteral("siz_operation_cell_height")));
    idCell->setFixedHeight(maximumHeight());
    checkBox->setFixedWidth(ZB::scaled(checkBoxWidth));
    checkBox->resize(checkBox->width(), checkBox->sizeHint().height());
}

void CCompactSelectWidget::setCompactId(const QString &id)
{
    idCell->setString(id);
}

QString CCompactSelectWidget::getCompactId() const
{
    return idCell->toString();
}

void CCompactSelectWidget::setCommand(const QString &text)
{
    const bool isFree = text.isEmpty();
    idCell->setString(text);
    idCell->setEnabled(isFree);
    checkBox->setChecked(!isFree);
    checkBox->setEnabled(isFree);
}

void CCompactSelectWidget::setCheckStatus(bool checked)
{
    checkBox->setChecked(checked);
}

bool CCompactSelectWidget::getCheckStatus() const
{
    return checkBox && checkBox->isChecked();
}

void CCompactSelectWidget::setEnableEdit(bool enabled)
{
    idCell->setEnabled(enabled);
}

bool CCompactSelectWidget::getEnableEdit() const
{
    return !idCell || idCell->isEnabledTo(this);
}

void CCompactSelectWidget::setOpenDate(const QString &date)
{
    openDate = date;
}

QString CCompactSelectWidget::getOpenDate() const
{
    return openDate;
}

void CCompactSelectWidget::setCompactDone(bool done)
{
    compactDone = done;
}

bool CCompactSelectWidget::isCompactDone() const
{
    return compactDone;
}

QSize CCompactSelectWidget::sizeHint() const
{
    return QSize(idCell->sizeHint().width() + ZB::scaled(childGap) + checkBox->width(), maximumHeight());
}

QSize CCompactSelectWidget::minimumSizeHint() const
{
    return QSize(idCell->minimumSizeHint().width() + ZB::scaled(childGap) + checkBox->width(), maximumHeight());
}

bool CCompactSelectWidget::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event == eventChecked) {
        idCell->setEnabled(getCheckStatus());
        return false;
    }
    if (event == eventParameterEdited) {
        deliverEvent(eventContractChanged, checkBoxId, getCheckStatus() ? 1 : 0, QString(), nullptr);
        return true;
    }
    return ZB::CBaseWidget::handleEvent(event, first, second, text, pointer);
}

void CCompactSelectWidget::scaleChanged()
{
    fixSizes();
    placeChildren();
    ZB::CBaseWidget::scaleChanged();
}

void CCompactSelectWidget::placeChildren()
{
    checkBox->move(width() - checkBox->width(), (height() - checkBox->height()) / 2);
    idCell->setFixedWidth(std::max(0, width() - checkBox->width() - ZB::scaled(childGap)));
}

void CCompactSelectWidget::resizeEvent(QResizeEvent *event)
{
    placeChildren();
    ZB::CBaseWidget::resizeEvent(event);
}

} // namespace KV
