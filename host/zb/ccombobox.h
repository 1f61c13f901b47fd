#pragma once

#include <QtWidgets/QComboBox>

#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

/// The host's combo box, the base of those with a popup of their own. Delivers event 7 with its id, the index and the
/// text when the user picks an item. The wheel scrolls what is around it and never changes the choice. GUI thread;
/// owned by its Qt parent.
class HOST_API CComboBox : public CEventWidgetT<QComboBox>, public CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit CComboBox(int eventId, QWidget *parent = nullptr);
    ~CComboBox() override;

    int eventId() const;

    /// Frames the box in the colour of errors, for a choice that is missing or wrong.
    void setWarning(bool on);

    void themeChanged() override;

protected:
    /// What the closed box shows; the current item's text unless overridden.
    virtual QString shownText() const;
    /// Whether shownText() says that nothing is chosen yet, and so stands in the second text colour; false unless
    /// overridden.
    virtual bool isHint() const;
    /// Whether the popup is open, which makes the box look pressed; for boxes with a popup of their own.
    virtual bool isOpen() const;

    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    const int id;
    bool warning = false;
};

} // namespace ZB
