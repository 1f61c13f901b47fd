#pragma once

#include <QtCore/QString>

class QWidget;

namespace terminal {

/// What Enter does, by which a key that is held down answers too.
enum class EnterMeans
{
    Yes,
    No
};
/// Asks whether something is to be done, over `parent`; Escape does not agree. Waits for the answer, while everything
/// but the window goes on. True for yes; at once where there is no user to ask.
bool askToConfirm(QWidget *parent, const QString &title, const QString &text, const QString &yes,
                  EnterMeans enter = EnterMeans::Yes);
/// A run without a user switches boxes off.
void setConfirmBoxesShown(bool shown);

} // namespace terminal
