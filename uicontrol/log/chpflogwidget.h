#pragma once

#include <QtCore/QTimer>
#include <boost/shared_ptr.hpp>
#include <memory>
#include <optional>

#include "log/clogrowpainter.h"
#include "log/clogsearch.h"
#include "log/clogtextplaces.h"
#include "log/cmodeltextcache.h"
#include "uicontrolexport.h"
#include "zb/cbasewidget.h"
#include "zb/cstandscrollbar.h"

class QMenu;

namespace KV {

class CLogAccessible;

/// A read-only view of a log of any size: it follows the newest line until the user scrolls away, filters by level,
/// finds, selects and copies, and wraps lines at its width. Only the visible rows are drawn, at most ten times a second
/// for new text.
///
/// GUI thread, dataCallBack() included: other threads hand their lines over to it. Text is cut on a thread of its own.
/// Tells the host of a clearing by the user with event 1284 (widget id, 0, log key).
class UICONTROL_API CHpfLogWidget : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    /// The filter that shows all levels. Levels are the program's own numbers, any but this one.
    static constexpr int allLevels = 3;

    explicit CHpfLogWidget(int widgetId, QWidget *parent = nullptr);
    ~CHpfLogWidget() override;

    /// Takes a block of lines of one level, separated by "\n" (one behind the last line makes an empty one). They show
    /// within a tenth of a second while the widget is visible. The newest 50,001 pieces of each level, and of all, are
    /// kept. Costs under a microsecond a line as a rule; the rest is done elsewhere.
    void dataCallBack(const QString &text, int level);
    /// Drops all lines, those on their way too, and ends a marking. No event.
    void clear();
    /// Shows the pieces of one level only, none for a level that has no lines; allLevels shows all.
    void setFilterLevel(int level);
    int getFilterLevel() const { return filterLevel; }
    /// The text that the host gets with event 1284.
    void setLogKey(const QString &key);
    /// Whether lines wrap at the widget's width; off at first.
    bool isAutoLine() const;

    /// Marks every place where a text stands, now and in what is still to come, upper and lower case told apart, and
    /// scrolls down to the first one below the top row when it is below the page. An empty text ends the marking. True
    /// when the text was found; some 2 ms for 50,000 lines.
    bool findText(const QString &text);
    /// Selects the next or the previous row in which the text of findText() starts, going on from the row found or
    /// selected last, at the ends from the other end, and scrolls to it. False when there is none.
    bool findNext();
    bool findPrevious();
    /// Occurrences at the last search.
    int matchCount() const { return lastMatchCount; }
    /// Number of the occurrence shown last among all of them, from 1; 0 when none was shown.
    int matchNumber() const { return lastMatchNumber; }
    /// Counts the occurrences anew, at the cost of findText(): new lines may have brought some, and taken others away.
    void updateMatchCount();

    /// Whether the view moves on with new lines.
    bool isFollowing() const { return followTail; }
    /// Goes to the newest line and moves on with it.
    void followNewest();
    /// Pieces in the list that is shown, at the last look, and how many have left its front before since clear().
    int shownLines() const { return lineCount; }
    qint64 trimmedLines() const { return knownTrimmed; }

    /// Draws all of it anew.
    void reDrawGraph();

    bool handleEvent(int event, int first, int second, QString text, void *data) override;
    void themeChanged() override;
    void scaleChanged() override;

Q_SIGNALS:
    /// What is shown has changed: other lines, another place in them, another selection.
    void sigViewChanged();
    /// All lines are gone, whoever wished it.
    void sigCleared();

public Q_SLOTS:
    // What the entries of the menu do; the argument, theirs, says nothing. Wrapping is turned on and off by turns, and
    // slotClear() tells the host with event 1284, as clear() does not. slotTimeout() is the widget's own timer's.
    void slotSelectAll(bool checked);
    void slotCopySelect(bool checked);
    void slotAutoLine(bool checked);
    void slotClear(bool checked);
    void slotTimeout();

protected:
    void createUi();
    void initDraw();
    void resetLayout();
    void updateScroll();
    void drawBackground(const QRect &rect);
    void drawGraph(QPainter *painter);
    void onCopySelect();
    void handleModifierKey(QKeyEvent *event);

    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    friend class CLogAccessible;

    std::optional<int> filter() const;
    void applyScale();
    void placeBars();
    void layOut();
    void makeBackBuffer();
    void setContentWidth();
    void noteWidths(const QString &text);
    void measureAllLines();
    void takeList(const CModelTextCache::ListState &state);
    void followTrimming(const CModelTextCache::ListState &state);
    void redraw();
    void setBar(QScrollBar &bar, int maximum, int position);
    void scrollTo(int line);
    void scrollAcross(int offset);
    int overflow() const;
    std::vector<LogRow> shownRows();
    std::vector<LogRange> shownMarks(const std::vector<LogTextPtr> &pieces, std::size_t piece);
    bool isOnPage(int line) const;
    void selectRow(int row);
    void selectUp();
    void selectDown();
    struct Searched
    {
        std::vector<LogTextPtr> pieces; ///< all that the list holds; lineCount and the rows of the hits count these
        CLogSearch::Hits hits;
    };
    Searched searchAll();
    bool showHit(const Searched &searched, const CLogSearch::Place &hit);

    boost::shared_ptr<CModelTextCache> cache;
    ZB::CStandScrollBar *verticalBar = nullptr;
    ZB::CStandScrollBar *horizontalBar = nullptr;
    QPixmap backBuffer;
    QTimer *refreshTimer = nullptr;
    const int widgetId;
    CLogLayout geometry; ///< of drawRect
    QRect drawRect;
    int lineCount = 0;
    int topLine = 0;
    bool followTail = true;
    int selectedLine = -1;
    bool selectAll = false;
    int contentWidth = 0;
    int maxLineWidth = 0;
    int hOffset = 0;
    const QColor *textColor = nullptr;
    const QColor *selectionColor = nullptr;
    const QColor *matchColor = nullptr;
    const QFont *textFont = nullptr;
    CLogSearch search;
    CLogSearch::Place foundPlace; ///< where findNext() goes on
    int lastMatchCount = 0;
    int lastMatchNumber = 0;
    int filterLevel = allLevels;
    QString logKey;

    std::unique_ptr<CLogTextPlaces> places;
    CLogRowPainter rowPainter;
    unsigned listNumber = 0;    ///< of the list that is shown, among all: after a clearing, a cutting, a filter another
    qint64 knownTrimmed = 0;    ///< pieces that had left the front of the list when it was looked at last
    bool settling = false;      ///< the bars are being set to what is known already
    bool keyboardFocus = false; ///< the focus came by keyboard the last time, and no mouse since
    bool framed = false;        ///< it is here
};

} // namespace KV
