#pragma once

#include <QtCore/QStringList>

#include "popups/popupframe.h"

class QListWidget;

namespace ZB {

/// The open list of a drop-down button: arrow keys, the first letters and the mouse choose, Enter and a click take,
/// Escape and a click elsewhere close. GUI thread.
class ComboPopup : public PopupFrame
{
    Q_OBJECT

public:
    /// Lengths in pixels at the present scale.
    struct Metrics
    {
        int mostRows = 1;
        int textMargin = 0;
        int rowHeight = 1;
        int frame = 1;
    };

    ComboPopup(const QStringList &texts, int current, const Metrics &metrics, QWidget *parent);
    ~ComboPopup() override;

    /// Opens under a button's rectangle on the screen, as wide as that at least; wider for the longest text if asked.
    void open(const QRect &button, bool fitsTexts);

Q_SIGNALS:
    void picked(int index);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void pick(int index);

    const Metrics metrics;
    QListWidget *list;
};

} // namespace ZB
