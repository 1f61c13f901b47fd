#include "accessibleevents.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QWidget>
#include <algorithm>
#include <utility>
#include <vector>

#ifdef HAS_PLATFORM_ACCESSIBILITY
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#endif

AccessibleEvents *AccessibleEvents::listener = nullptr;

namespace {

#ifdef HAS_PLATFORM_ACCESSIBILITY
void setHeard(bool heard)
{
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(heard);
}
#else
void setHeard(bool) {}
#endif

QString rowsText(const QAccessibleTableModelChangeEvent &event)
{
    using Change = QAccessibleTableModelChangeEvent;
    if (event.modelChangeType() == Change::ModelReset)
        return QStringLiteral("rows reset");
    const QString kind = event.modelChangeType() == Change::RowsInserted  ? QStringLiteral("inserted")
                         : event.modelChangeType() == Change::RowsRemoved ? QStringLiteral("removed")
                                                                          : QStringLiteral("changed");
    return QStringLiteral("rows %1 %2-%3").arg(kind).arg(event.firstRow()).arg(event.lastRow());
}

QString textOf(QAccessibleEvent &event)
{
    switch (event.type()) {
    case QAccessible::Focus:
        return event.child() < 0 ? QString() : QStringLiteral("focus %1").arg(event.child());
    case QAccessible::SelectionWithin:
        return QStringLiteral("selection");
    case QAccessible::NameChanged:
        return event.child() < 0 ? QStringLiteral("name") : QStringLiteral("name %1").arg(event.child());
    case QAccessible::ValueChanged:
        return QStringLiteral("value ") + static_cast<QAccessibleValueChangeEvent &>(event).value().toString();
    case QAccessible::DescriptionChanged:
        return QStringLiteral("description");
    case QAccessible::TableModelChanged:
        return rowsText(static_cast<QAccessibleTableModelChangeEvent &>(event));
    default:
        return {};
    }
}

} // namespace

AccessibleEvents::AccessibleEvents(QWidget *watched)
    : control(watched), before(QAccessible::installUpdateHandler(&AccessibleEvents::hear))
{
    listener = this;
    setHeard(true);
    QAccessible::queryAccessibleInterface(watched);
}

AccessibleEvents::~AccessibleEvents()
{
    setHeard(false);
    QAccessible::installUpdateHandler(before);
    listener = nullptr;
}

bool AccessibleEvents::areHeard()
{
#ifdef HAS_PLATFORM_ACCESSIBILITY
    return true;
#else
    return false;
#endif
}

void AccessibleEvents::hear(QAccessibleEvent *event)
{
    const QString text = event->object() == listener->control ? textOf(*event) : QString();
    if (!text.isEmpty())
        listener->told << text;
}

std::string AccessibleEvents::take()
{
    return std::exchange(told, {}).join(QStringLiteral("; ")).toStdString();
}

double millisecondsOf(const std::function<void()> &read)
{
    std::vector<qint64> times;
    for (int i = 0; i < 51; ++i) {
        QElapsedTimer clock;
        clock.start();
        read();
        times.push_back(clock.nsecsElapsed());
    }
    std::nth_element(times.begin(), times.begin() + 25, times.end());
    return static_cast<double>(times[25]) * 1e-6;
}

std::string namesOf(QAccessibleInterface *parent, int first, int count)
{
    QStringList names;
    for (int i = first; i < first + count; ++i)
        names << parent->child(i)->text(QAccessible::Name);
    return names.join(QStringLiteral(", ")).toStdString();
}
