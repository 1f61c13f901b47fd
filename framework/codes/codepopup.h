#pragma once

#include <QtWidgets/QWidget>

#include "codes/codesearch.h"
#include "frameworkexport.h"
#include "popups/popuplook.h"

namespace ZB {

/// Where the rows of a list of hits stand. Knows no widget and no colour.
struct FRAMEWORK_API CodeListLayout
{
    int rowHeight = 24;
    int footerHeight = 22;
    int visibleRows = 0; ///< 0 when there is but a message, which takes one row
    int width = 0;

    static constexpr int mostRows = 10;

    /// For so many hits.
    static CodeListLayout fit(int hits, int width);
    QSize size() const;
    QRect rowRect(int row) const;
    QRect footerRect() const;
    /// -1 outside the rows.
    int rowAt(const QPoint &point) const;
};

/// The list below a code field: what answers the typed text, best first, the part that answers in the accent colour.
/// Never takes the keyboard focus (so that input methods go on writing to the field); the field sends it what its keys
/// mean. Looks at a search that outlives it. GUI thread.
class FRAMEWORK_API CodePopup : public QWidget
{
    Q_OBJECT

public:
    CodePopup(const CodeSearch &search, QWidget *field);

    /// The search has other hits: the first becomes the current one.
    void refresh();
    /// Opens below a rectangle of the screen, or above it where there is no room; or moves there.
    void showAt(const QRect &anchor);

    /// Place among the hits; -1 without any.
    int current() const { return currentHit; }
    void moveCurrent(int by);
    /// Rows that a page key goes on by.
    int pageRows() const;

    void themeChanged();

Q_SIGNALS:
    /// The user has clicked on a hit.
    void sigChosen(int hit);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int hitCount() const;
    int hitAt(const QPoint &point) const;
    void setCurrent(int hit);
    void scrollTo(int hit);
    void place();
    void paintRow(QPainter &painter, int row) const;
    void paintText(QPainter &painter, const QRect &rect, const QString &text, const TextPart &part) const;
    void paintFooter(QPainter &painter) const;
    void paintPosition(QPainter &painter) const;

    const CodeSearch &search;
    PopupLook look;
    CodeListLayout layout;
    QRect anchor;
    int currentHit = -1;
    int firstHit = 0; ///< on the first row
    int wheelRest = 0;
};

} // namespace ZB
