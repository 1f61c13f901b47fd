#pragma once

#include <QtWidgets/QCommonStyle>

namespace ZB {

/// Where the parts of a thin scroll bar are: no arrow buttons, a handle along the whole groove. Draws nothing itself.
/// One object serves every bar, since Qt neither owns nor copies a widget's style. GUI thread.
class ThinScrollStyle : public QCommonStyle
{
    Q_OBJECT

public:
    static ThinScrollStyle *instance();

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
};

} // namespace ZB
