#pragma once

#include <QtCore/QString>

class QWidget;

namespace terminal {

/// Asks whether something is to be done, over `parent`; Enter agrees, Escape does not. Waits for the answer, while
/// everything but the window goes on. True for yes; at once where there is no user to ask.
bool askToConfirm(QWidget *parent, const QString &title, const QString &text, const QString &yes);
/// A run without a user switches boxes off.
void setConfirmBoxesShown(bool shown);

} // namespace terminal
