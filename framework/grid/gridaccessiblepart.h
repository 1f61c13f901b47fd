#pragma once

#include <QtGui/QAccessible>

namespace ZB {

/// A part of a grid that is no object and has no parts of its own.
class GridAccessiblePart : public QAccessibleInterface
{
public:
    QObject *object() const override { return nullptr; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    void setText(QAccessible::Text, const QString &) override {}
};

} // namespace ZB
