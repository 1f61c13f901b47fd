#include "kv/cstockcodelineedit.h"

#include <QtGui/QFocusEvent>
#include <QtGui/QPainter>
#include <algorithm>

#include "codes/codeindexsource.h"
#include "codes/cstockcodelineedit_p.h"
#include "kv/instrumentlookup.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int allTraders = 15990783;
constexpr int longestEntry = 32;
constexpr int sideMargin = 6;
constexpr int cornerRadius = 3;
constexpr int oneLineHeight = 28;
constexpr int usualWidth = 220;
constexpr int leastWidth = 96;
constexpr int editTextMargin = 2; ///< of QLineEdit, at every scale

QColor resourceColor(const char *key)
{
    return *ZB::CUiResource::instance()->getColor(QLatin1String(key));
}

const QFont &nameFont()
{
    return *ZB::CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal"));
}

} // namespace

CodeFieldLayout CodeFieldLayout::fit(const QSize &size, bool mayStack, int border, int codeHeight, int nameHeight)
{
    const int margin = border + ZB::scaled(sideMargin);
    const QRect inside = QRect(QPoint(0, 0), size).adjusted(margin, border, -margin, -border);
    CodeFieldLayout layout;
    const int both = codeHeight + nameHeight;
    if (mayStack && inside.height() >= both) {
        const int top = inside.top() + (inside.height() - both) / 2;
        layout.edit = QRect(inside.left(), top, inside.width(), codeHeight);
        layout.name =
            QRect(inside.left() + editTextMargin, top + codeHeight, inside.width() - editTextMargin, nameHeight);
        return layout;
    }
    const int half = inside.width() / 2;
    layout.edit = QRect(inside.left(), inside.top(), inside.width() - half, inside.height());
    layout.name = QRect(layout.edit.right() + 1, inside.top(), half, inside.height());
    return layout;
}

CStockCodeLineEdit::Private::Private(CStockCodeLineEdit *field, int eventId, int style, bool opens)
    : q(field), id(eventId), mayStack(style == 1), opensOnFocus(opens), edit(new ZB::CLineEdit(eventId, field)),
      tradeType(static_cast<kdservice::EVxTraderType>(allTraders))
{
    edit->setBorderWidth(0);
    edit->setMaxLength(longestEntry);
    edit->setEmptyHintText(QStringLiteral("代码/名称/首字母"));
    if (mayStack)
        edit->setTextFontKey(QStringLiteral("fnt_quote_stockname"));
    edit->installEventFilter(field);
    filter.traderTypes = tradeType;
    search.setFilter(filter);
}

CStockCodeLineEdit::CStockCodeLineEdit(int eventId, int style, QWidget *parent, bool opensOnFocus)
    : ZB::CBaseWidget(parent, QStringLiteral("stock_code_line_edit")),
      d(std::make_unique<Private>(this, eventId, style, opensOnFocus))
{
    setFocusProxy(d->edit);
    setCursor(Qt::IBeamCursor);
    connect(d->edit, &QLineEdit::textEdited, this, [this](const QString &text) { d->edited(text); });
    ZB::CodeIndexSource *source = ZB::CodeIndexSource::instance();
    connect(source, &ZB::CodeIndexSource::sigIndexChanged, this, [this] {
        d->setCode(d->code);
        if (d->isOpen())
            d->find(d->search.text());
    });
    source->refresh();
}

CStockCodeLineEdit::~CStockCodeLineEdit() = default;

int CStockCodeLineEdit::eventId() const
{
    return d->id;
}

void CStockCodeLineEdit::setStockCode(const QString &code, bool notify)
{
    const bool isOther = d->code != code;
    d->setCode(code);
    d->cancel();
    if (notify && isOther)
        deliverEvent(eventCodeChosen, d->id, 0, code, nullptr);
}

QString CStockCodeLineEdit::getStockCode() const
{
    return d->code;
}

void CStockCodeLineEdit::clearCode()
{
    setStockCode(QString(), false);
}

void CStockCodeLineEdit::setTradeType(kdservice::EVxTraderType type)
{
    d->tradeType = type;
    d->filter.traderTypes = type;
    d->applyFilter();
}

kdservice::EVxTraderType CStockCodeLineEdit::getTradeType() const
{
    return d->tradeType;
}

