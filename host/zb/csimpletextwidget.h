#pragma once

#include <memory>

#include "zb/cbasewidget.h"

namespace ZB {

/// A line of text, cut with an ellipsis where it does not fit. GUI thread; owned by its Qt parent.
class HOST_API CSimpleTextWidget : public CBaseWidget
{
    Q_OBJECT

public:
    explicit CSimpleTextWidget(const QString &text, QWidget *parent = nullptr);
    ~CSimpleTextWidget() override;

    void setText(const QString &text);
    QString text() const;
    /// "clr_text_second" at first.
    void setTextColorKey(const QString &key);
    /// "fnt_default_normal" at first.
    void setTextFontKey(const QString &key);
    void setAlignment(Qt::Alignment alignment);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace ZB
