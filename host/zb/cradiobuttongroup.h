#pragma once

#include <QtCore/QList>
#include <memory>

#include "zb/cbasewidget.h"

namespace ZB {

/// A row or column of buttons of which at most one is checked. Delivers event 6 with its own id and the button's id at
/// every click, also on the checked one (-1 when that lets it go), and when the arrow keys move on; never event 5. GUI
/// thread; owned by its Qt parent.
class HOST_API CRadioButtonGroup : public CBaseWidget
{
    Q_OBJECT

public:
    /// spacing: between the buttons, in pixels at 100 %; without any they form one strip. canUncheck: a click on the
    /// checked button lets it go.
    CRadioButtonGroup(QWidget *parent, int eventId, int spacing, bool canUncheck, Qt::Orientation orientation);
    ~CRadioButtonGroup() override;

    int eventId() const;

    /// Nothing is checked by adding. An id that is there already gets the new text; one below 0 is none.
    void addButton(const QString &text, int buttonId);
    QList<int> buttonIds() const;
    QString buttonText(int buttonId) const;

    /// -1 when none is.
    int checkedId() const;
    /// Without an event. An unknown id lets the checked one go.
    void setCheckedById(int buttonId);

    void themeChanged() override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace ZB
