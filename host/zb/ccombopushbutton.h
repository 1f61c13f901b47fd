#pragma once

#include <QtCore/QVariant>

#include "zb/cpushbutton.h"

namespace ZB {

/// The host's drop-down button: shows the chosen item; a click, Space, Enter, Down or F4 opens the list. Delivers event
/// 7 with its id, the index and the text whenever the user picks an item, also the present one. GUI thread; owned by
/// its Qt parent.
class HOST_API CComboPushButton : public CPushButton
{
    Q_OBJECT

public:
    /// Lengths in pixels at 100 %. mostRows: that the list shows at a time; textMargin: left of every text; rowHeight
    /// and frame: of the list; arrowWidth: at the button's right edge.
    CComboPushButton(const QString &imageKey, int mostRows, int textMargin, int rowHeight, int frame, int arrowWidth,
                     QWidget *parent);
    ~CComboPushButton() override;

    /// What event 7 carries.
    void setEventId(int id);
    int eventId() const;

    /// The first item is the chosen one until another is.
    void addItem(const QString &text, const QVariant &userData = QVariant());
    void clear();
    int count() const;
    /// Empty, and an invalid variant, for an index that is not there.
    QString itemText(int index) const;
    QVariant itemData(int index) const;

    /// -1 without items.
    int currentIndex() const;
    QString currentText() const;
    /// Without an event. An index that is not there changes nothing.
    void setCurrentItem(int index);

    /// The list is as wide as its longest text needs, never narrower than the button; else as wide as the button.
    void setAdjustPopupWidth(bool adjust);
    /// The open list; null while it is closed.
    QWidget *popup() const;
    void showPopup();

    QSize sizeHint() const override;
    void themeChanged() override;

protected:
    void slotClicked(bool isChecked) override;
    QRect textRect() const override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace ZB
