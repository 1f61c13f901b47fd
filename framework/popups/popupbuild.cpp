#include "popups/popupbuild.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "zb/cuiresource.h"

namespace ZB {

QLabel *titleLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
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

QLineEdit *searchField(const QString &hint, QWidget *parent)
{
    auto *field = new QLineEdit(parent);
    field->setPlaceholderText(hint);
    return field;
}

QPushButton *linkButton(const QString &text, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setFlat(true);
    button->setAutoDefault(false);
    return button;
}

QHBoxLayout *tightRow(QWidget *owner)
{
    auto *row = new QHBoxLayout(owner);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(scaled(6));
    return row;
}

} // namespace ZB
