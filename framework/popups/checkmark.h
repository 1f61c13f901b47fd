#pragma once

#include <QtCore/QRect>
#include <QtCore/Qt>

class QPainter;

namespace ZB {

struct PopupLook;

/// Draws a check box of the theme into a square.
void paintCheckMark(QPainter &painter, const QRect &square, Qt::CheckState state, bool enabled, const PopupLook &look);

/// The side of such a square at the present scale.
int checkMarkSize();

} // namespace ZB
