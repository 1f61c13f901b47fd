#pragma once

#include <QtCore/QString>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace ZB {

// The few stock parts that popups and strips are made of, set up for PopupLook::sheet().

QLabel *titleLabel(const QString &text, QWidget *parent);
QLabel *dimLabel(const QString &text, QWidget *parent);
/// A text field with a hint in it.
QLineEdit *searchField(const QString &hint, QWidget *parent);
/// A button that looks like a link.
QPushButton *linkButton(const QString &text, QWidget *parent);
/// A row without margins for `owner`.
QHBoxLayout *tightRow(QWidget *owner);

} // namespace ZB
