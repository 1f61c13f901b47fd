#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QListWidget>

#include "account/accountlistcolumn.h"
#include "account/caccountcolumndelegate.h"

namespace KV {

/// The list inside the column settings: a line per column. It changes nothing itself: it tells what the user wants, and
/// is given the columns anew.
///
/// Mouse: a click on the box or the lock, a drag of the rest of a line, with a mark where it would go; near the top and
/// the bottom the list scrolls by a timer. Escape while dragging leaves all as it was. Keys: the list's own, Space
/// checks, L locks, Ctrl+Up and Ctrl+Down carry the line along. GUI thread.
class UICONTROL_API CAccountColumnList : public QListWidget
{
    Q_OBJECT

public:
    explicit CAccountColumnList(QWidget *parent);
    ~CAccountColumnList() override;

    void showColumns(const QVector<CAccountListColumn> &columns);
    void applyLook();
    /// Rectangles in the viewport.
    QRect partArea(int line, CAccountColumnDelegate::Part part) const;
    bool isDragging() const { return gap >= 0; }
    /// In front of which line the dragged one would go; -1 without a drag.
    int insertionGap() const { return gap; }

Q_SIGNALS:
    void sigCheckWanted(int line);
    void sigLockWanted(int line);
    void sigMoveWanted(int line, int gap);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private Q_SLOTS:
    void slotScroll();

private:
    void dragTo(const QPoint &place);
    void endDrag();
    void setGap(int newGap);
    int gapAt(int y) const;
    int lockedLines() const;
    int scrollStep() const;
    QRect markArea() const;

    CAccountColumnDelegate *const lines;
    AccountColumnLook look;
    QTimer scrollTimer;
    int pressedLine = -1;
    CAccountColumnDelegate::Part pressedPart = CAccountColumnDelegate::Part::Name;
    QPoint pressedAt;
    QPoint draggedTo;
    int gap = -1;
};

} // namespace KV
