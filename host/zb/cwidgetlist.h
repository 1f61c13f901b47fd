#pragma once

#include <QtCore/QMargins>
#include <memory>

#include "zb/cbasewidget.h"
#include "zb/ewidgetanchor.h"

namespace ZB {

/// A box of widgets side by side or one below the other, with host events and theme changes. Stretching widgets share
/// what the fixed ones leave over. Margins, spacing and spaces are given in pixels at 100 % and follow the scale.
/// Anchors are values of EWidgetAnchor; any other number is AnchorFill. Null widgets are ignored.
///
/// GUI thread. Added widgets become its children. A hidden widget takes no room, unless it is added with keepsRoom; a
/// deleted one leaves the list.
class HOST_API CWidgetList : public CBaseWidget
{
    Q_OBJECT

public:
    explicit CWidgetList(Qt::Orientation orientation, QWidget *parent = nullptr, const QString &objectName = QString());
    ~CWidgetList() override;

    Qt::Orientation orientation() const;
    void setMargins(int left, int top, int right, int bottom);
    /// Between neighbours.
    void setSpacing(int spacing);

    /// A widget that gets `stretch` parts of the room that is left over, never less than its minimum size.
    void addStretchWidget(QWidget *widget, int stretch, int anchor, bool keepsRoom = false);
    /// A widget that keeps its length: its fixed one where it has one, else the one that it has now.
    void addFixedWidget(QWidget *widget, int anchor, bool keepsRoom = false);
    /// The same in front of all others.
    void addFixedWidgetInFront(QWidget *widget, int anchor, bool keepsRoom = false);
    /// Takes a widget off the list and hides it; it stays a child.
    void removeWidget(QWidget *widget);
    void addFixedSpace(int length);
    /// Room that grows with the list.
    void addStretchSpace(int stretch);
    /// Takes the lengths of the fixed widgets anew, their size hints in place of lengths that are not fixed: to be
    /// called after a change of font or scale.
    void updateWidgetLengths();

    /// Gives the list the theme's default font; a list that was added hands it on to its own.
    virtual void setFixFont();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void scaleChanged() override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace ZB
