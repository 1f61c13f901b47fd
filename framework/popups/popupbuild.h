#pragma once

#include <QtCore/QString>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QWidget;

namespace ZB {

// The few stock parts that popups and strips are made of, set up for PopupLook::sheet().

/// A text longer than `width` pixels is cut.
QLabel *titleLabel(const QString &text, int width, QWidget *parent);
QLabel *dimLabel(const QString &text, QWidget *parent);
/// A button that looks like a link.
QPushButton *linkButton(const QString &text, QWidget *parent);
/// Its list has lines as high as those of the theme.
QComboBox *comboBox(QWidget *parent);
/// A row without margins for `owner`.
QHBoxLayout *tightRow(QWidget *owner);

} // namespace ZB
