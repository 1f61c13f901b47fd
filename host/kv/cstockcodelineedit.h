#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <memory>

#include "kdservice/eoperationtype.h"
#include "kdservice/evxtradertype.h"
#include "kv/efilterflag.h"
#include "zb/cbasewidget.h"

namespace ZB {
class CLineEdit;
}

namespace KV {

/// The host's field for an instrument's code: finds instruments by code, name and initials of the name while the user
/// types, and shows the name of the chosen one.
///
/// Events that it delivers: 1082 (its id, 0, code, null) when the user has chosen a code, be it the present one again,
/// or taken it away, and when a white list has taken it away; 245 (its id, 1 or 0, empty text, null) when the keyboard
/// focus comes to it or leaves. Threading: GUI thread. Ownership: its Qt parent.
class HOST_API CStockCodeLineEdit : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    /// style: 1 shows the name below the code where the height allows, 0 always beside it. opensOnFocus: the list opens
    /// as soon as the focus comes, not only with the first character.
    CStockCodeLineEdit(int eventId, int style, QWidget *parent, bool opensOnFocus);
    ~CStockCodeLineEdit() override;

    int eventId() const;

    /// Shows a code, known or not; what the user was typing is dropped. notify: delivers 1082 if that is another code.
    void setStockCode(const QString &code, bool notify);
    /// The chosen code, never a text that is still being typed; empty without one.
    QString getStockCode() const;
    /// No code, without an event.
    void clearCode();
    /// A character typed elsewhere: starts a new entry with it, or goes on with the present one. A disabled field takes
    /// none.
    void inputStockCodeChar(const QString &text);

    /// Offers only what these accounts trade, and what nobody does; TraderNone takes the limit away.
    void setTradeType(kdservice::EVxTraderType type);
    /// 15990783, all of them, until one is set.
    kdservice::EVxTraderType getTradeType() const;
    /// With an operation only what can be traded is offered: no index.
    void setOperationType(kdservice::EOperationType type);
    /// Which kinds are offered, as bits; all of them at first.
    void setFlag(EFilterFlag flags);
    /// Offers only these codes, without exchange, by exchange ("SH"; empty for codes without one); an empty set allows
    /// the whole exchange. clearOthers: a present code that is not on the list is taken away, which delivers 1082 with
    /// an empty text.
    void setWhiteList(const QMap<QString, QSet<QString>> &codes, bool clearOthers);
    /// Takes the white list and the kinds away: everything is offered that the accounts trade.
    void setEnableAll();

    /// Whether typing opens no list of what it finds; keys that ask for the list still do.
    void setCompletionSuppressed(bool suppressed);
    /// Puts an open list to the present place and width of the field.
    void relayoutList();

    /// Frames the field in the colour of errors, for a code that is missing or wrong; until the user types or a code is
    /// set.
    void setWarning(bool on);
    /// Of the frame, in pixels that no scale changes; 1 at first. A value below 0 is ignored.
    void setBorderWidth(int pixels);
    /// Font of the code, a key of the theme.
    void setTextFontKey(const QString &key);
    /// The field inside that holds the text.
    ZB::CLineEdit *getLineEdit() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void themeChanged() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace KV
