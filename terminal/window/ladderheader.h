#pragma once

#include <QtWidgets/QWidget>

#include "zb/cuiresourcechangehandler.h"

namespace terminal {

/// Name and code of the instrument whose ladder stands below. A name that does not fit ends in an ellipsis.
class LadderHeader : public QWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit LadderHeader(QWidget *parent = nullptr);
    ~LadderHeader() override;

    void setInstrument(const QString &code, const QString &name);
    const QString &code() const { return shownCode; }
    const QString &name() const { return shownName; }

    void themeChanged() override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void applyLook();

    QString shownCode;
    QString shownName;
};

} // namespace terminal
