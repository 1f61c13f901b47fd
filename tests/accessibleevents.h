#pragma once

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtGui/QAccessible>
#include <functional>

class QWidget;

/// What one control tells screen readers while this stands; one stands at a time. Accessibility is switched on for it,
/// which takes Qt's inner headers: without them nothing is told.
class AccessibleEvents
{
public:
    explicit AccessibleEvents(QWidget *control);
    ~AccessibleEvents();

    AccessibleEvents(const AccessibleEvents &) = delete;
    AccessibleEvents &operator=(const AccessibleEvents &) = delete;

    /// Whether this build can hear anything.
    static bool areHeard();
    /// What was told since the last time: "focus 4", "selection", "rows inserted 3-5", "name", "name 4" of a child,
    /// "value text", "description", "; " between them. Events of other kinds are left out.
    std::string take();

private:
    static void hear(QAccessibleEvent *event);

    static AccessibleEvents *listener;
    QPointer<QWidget> control;
    QStringList told;
    QAccessible::UpdateHandler before;
};

/// What a read may take; sanitizers make everything several times slower.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double readMilliseconds = 20;
#else
constexpr double readMilliseconds = 1;
#endif

/// Milliseconds that a read takes, the middle one of many.
double millisecondsOf(const std::function<void()> &read);

/// "name, name, ..." of the children of a row or a list, by their numbers.
std::string namesOf(QAccessibleInterface *parent, int first, int count);
