#pragma once

#include <QtWidgets/QAbstractScrollArea>
#include <vector>

#include "frameworkexport.h"
#include "popups/popuplook.h"

namespace ZB {

/// One line of a CheckList.
struct CheckItem
{
    QString text;
    QString note; ///< at the right edge, in the second text colour
    bool checked = false;
    int id = -1; ///< the owner's
};

/// A list of lines with check boxes, painted line by line: a hundred thousand of them cost what is on the screen.
/// Lines can be searched and, where the owner allows it, dragged into another order.
///
/// Keys: arrows, page keys, Home and End move; Space checks; Ctrl+Up and Ctrl+Down carry the line along. GUI thread.
class FRAMEWORK_API CheckList : public QAbstractScrollArea
{
    Q_OBJECT

public:
    CheckList(const PopupLook &look, QWidget *parent);

    void setItems(std::vector<CheckItem> items);
    const std::vector<CheckItem> &items() const;
    /// Shows only lines whose text contains this, ignoring case; empty for all.
    void setSearch(const QString &text);
    QString search() const;
    /// Indexes of the items that the search leaves.
    const std::vector<int> &shownItems() const;
    /// Lets lines be moved while no search is on.
    void setMovable(bool movable);
    void setEmptyText(const QString &text);
    int currentLine() const; ///< index into shownItems(), -1 for none
    void setCurrentLine(int line);
    QRect lineRect(int line) const; ///< in the viewport
    int lineHeight() const;

    /// Checks, unchecks or turns over every shown line.
    void checkShown(bool checked);
    void invertShown();

Q_SIGNALS:
    /// By the user or by checkShown() and invertShown(). index: the item, -1 for many.
    void checkChanged(int index);
    /// The user put the item that was at `from` in front of the place `to`; items() has the new order.
    void itemMoved(int from, int to);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    bool canMove() const;
    void findShown();
    void updateScrollBar();
    void toggle(int line);
    void moveItem(int from, int to);
    int lineAt(const QPoint &position) const;
    int gapAt(const QPoint &position) const;
    void setHovered(int line);
    void paintLine(QPainter &painter, int line) const;

    PopupLook look;
    std::vector<CheckItem> list;
    std::vector<int> shown;
    QString searched;
    QString emptyText;
    bool movable = false;
    int current = -1;
    int hovered = -1;
    int pressed = -1; ///< line under the pressed button
    int gap = -1;     ///< where a dragged line would go: in front of this line
    QPoint pressedAt;
};

} // namespace ZB
