#pragma once

#include "zb/cpushbutton.h"
#include "zb/enormalbuttontype.h"

namespace ZB {

/// The host's small button, coloured by what it is for. GUI thread; owned by its Qt parent.
class HOST_API CSmallNormalButton : public CPushButton
{
    Q_OBJECT

public:
    /// framed: a line around it that tells it from the ground.
    CSmallNormalButton(int eventId, bool framed, ENormalButtonType type, QWidget *parent);
    ~CSmallNormalButton() override;

    void setButtonType(ENormalButtonType type);
    ENormalButtonType buttonType() const;

    QSize sizeHint() const override;
    void themeChanged() override;

protected:
    void paintGround(QPainter &painter) override;
    QColor textColor() const override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace ZB
