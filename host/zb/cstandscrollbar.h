#pragma once

#include <QtWidgets/QScrollBar>

#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

/// The host's thin scroll bar. Delivers event 17 to its parent with its id as the first parameter and the new position
/// as the second whenever its position changes, by the user or by setSliderPosition. GUI thread; owned by its Qt
/// parent.
class HOST_API CStandScrollBar : public CEventWidgetT<QScrollBar>, public CUiResourceChangeHandler
{
    Q_OBJECT

public:
    CStandScrollBar(int eventId, Qt::Orientation orientation, QWidget *parent);
    ~CStandScrollBar() override;

    int eventId() const;

    void themeChanged() override;

protected:
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    int id;
    int delivered;
};

} // namespace ZB
