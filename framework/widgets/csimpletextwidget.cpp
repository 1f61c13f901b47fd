#include "zb/csimpletextwidget.h"

#include <QtCore/QEvent>
#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>
#include <cmath>

#include "zb/cuiresource.h"

namespace ZB {

class CSimpleTextWidget::Private
{
public:
    const QFont &font() const { return *CUiResource::instance()->getFont(fontKey); }
    /// Rounded up: a text in the width that it is said to need must not be cut off for a fraction of a pixel.
    int width() const { return static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(text))); }

    QString text;
    QString colorKey = QStringLiteral("clr_text_second");
    QString fontKey = QStringLiteral("fnt_default_normal");
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

CSimpleTextWidget::CSimpleTextWidget(const QString &text, QWidget *parent)
    : CBaseWidget(parent), d(std::make_unique<Private>())
{
    d->text = text;
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

CSimpleTextWidget::~CSimpleTextWidget() = default;

void CSimpleTextWidget::setText(const QString &text)
{
    if (d->text == text)
        return;
    const int before = d->width();
    d->text = text;
    if (d->width() != before)
        updateGeometry();
    update();
}

QString CSimpleTextWidget::text() const
{
    return d->text;
}

void CSimpleTextWidget::setTextColorKey(const QString &key)
{
    if (d->colorKey == key)
        return;
    d->colorKey = key;
    update();
}

void CSimpleTextWidget::setTextFontKey(const QString &key)
{
    d->fontKey = key;
    updateGeometry();
    update();
}

void CSimpleTextWidget::setAlignment(Qt::Alignment alignment)
{
    d->alignment = alignment;
    update();
}

QSize CSimpleTextWidget::sizeHint() const
{
    return QSize(d->width(), QFontMetrics(d->font()).height());
}

QSize CSimpleTextWidget::minimumSizeHint() const
{
    return QSize(0, sizeHint().height());
}

bool CSimpleTextWidget::event(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        update();
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), d->width() > width() ? d->text : QString(),
                           this);
        return true;
    }
    return CBaseWidget::event(event);
}

void CSimpleTextWidget::paintEvent(QPaintEvent *event)
{
    CBaseWidget::paintEvent(event);
    QPainter painter(this);
    painter.setFont(d->font());
    painter.setPen(*CUiResource::instance()->getColor(isEnabled() ? d->colorKey : QStringLiteral("clr_text_disabled")));
    painter.drawText(rect(), static_cast<int>(d->alignment),
                     painter.fontMetrics().elidedText(d->text, Qt::ElideRight, width()));
}

} // namespace ZB
