#pragma once

#include <QtWidgets/QAbstractButton>
#include <memory>

#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

/// The host's push button: an image stretched over it, by state ("key", "key_hover", "key_press", "key_disable"), and a
/// text. A click, Space and Enter deliver event 5 with its id, and with 1 when the button is checked now. GUI thread;
/// owned by its Qt parent.
class HOST_API CPushButton : public CEventWidgetT<QAbstractButton>, public CUiResourceChangeHandler
{
    Q_OBJECT

public:
    /// imageKey: empty for a button that only shows its text.
    CPushButton(const QString &imageKey, int eventId, QWidget *parent);
    ~CPushButton() override;

    int eventId() const;

    void setImageKey(const QString &key);
    QString imageKey() const;
    /// Colour keys of the text in each state.
    void setTextColorKey(const QString &normal, const QString &hover, const QString &pressed, const QString &disabled);
    /// "fnt_default_normal" at first.
    void setTextFontKey(const QString &key);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void themeChanged() override;

protected Q_SLOTS:
    /// What a click does. Delivers event 5 unless overridden.
    virtual void slotClicked(bool isChecked);

protected:
    /// Paints what lies under the text and under the sign of the focus: the state's image unless overridden.
    virtual void paintGround(QPainter &painter);
    /// Of the present state.
    virtual QColor textColor() const;
    /// Where the text goes, centred: the whole button unless overridden.
    virtual QRect textRect() const;

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace ZB
