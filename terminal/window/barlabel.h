#pragma once

#include <QtWidgets/QWidget>

#include "window/windowlook.h"

namespace terminal {

/// A line of text in a bar. Cut off with an ellipsis where it does not fit; the whole text is in the tool tip then.
class BarLabel : public QWidget
{
    Q_OBJECT

public:
    enum class Style
    {
        Normal,
        Bold,
        Dim,
        Number, ///< figures of equal width
        Error
    };

    explicit BarLabel(Style style, QWidget *parent = nullptr);
    ~BarLabel() override;

    void setLook(const WindowLook &look);
    void setStyle(Style style);
    void setText(const QString &text);
    const QString &text() const { return shown; }
    /// Keeps room for this text, so that what stands behind stays in place while figures change.
    void setWidestText(const QString &text);
    /// A tool tip in place of the whole text.
    void setDetails(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    QFont labelFont() const;

    WindowLook look;
    Style style;
    QString shown;
    QString widest;
    QString details;
};

} // namespace terminal
