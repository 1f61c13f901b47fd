#pragma once

#include <QtWidgets/QLineEdit>

#include "zb/ceventwidgett.h"
#include "zb/cuiresourcechangehandler.h"

namespace ZB {

/// The host's text field. Says what it is for while it is empty, in the second text colour; the hint goes with the
/// first character. GUI thread; owned by its Qt parent. Delivers no event of its own.
class HOST_API CLineEdit : public CEventWidgetT<QLineEdit>, public CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit CLineEdit(int eventId, QWidget *parent = nullptr);
    ~CLineEdit() override;

    int eventId() const;

    void setEmptyHintText(const QString &text);
    QString emptyHintText() const;
    /// A font key of the theme; "fnt_default_normal" at first.
    void setTextFontKey(const QString &key);
    /// In pixels that no scale changes; 1 at first. 0 takes frame, ground and margins away, for a field inside a
    /// control that paints them. A value below 0 is ignored.
    void setBorderWidth(int pixels);
    /// Frames the field in the colour of errors, for a text that leads nowhere.
    void setWarning(bool on);

    void themeChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString styleText() const;

    const int id;
    QString hint;
    QString fontKey;
    int border = 1;
    bool warning = false;
};

} // namespace ZB