void CStockCodeLineEdit::setOperationType(kdservice::EOperationType type)
{
    d->filter.isTradedOnly = type != kdservice::OperationNone;
    d->applyFilter();
}

void CStockCodeLineEdit::setFlag(EFilterFlag flags)
{
    d->filter.kinds = flags;
    d->applyFilter();
}

void CStockCodeLineEdit::setWhiteList(const QMap<QString, QSet<QString>> &codes, bool clearOthers)
{
    d->filter.hasWhiteList = true;
    d->filter.whiteList = codes;
    d->applyFilter();
    if (clearOthers && !d->code.isEmpty() && !ZB::isOnWhiteList(codes, d->code))
        setStockCode(QString(), true);
}

void CStockCodeLineEdit::setEnableAll()
{
    d->filter.hasWhiteList = false;
    d->filter.whiteList.clear();
    d->filter.kinds = FilterAll;
    d->applyFilter();
}

void CStockCodeLineEdit::setCompletionSuppressed(bool suppressed)
{
    d->isSuppressed = suppressed;
    if (suppressed)
        d->closeList();
}

void CStockCodeLineEdit::relayoutList()
{
    if (d->isOpen())
        d->openList();
}

void CStockCodeLineEdit::setWarning(bool on)
{
    if (d->isFaulty == on)
        return;
    d->isFaulty = on;
    update();
}

void CStockCodeLineEdit::setBorderWidth(int pixels)
{
    if (d->border == pixels || pixels < 0)
        return;
    d->border = pixels;
    themeChanged();
}

void CStockCodeLineEdit::setTextFontKey(const QString &key)
{
    d->edit->setTextFontKey(key);
    themeChanged();
}

ZB::CLineEdit *CStockCodeLineEdit::getLineEdit() const
{
    return d->edit;
}

QSize CStockCodeLineEdit::sizeHint() const
{
    return {ZB::scaled(usualWidth), std::max(ZB::scaled(oneLineHeight), d->edit->fontMetrics().height() + 2)};
}

QSize CStockCodeLineEdit::minimumSizeHint() const
{
    return {ZB::scaled(leastWidth), sizeHint().height()};
}

/// The field inside may hear of the theme after this one, and its font decides where things are.
void CStockCodeLineEdit::themeChanged()
{
    d->edit->themeChanged();
    if (d->popup != nullptr)
        d->popup->themeChanged();
    updateGeometry();
    resizeEvent(nullptr);
    update();
}

void CStockCodeLineEdit::resizeEvent(QResizeEvent *)
{
    const CodeFieldLayout layout = CodeFieldLayout::fit(size(), d->mayStack, d->border, d->edit->fontMetrics().height(),
                                                        QFontMetrics(nameFont()).height());
    d->edit->setGeometry(layout.edit);
    update();
}

void CStockCodeLineEdit::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool hasFocus = d->edit->hasFocus();
    const bool isWrong = d->isWarning || d->isFaulty;
    const char *lineKey = !isEnabled()   ? "clr_line"
                          : isWrong      ? "clr_text_error"
                          : hasFocus     ? "clr_accent"
                          : underMouse() ? "clr_text_disabled"
                                         : "clr_border";
    painter.setPen(d->border == 0 ? QPen(Qt::NoPen) : QPen(resourceColor(lineKey), d->border));
    painter.setBrush(resourceColor(isEnabled() ? "clr_lineedit_background" : "clr_background_raised"));
    const double inset = d->border / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), ZB::scaled(cornerRadius),
                            ZB::scaled(cornerRadius));

    const CodeFieldLayout layout = CodeFieldLayout::fit(size(), d->mayStack, d->border, d->edit->fontMetrics().height(),
                                                        QFontMetrics(nameFont()).height());
    const bool isBeside = layout.name.top() < layout.edit.bottom();
    painter.setFont(nameFont());
    painter.setPen(resourceColor(!isEnabled()   ? "clr_text_disabled"
                                 : d->isWarning ? "clr_text_error"
                                                : "clr_text_second"));
    painter.drawText(layout.name, Qt::AlignVCenter | (isBeside ? Qt::AlignRight : Qt::AlignLeft),
                     painter.fontMetrics().elidedText(d->sideText(), Qt::ElideRight, layout.name.width()));
}

} // namespace KV
