#pragma once

#include "account/caccountcolumnorder.h"
#include "uicontrolexport.h"
#include "zb/cbasewidget.h"

class QLabel;

namespace ZB {
class CSmallNormalButton;
}

namespace KV {

class CAccountColumnList;

/// The popup that arranges the columns of the account list: which are shown, in what order, which are locked in front.
///
/// Every change is told at once by sigColumnsChanged, and kept in the user's configuration under the list's id. The
/// host gives the table's columns, applies what the signal brings, and shows the popup. GUI thread; owned by its Qt
/// parent; closes at a click elsewhere and at Escape.
class UICONTROL_API CAccountListColumnSettingWidget : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    /// listId: under which the arrangement is kept; two lists with one id would overwrite each other's.
    CAccountListColumnSettingWidget(int listId, QWidget *parent);
    ~CAccountListColumnSettingWidget() override;

    /// The columns as they are without a user's choice. What the user has kept is laid over them; columns() has the
    /// outcome, and nothing is told.
    void setDefaultColumns(const QVector<CAccountListColumn> &columns);
    /// The columns as they stand in the table now, where users arrange them too; kept when that is another arrangement.
    void setColumns(const QVector<CAccountListColumn> &columns);
    const QVector<CAccountListColumn> &columns() const { return order.columns(); }

    /// Shows it below a rectangle of the screen, or above where there is no room, whole on the screen.
    void showAt(const QRect &anchor);

    bool handleEvent(int event, int first, int second, QString text, void *pointer) override;
    void themeChanged() override;

Q_SIGNALS:
    /// In the new order.
    void sigColumnsChanged(const QVector<KV::CAccountListColumn> &columns);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void applyLook();
    void turnVisible(int line);
    void turnLocked(int line);
    void moveColumn(int line, int gap);
    void restoreDefaults();
    void refill(int currentLine);
    void changed(int currentLine);
    void keep() const;
    QString path() const;

    const int id;
    CAccountColumnOrder order;
    CAccountColumnList *list = nullptr;
    QLabel *title = nullptr;
    QLabel *hint = nullptr;
    ZB::CSmallNormalButton *defaultButton = nullptr;
    ZB::CSmallNormalButton *closeButton = nullptr;
};

} // namespace KV
