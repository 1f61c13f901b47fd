#pragma once

#include <QtWidgets/QWidget>

#include "frameworkexport.h"
#include "popups/popuplook.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace ZB {

/// The strip under a paged table: which page is shown, of how many rows each, out of how many. It only asks: the page
/// shown is the one that was asked for last, by it or by setPage().
///
/// Where the newest rows come in at the end, it can follow them: the last page is then always a full one, the last rows
/// there are, and being there it asks for it again as rows come in.
class FRAMEWORK_API PagingBar : public QWidget
{
    Q_OBJECT

public:
    explicit PagingBar(QWidget *parent);

    /// Of all pages together. A page beyond the new end becomes the last one, and is asked for.
    void setTotalCount(int count);
    int totalCount() const;
    int rowsPerPage() const;
    /// From 0.
    int page() const;
    int pageCount() const; ///< at least 1

    /// Whether the last page goes along with new rows. Who is on the last page when it is switched on goes along.
    void setFollowsEnd(bool follows);
    /// On the last page, and going along with it.
    bool isAtEnd() const;
    /// Stays on its rows for as long as it lasts; then catches up.
    void setHeld(bool held);
    /// Rows that have come behind the page while it was held at the end.
    int missedRows() const;
    void setLook(const PopupLook &look);

    /// Tells which rows somebody else has asked for, out of how many. Goes along with new rows from then on only where
    /// these are the last page as it is followed. Without rows the number of rows per page stays what it was.
    void setPage(int firstIndex, int rows, int totalCount);

    /// Goes to a page as far as there is one; asks also when it is the present one.
    void goTo(int page);
    void goToLast() { goTo(pageCount() - 1); }
    /// Asks only where it is elsewhere.
    void goToFirst();

Q_SIGNALS:
    void pageRequested(int firstIndex, int rows);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void setRowsPerPage(int rows);
    void showRowsPerPage();
    /// The first index of a page; goes along from then on where that is the last one.
    int enter(int page);
    void catchUp();
    void updateState();

    PopupLook look;
    int total = 0;
    int rows = 100;
    int firstIndex = 0;
    bool followsEnd = false;
    bool atEnd = false;
    bool held = false;
    QPushButton *first;
    QPushButton *previous;
    QPushButton *next;
    QPushButton *last;
    QSpinBox *number;
    QLabel *pages;
    QLabel *count;
    QComboBox *size;
};

} // namespace ZB
