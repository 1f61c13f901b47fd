#pragma once

#include <memory>

#include "kdservice/evxtradertype.h"
#include "zb/cbasewidget.h"

namespace KV {

class CStockCodeLineEdit;

/// The stock-code entry above an order form: two lines of text (name and code of the stock), and a line edit that takes
/// their place while a code is being typed. GUI thread; the line edit is its child.
///
/// A code that the user chooses goes on to the parents as event 1082 (0, 0, code, null). Trade type and trade operation
/// type are kept for the order form; they select nothing here.
class HOST_API CSelectCodeWidget : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    explicit CSelectCodeWidget(QWidget *parent = nullptr);
    ~CSelectCodeWidget() override;

    /// The code shown; empty before the first.
    QString getStockCode() const;
    /// Shows a code, and its name where the host knows it. No event.
    void setStockCode(const QString &code);
    CStockCodeLineEdit *getStockCodeLineEdit() const;

    /// Whether a code is being typed: the line edit is shown in place of the texts.
    void setEditing(bool editing);
    bool isEditing() const;
    /// Whether typing opens no list of what it finds.
    void setCompletionSuppressed(bool suppressed);
    bool isCompletionSuppressed() const;
    /// Whether the line above the texts is drawn.
    void setDrawTop(bool drawTop);
    bool isDrawTop() const;

    void setTradeType(kdservice::EVxTraderType type);
    kdservice::EVxTraderType getTradeType() const;
    void setTradeOpType(quint64 type);
    quint64 getTradeOpType() const;

    /// The height that both lines of text need, in "fnt_quote_stockname" and "fnt_default_normal".
    int preferredHeight() const;
    /// Lays the line edit, and the list below it where that is open, out to the present size.
    void relayoutPopup();
    /// Starts the entry of a code with the keyboard in the line edit and all of its text selected.
    void startEditing();

    QSize sizeHint() const override;
    void scaleChanged() override;
    bool handleEvent(int event, int first, int second, QString text, void *data) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace KV
