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
    if (idCell)
        idCell->setFixedHeight(maximumHeight());
    if (!checkBox)
        return;
    checkBox->setFixedWidth(ZB::scaled(checkBoxWidth));
    checkBox->resize(checkBox->width(), checkBox->sizeHint().height());
}

void CCompactSelectWidget::setCompactId(const QString &id)
{
    if (idCell)
        idCell->setString(id);
}

QString CCompactSelectWidget::getCompactId() const
{
    return idCell ? idCell->toString() : QString();
}

void CCompactSelectWidget::setCommand(const QString &text)
{
    const bool isFree = text.isEmpty();
    setCompactId(text);
    setEnableEdit(isFree);
    setCheckStatus(!isFree);
    if (checkBox)
        checkBox->setEnabled(isFree);
}

void CCompactSelectWidget::setCheckStatus(bool checked)
{
    if (checkBox)
        checkBox->setChecked(checked);
}

bool CCompactSelectWidget::getCheckStatus() const
{
    return checkBox && checkBox->isChecked();
}

void CCompactSelectWidget::setEnableEdit(bool enabled)
{
    if (idCell)
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
    return QSize((idCell ? idCell->sizeHint().width() : 0) + besideCell(), maximumHeight());
}

QSize CCompactSelectWidget::minimumSizeHint() const
{
    return QSize((idCell ? idCell->minimumSizeHint().width() : 0) + besideCell(), maximumHeight());
}

bool CCompactSelectWidget::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event == eventChecked) {
        setEnableEdit(getCheckStatus());
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

int CCompactSelectWidget::besideCell() const
{
    return checkBox ? checkBox->width() + ZB::scaled(childGap) : 0;
}

void CCompactSelectWidget::placeChildren()
{
    if (checkBox)
        checkBox->move(width() - checkBox->width(), (height() - checkBox->height()) / 2);
    if (idCell)
        idCell->setFixedWidth(std::max(0, width() - besideCell()));
}

void CCompactSelectWidget::resizeEvent(QResizeEvent *event)
{
    placeChildren();
    ZB::CBaseWidget::resizeEvent(event);
}

} // namespace KV
