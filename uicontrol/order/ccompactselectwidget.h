#pragma once

#include <QtCore/QPointer>

#include "uicontrolexport.h"
#include "zb/cbasewidget.h"

namespace ZB {
class CCheckBox;
class CParameterCell;
} // namespace ZB

namespace KV {

/// The field of the ticket in which the user may name the contract to act on: a cell for its id, and a check box that
/// unlocks it. Carries an open date and a flag for the host. Does without a part of it that has been deleted: the check
/// box is not checked then, the cell free and empty. GUI thread.
///
/// Delivers 70 (1, 1 or 0 for the check box, empty text, null) at event 119, when the id is edited.
class UICONTROL_API CCompactSelectWidget : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    explicit CCompactSelectWidget(QWidget *parent = nullptr);
    ~CCompactSelectWidget() override;

    /// No event.
    void setCompactId(const QString &id);
    QString getCompactId() const;
    /// A contract named by a command is fixed; an empty text hands the choice back to the user.
    void setCommand(const QString &text);

    /// Leaves the cell as it is.
    void setCheckStatus(bool checked);
    bool getCheckStatus() const;
    void setEnableEdit(bool enabled);
    bool getEnableEdit() const;

    /// Kept for the host, as is the flag below. "-1" at first.
    void setOpenDate(const QString &date);
    QString getOpenDate() const;
    /// False at first.
    void setCompactDone(bool done);
    bool isCompactDone() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool handleEvent(int event, int first, int second, QString text, void *pointer) override;
    void scaleChanged() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void createUi();
    void fixSizes();
    void placeChildren();
    /// The width that the cell has to leave.
    int besideCell() const;

    QPointer<ZB::CCheckBox> checkBox;
    QPointer<ZB::CParameterCell> idCell;
    QString openDate = QStringLiteral("-1");
    bool compactDone = false;
};

} // namespace KV
