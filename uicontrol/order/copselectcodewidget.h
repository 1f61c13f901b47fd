#pragma once

#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QSet>

#include "kdservice/eoperationtype.h"
#include "kdservice/evxtradertype.h"
#include "kv/efilterflag.h"
#include "kv/eopparamwidgetid.h"
#include "uicontrolexport.h"
#include "zb/cwidgetlist.h"

namespace KV {

class COpTypeButton;
class CStockCodeLineEdit;

/// The code field of the ticket: the host's code line edit and, for the fields that carry a direction, a button for
/// that beside it. GUI thread.
///
/// Delivers, with its own id first: 1083 (0, code) when the user has chosen a code, be it the present one again, or
/// taken it away, and when a white list has taken it away; 1084 (1 for long or open, else 0) when the direction was
/// switched; 245 (1 or 0, with itself as the pointer) when the keyboard focus comes to the line edit or leaves it.
class UICONTROL_API COpSelectCodeWidget : public ZB::CWidgetList
{
    Q_OBJECT

public:
    COpSelectCodeWidget(EOpParamWidgetID id, QWidget *parent);
    ~COpSelectCodeWidget() override;

    /// No event.
    void setStockCode(const QString &code);
    /// The second text has no meaning here.
    void setStockCode(const QString &code, const QString &other);
    /// Empty at first, and without a code.
    QString getStockCode() const;
    /// No event.
    void clearCode();
    /// A character typed elsewhere starts an entry here.
    void inputStockCodeChar(const QString &text);
    CStockCodeLineEdit *getStockCodeLineEdit() const;

    /// @name The line edit's (see CStockCodeLineEdit); each does nothing once that has been deleted
    /// @{
    void setTradeType(kdservice::EVxTraderType type);
    /// TraderFuture until another is set; all of them (15990783) without a line edit.
    kdservice::EVxTraderType getTradeType() const;
    void setOperationType(kdservice::EOperationType type);
    void setStockCodeLineEditFlag(EFilterFlag flags);
    void setWhiteList(const QMap<QString, QSet<QString>> &codes, bool clearOthers);
    void setEnableAll();
    void setBorderWidth(int pixels);
    void setTextFontKey(const QString &key);
    void setEmptyHintText(const QString &text);
    /// Whether the user can enter a code.
    void setOpEnabled(bool enabled);
    /// @}

    /// @name The direction button's; each does nothing without one, and nothing is long then
    /// @{
    /// Long, or open.
    bool isLong() const;
    /// No event.
    void setDirection(bool isLong);
    /// The user cannot switch the direction.
    void setLocked(bool locked);
    /// @}

    void setFixFont() override;
    bool handleEvent(int event, int first, int second, QString text, void *pointer) override;
    void scaleChanged() override;

protected:
    void focusInEvent(QFocusEvent *event) override;

private:
    void createUi();
    bool hasDirection() const;
    void fixHeight();

    const EOpParamWidgetID widgetId;
    QString stockCode = QStringLiteral("SH000300");
    QPointer<CStockCodeLineEdit> codeLineEdit;
    QPointer<COpTypeButton> directionButton;
};

} // namespace KV
