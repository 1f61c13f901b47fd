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
/// shown is the one that was asked for last.
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
    void setLook(const PopupLook &look);

    /// Goes to a page as far as there is one; asks also when it is the present one.
    void goTo(int page);

Q_SIGNALS:
    void pageRequested(int firstIndex, int rows);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void setRowsPerPage(int rows);
    void updateState();

    PopupLook look;
    int total = 0;
    int rows = 100;
    int current = 0;
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
