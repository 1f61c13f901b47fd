#pragma once

#include <QtWidgets/QStyledItemDelegate>

#include "account/accountcolumnlook.h"
#include "uicontrolexport.h"

namespace KV {

/// Paints a line of the column list: check box, name, lock, and the dots to drag it by. It says where they are, too.
class UICONTROL_API CAccountColumnDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum ERole : int
    {
        LockedRole = Qt::UserRole
    };
    enum class Part
    {
        Check,
        Name,
        Lock
    };

    explicit CAccountColumnDelegate(QObject *parent);
    ~CAccountColumnDelegate() override;

    void setLook(const AccountColumnLook &look);
    /// What lies at a place of a line that fills `line`.
    static Part partAt(const QRect &line, const QPoint &place);
    static QRect partArea(const QRect &line, Part part);
    /// Height of a line, pixels at the present scale.
    static int lineHeight();

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void paintCheck(QPainter &painter, const QRect &area, bool checked, bool locked) const;
    void paintGrip(QPainter &painter, const QRect &line) const;

    AccountColumnLook look;
};

} // namespace KV
