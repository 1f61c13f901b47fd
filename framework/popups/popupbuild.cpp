#include "popups/popupbuild.h"

#include <QtCore/QVariant>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyledItemDelegate>

#include "zb/cuiresource.h"

namespace ZB {

QLabel *titleLabel(const QString &text, int width, QWidget *parent)
{
    auto *label = new QLabel(parent->fontMetrics().elidedText(text, Qt::ElideRight, width), parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("title", true);
    return label;
}

QLabel *dimLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("dim", true);
    return label;
}

QPushButton *linkButton(const QString &text, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setFlat(true);
    button->setProperty("link", true);
    button->setAutoDefault(false);
    return button;
}

QComboBox *comboBox(QWidget *parent)
{
    auto *box = new QComboBox(parent);
    box->setItemDelegate(new QStyledItemDelegate(box)); // the box's own knows nothing of the style sheet
    return box;
}

QHBoxLayout *tightRow(QWidget *owner)
{
    auto *row = new QHBoxLayout(owner);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(scaled(6));
    return row;
}

} // namespace ZB
