#pragma once

#include <QtWidgets/QAbstractButton>

namespace ZB {

/// One button of a radio group: stands alone, or joined with its neighbours to one strip. GUI thread.
class RadioSegment : public QAbstractButton
{
    Q_OBJECT

public:
    /// Which edges are those of the strip and so have round corners; all of them when it stands alone.
    using Ends = Qt::Edges;

    RadioSegment(const QString &text, QWidget *parent);
    ~RadioSegment() override;

    void setEnds(Ends ends);
    void applyTheme();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void paintGround(QPainter &painter) const;

    Ends stripEnds;
};

} // namespace ZB
