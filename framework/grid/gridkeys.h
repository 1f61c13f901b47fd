#pragma once

#include <QtCore/Qt>

#include "grid/gridchooser.h"

class QKeyEvent;

namespace ZB {

class GridViewPrivate;

/// Turns keys into choices and requests. GUI thread.
///
/// Arrows, page keys, Home and End (columns; with Control rows) move the current cell and select its row; Control with
/// Up and Down moves without selecting. Shift extends: rows with the vertical keys, a block of cells once Shift+Left or
/// Shift+Right has begun one. Space selects the current row, Ctrl+Space adds it or takes it out. Ctrl+A, Ctrl+C (with
/// Shift: and the header), Enter as a double-click. For the current column: Ctrl+Shift+S sorts, Ctrl+Shift+D sorts by
/// it as well, Alt+Down opens the filter, Ctrl+Shift+Left and Right move it, Alt+Shift+Left and Right resize it.
class GridKeys
{
public:
    explicit GridKeys(GridViewPrivate &view);

    /// False for keys that mean nothing here. The view may be gone afterwards.
    bool press(const QKeyEvent &event);
    /// Whether a key is one for the current column's header: those come before the shortcuts of the window.
    bool isColumnKey(const QKeyEvent &event) const;

private:
    bool pressNavigation(int key, Qt::KeyboardModifiers modifiers);
    bool pressColumnKey(int key, Qt::KeyboardModifiers modifiers);
    bool pressCommand(int key, Qt::KeyboardModifiers modifiers);
    void goTo(const GridTarget &cell, bool sideways, bool quiet, bool extend);
    void moveColumn(int column, int step);
    qint64 placeFor(int key, bool control) const;
    int columnFor(int key) const;

    GridViewPrivate &view;
};

} // namespace ZB
