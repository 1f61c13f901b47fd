#pragma once

#include <memory>

#include "zb/cbasewidget.h"

namespace ZB {

class CLineEdit;

/// A field of a form: its name, a text field, and perhaps a unit behind that. Delivers event 119 with its id and the
/// text whenever the user edits it. GUI thread; owned by its Qt parent.
class HOST_API CParameterCell : public CBaseWidget
{
    Q_OBJECT

public:
    CParameterCell(int eventId, const QString &labelName, const QString &unit, QWidget *parent);
    ~CParameterCell() override;

    int eventId() const;
    /// Height of the line that the name stands in the middle of, in pixels at 100 %; as high as the cell at first.
    void setLabelNameHeight(int height);

    /// Without an event.
    void setString(const QString &text);
    QString toString() const;
    CLineEdit *getLineEdit() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void themeChanged() override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace ZB
