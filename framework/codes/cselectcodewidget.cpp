#include "kv/cselectcodewidget.h"

#include <QtGui/QFontMetrics>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <algorithm>

#include "kv/cstockcodelineedit.h"
#include "kv/instrumentlookup.h"
#include "zb/clineedit.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int eventCodeChosen = 1082;
constexpr int eventCodeFocus = 245;
constexpr int margin = 8;
constexpr int leastHeight = 50;
constexpr int roomBetween = 15;
constexpr int editHeight = 28;
constexpr int usualWidth = 200;

const QFont &nameFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_quote_stockname"));
}

const QFont &codeFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal"));
}

const QColor &color(const char *key)
{
    return *ZB::CUiResource::instance()->getColor(QLatin1String(key));
}

} // namespace

class CSelectCodeWidget::Private
{
public:
    explicit Private(CSelectCodeWidget *widget) : edit(new CStockCodeLineEdit(0, 0, widget, false)) {}

    CStockCodeLineEdit *edit;
    QString code;
    QString name;
    bool editing = false;
    bool suppressed = false;
    bool drawTop = true;
    kdservice::EVxTraderType tradeType = kdservice::TraderStock;
    quint64 tradeOpType = 0;
};

CSelectCodeWidget::CSelectCodeWidget(QWidget *parent)
    : CBaseWidget(parent, QStringLiteral("select_code_widget")), d(std::make_unique<Private>(this))
{
    d->edit->hide();
    setFocusProxy(d->edit);
    setCursor(Qt::IBeamCursor);
}

CSelectCodeWidget::~CSelectCodeWidget() = default;

QString CSelectCodeWidget::getStockCode() const
{
    return d->code;
}

void CSelectCodeWidget::setStockCode(const QString &code)
{
    d->code = code;
    d->name = code.isEmpty() ? QString() : getInstrumentText(code.toStdString()).name;
    d->edit->setStockCode(code, false);
    update();
}

CStockCodeLineEdit *CSelectCodeWidget::getStockCodeLineEdit() const
{
    return d->edit;
}

void CSelectCodeWidget::setEditing(bool editing)
{
    if (d->editing == editing)
        return;
    d->editing = editing;
    d->edit->setVisible(editing);
    update();
}

bool CSelectCodeWidget::isEditing() const
{
    return d->editing;
}

void CSelectCodeWidget::setCompletionSuppressed(bool suppressed)
{
    d->suppressed = suppressed;
    d->edit->setCompletionSuppressed(suppressed);
}

bool CSelectCodeWidget::isCompletionSuppressed() const
{
    return d->suppressed;
}

void CSelectCodeWidget::setDrawTop(bool drawTop)
{
    d->drawTop = drawTop;
    update();
}

bool CSelectCodeWidget::isDrawTop() const
{
    return d->drawTop;
}

void CSelectCodeWidget::setTradeType(kdservice::EVxTraderType type)
{
    d->tradeType = type;
}

kdservice::EVxTraderType CSelectCodeWidget::getTradeType() const
{
    return d->tradeType;
}

void CSelectCodeWidget::setTradeOpType(quint64 type)
{
    d->tradeOpType = type;
}

quint64 CSelectCodeWidget::getTradeOpType() const
{
    return d->tradeOpType;
}

int CSelectCodeWidget::preferredHeight() const
{
    const int texts = QFontMetrics(nameFont()).height() + ZB::scaled(roomBetween) + QFontMetrics(codeFont()).height();
    return std::max(texts, ZB::scaled(leastHeight));
}

QSize CSelectCodeWidget::sizeHint() const
{
    return {ZB::scaled(usualWidth), preferredHeight()};
}

void CSelectCodeWidget::relayoutPopup()
{
    const int height = std::min(ZB::scaled(editHeight), this->height());
    d->edit->setGeometry(ZB::scaled(margin), (this->height() - height) / 2, width() - 2 * ZB::scaled(margin), height);
    d->edit->relayoutList();
}

void CSelectCodeWidget::startEditing()
{
    setEditing(true);
    d->edit->setFocus(Qt::OtherFocusReason);
    d->edit->getLineEdit()->selectAll();
    relayoutPopup();
}

void CSelectCodeWidget::scaleChanged()
{
    CBaseWidget::scaleChanged();
    relayoutPopup();
}

/// The texts come back when a code is chosen, and when the keyboard goes elsewhere.
bool CSelectCodeWidget::handleEvent(int event, int first, int second, QString text, void *pointer)
{
    if (event == eventCodeChosen) {
        setStockCode(text);
        setEditing(false);
    } else if (event == eventCodeFocus && second == 0) {
        setEditing(false);
    }
    return CBaseWidget::handleEvent(event, first, second, text, pointer);
}

void CSelectCodeWidget::resizeEvent(QResizeEvent *event)
{
    CBaseWidget::resizeEvent(event);
    relayoutPopup();
}

void CSelectCodeWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        startEditing();
}

void CSelectCodeWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), color("clr_bidoffer_price_background"));
    painter.setPen(color("clr_quote_border_line"));
    painter.drawLine(0, 0, 0, height() - 1);
    painter.drawLine(width() - 1, 0, width() - 1, height() - 1);
    if (d->drawTop)
        painter.drawLine(0, 0, width() - 1, 0);
    if (d->editing)
        return;
    const int nameHeight = QFontMetrics(nameFont()).height();
    const int codeHeight = QFontMetrics(codeFont()).height();
    const int gap = ZB::scaled(1);
    const int top = (height() - nameHeight - gap - codeHeight) / 2;
    const int textWidth = width() - 2 * ZB::scaled(margin);
    const QString first = d->code.isEmpty() ? QStringLiteral("选择证券") : d->name.isEmpty() ? d->code : d->name;
    const QString second = d->name.isEmpty() ? QString() : d->code;
    painter.setFont(nameFont());
    painter.setPen(color(isEnabled() && !d->code.isEmpty() ? "clr_text_default" : "clr_text_second"));
    painter.drawText(QRect(ZB::scaled(margin), top, textWidth, nameHeight), Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(first, Qt::ElideRight, textWidth));
    painter.setFont(codeFont());
    painter.setPen(color("clr_text_second"));
    painter.drawText(QRect(ZB::scaled(margin), top + nameHeight + gap, textWidth, codeHeight),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(second, Qt::ElideRight, textWidth));
}

} // namespace KV
