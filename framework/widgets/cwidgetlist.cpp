#include "zb/cwidgetlist.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <algorithm>

#include "widgets/widgetlistlayout.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

struct Entry
{
    QPointer<QWidget> widget; ///< null for a space, and for a widget that was deleted
    bool isSpace = false;
    int stretch = 0;
    int space = 0; ///< length of a fixed space at 100 %
    QSize size;    ///< of a fixed widget whose size is set but not fixed; invalid: its hint counts
    EWidgetAnchor anchor = AnchorFill;
    bool keepsRoom = false;
};

int along(Qt::Orientation orientation, const QSize &size)
{
    return orientation == Qt::Horizontal ? size.width() : size.height();
}

/// What a widget needs at least: the minimum that is set, else that of its own hint.
QSize least(const QWidget &widget)
{
    const QSize hint = widget.minimumSizeHint().boundedTo(widget.maximumSize());
    const QSize set = widget.minimumSize();
    return {set.width() > 0 ? set.width() : std::max(hint.width(), 0),
            set.height() > 0 ? set.height() : std::max(hint.height(), 0)};
}

QSize wanted(const QWidget &widget)
{
    return widget.sizeHint().expandedTo(least(widget)).boundedTo(widget.maximumSize());
}

EWidgetAnchor anchorOf(int anchor)
{
    return anchor >= AnchorStart && anchor <= AnchorFill ? static_cast<EWidgetAnchor>(anchor) : AnchorFill;
}

QSize sizeOf(const Entry &entry, bool smallest)
{
    if (entry.stretch > 0)
        return smallest ? least(*entry.widget) : wanted(*entry.widget);
    const QSize own = entry.size.isValid() ? entry.size : wanted(*entry.widget);
    return own.expandedTo(entry.widget->minimumSize()).boundedTo(entry.widget->maximumSize());
}

Entry fixedEntry(QWidget *widget, int anchor, bool keepsRoom)
{
    const QSize size = widget && widget->testAttribute(Qt::WA_Resized) ? widget->size() : QSize();
    return {widget, false, 0, 0, size, anchorOf(anchor), keepsRoom};
}

bool takesRoom(const Entry &entry)
{
    return entry.isSpace || (entry.widget && (entry.keepsRoom || !entry.widget->isHidden()));
}

} // namespace

class CWidgetList::Private
{
public:
    Private(CWidgetList &list, Qt::Orientation direction) : q(list), orientation(direction) {}

    void add(const Entry &entry, bool inFront = false);
    /// The layout of what takes room now, with least or with wanted lengths for the stretching widgets.
    WidgetListLayout layout(bool smallest) const;
    void placeWidgets();

    CWidgetList &q;
    const Qt::Orientation orientation;
    QMargins margins;
    int spacing = 0;
    std::vector<Entry> entries;
};

void CWidgetList::Private::add(const Entry &entry, bool inFront)
{
    if (!entry.isSpace && !entry.widget)
        return;
    if (entry.widget && entry.widget->parentWidget() != &q)
        entry.widget->setParent(&q);
    entries.insert(inFront ? entries.begin() : entries.end(), entry);
    q.updateGeometry();
    placeWidgets();
}

WidgetListLayout CWidgetList::Private::layout(bool smallest) const
{
    WidgetListLayout result;
    result.orientation = orientation;
    result.margins = {scaled(margins.left()), scaled(margins.top()), scaled(margins.right()), scaled(margins.bottom())};
    result.spacing = scaled(spacing);
    const Qt::Orientation across = orientation == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal;
    for (const Entry &entry : entries) {
        if (!takesRoom(entry))
            continue;
        WidgetListItem item;
        item.stretch = entry.stretch;
        item.anchor = entry.anchor;
        item.isSpace = entry.isSpace;
        if (entry.isSpace) {
            item.length = scaled(entry.space);
        } else {
            const QSize size = sizeOf(entry, smallest);
            item.length = along(orientation, size);
            item.depth = along(across, size);
        }
        result.items.push_back(item);
    }
    return result;
}

void CWidgetList::Private::placeWidgets()
{
    const std::vector<QRect> rects = layout(true).place(q.size());
    auto rect = rects.begin();
    for (const Entry &entry : entries) {
        if (!takesRoom(entry))
            continue;
        if (entry.widget)
            entry.widget->setGeometry(*rect);
        ++rect;
    }
}

CWidgetList::CWidgetList(Qt::Orientation orientation, QWidget *parent, const QString &objectName)
    : CBaseWidget(parent, objectName), d(std::make_unique<Private>(*this, orientation))
{
}

CWidgetList::~CWidgetList() = default;

Qt::Orientation CWidgetList::orientation() const
{
    return d->orientation;
}

void CWidgetList::setMargins(int left, int top, int right, int bottom)
{
    d->margins = {left, top, right, bottom};
    updateGeometry();
    d->placeWidgets();
}

void CWidgetList::setSpacing(int spacing)
{
    d->spacing = spacing;
    updateGeometry();
    d->placeWidgets();
}

void CWidgetList::addStretchWidget(QWidget *widget, int stretch, int anchor, bool keepsRoom)
{
    d->add({widget, false, std::max(stretch, 1), 0, QSize(), anchorOf(anchor), keepsRoom});
}

void CWidgetList::addFixedWidget(QWidget *widget, int anchor, bool keepsRoom)
{
    d->add(fixedEntry(widget, anchor, keepsRoom));
}

void CWidgetList::addFixedWidgetInFront(QWidget *widget, int anchor, bool keepsRoom)
{
    d->add(fixedEntry(widget, anchor, keepsRoom), true);
}

void CWidgetList::removeWidget(QWidget *widget)
{
    const auto last = std::remove_if(d->entries.begin(), d->entries.end(),
                                     [widget](const Entry &entry) { return !entry.isSpace && entry.widget == widget; });
    if (last == d->entries.end())
        return;
    d->entries.erase(last, d->entries.end());
    widget->hide();
    updateGeometry();
    d->placeWidgets();
}

void CWidgetList::addFixedSpace(int length)
{
    d->add({nullptr, true, 0, length, QSize(), AnchorFill, true});
}

void CWidgetList::addStretchSpace(int stretch)
{
    d->add({nullptr, true, std::max(stretch, 1), 0, QSize(), AnchorFill, true});
}

void CWidgetList::updateWidgetLengths()
{
    for (Entry &entry : d->entries)
        entry.size = QSize();
    updateGeometry();
    d->placeWidgets();
}

void CWidgetList::setFixFont()
{
    setFont(*CUiResource::instance()->getFont(QStringLiteral("fnt_default_normal")));
    for (const Entry &entry : d->entries)
        if (auto *list = qobject_cast<CWidgetList *>(entry.widget.data()))
            list->setFixFont();
    updateGeometry();
    d->placeWidgets();
}

QSize CWidgetList::sizeHint() const
{
    return d->layout(false).needed();
}

QSize CWidgetList::minimumSizeHint() const
{
    return d->layout(true).needed();
}

void CWidgetList::scaleChanged()
{
    d->placeWidgets();
    CBaseWidget::scaleChanged();
}

bool CWidgetList::event(QEvent *event)
{
    if (event->type() == QEvent::LayoutRequest) { // a child has appeared, gone, or wants another size
        updateGeometry();
        d->placeWidgets();
    }
    return CBaseWidget::event(event);
}

void CWidgetList::resizeEvent(QResizeEvent *event)
{
    CBaseWidget::resizeEvent(event);
    d->placeWidgets();
}

} // namespace ZB
