#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>

#include "codes/codepopup.h"
#include "codes/codesearch.h"
#include "kv/cstockcodelineedit.h"
#include "zb/clineedit.h"

class QKeyEvent;

namespace KV {

constexpr int eventCodeChosen = 1082;
constexpr int eventCodeFocus = 245;

/// Where the texts of a code field stand. Knows no widget.
struct CodeFieldLayout
{
    QRect edit;
    QRect name; ///< below the code, or right of it

    static CodeFieldLayout fit(const QSize &size, bool mayStack, int border, int codeHeight, int nameHeight);
};

class CStockCodeLineEdit::Private : public QObject
{
public:
    Private(CStockCodeLineEdit *field, int eventId, int style, bool opensOnFocus);

    void setCode(const QString &other);
    /// What the field says besides the code: the instrument's name, or why a text leads nowhere.
    QString sideText() const;
    void showCode();
    void applyFilter();

    void edited(const QString &text);
    void find(const QString &text);
    void openList();
    void closeList();
    bool isOpen() const { return popup != nullptr && popup->isVisible(); }
    bool keyPressed(QKeyEvent *event);
    bool moveInList(int key);
    bool isListKey(int key) const;
    bool confirm();
    void chooseHit(int hit);
    void choose(const QString &other);
    /// Back to the chosen code.
    void cancel();
    void focusCame(Qt::FocusReason reason);
    void focusLeft(Qt::FocusReason reason);
    /// The focus goes on by the Tab key: what the list offers is taken.
    void leaveByTab();
    void setWarning(bool on);

    /// While the list is open, for the whole program: a press elsewhere, or a window that moves, closes it.
    bool eventFilter(QObject *watched, QEvent *event) override;

    CStockCodeLineEdit *const q;
    const int id;
    const bool mayStack;
    const bool opensOnFocus;
    ZB::CLineEdit *edit;
    ZB::CodePopup *popup = nullptr; ///< made when it is first needed
    ZB::CodeSearch search;
    ZB::CodeFilter filter;
    kdservice::EVxTraderType tradeType;
    QString code;
    QString name; ///< of the code
    int border = 1;
    bool isEditing = false;        ///< the text is an entry, not the code
    bool isWarning = false;        ///< nothing answers to the text
    bool isFaulty = false;         ///< somebody finds the code wrong
    bool isSuppressed = false;     ///< typing opens no list
    bool selectsOnRelease = false; ///< the click that brings the focus marks the whole text
};

} // namespace KV
