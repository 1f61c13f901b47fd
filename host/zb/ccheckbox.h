#pragma once

#include <QtWidgets/QAbstractButton>

#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

/// The host's check box. Delivers event 69 with its id and the new state when the user changes it. GUI thread; owned by
/// its Qt parent.
class HOST_API CCheckBox : public CEventWidgetT<QAbstractButton>, public CUiResourceChangeHandler
{
    Q_OBJECT

public:
    CCheckBox(int eventId, const QString &text, QWidget *parent);
    ~CCheckBox() override;

    int eventId() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void themeChanged() override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    const int id;
};

} // namespace ZB
