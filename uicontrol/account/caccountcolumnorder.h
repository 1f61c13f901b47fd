#pragma once

#include <QtCore/QStringList>

#include "account/accountlistcolumn.h"

namespace KV {

/// The columns of an account list and the rules of arranging them: locked ones stand in front, shown and unmoved, and
/// at least one column is shown. Places are indexes into columns(); what a rule forbids changes nothing and answers
/// false or -1. Any thread, one at a time.
class UICONTROL_API CAccountColumnOrder
{
public:
    /// How the columns start out. Columns after them in the same place keep to the rules.
    void setDefaults(const QVector<CAccountListColumn> &columns);
    /// The columns as somebody else has arranged them; those that are not among the defaults are left out, those that
    /// are missing keep the place behind their left neighbour among the defaults.
    void setColumns(const QVector<CAccountListColumn> &columns);
    const QVector<CAccountListColumn> &columns() const { return list; }
    int lockedCount() const;
    bool isDefault() const { return list == defaults; }

    bool setVisible(int place, bool visible);
    /// A column that is locked becomes the last of the locked ones, one that is unlocked the first of the others.
    /// Returns its new place, -1 when nothing changed.
    int setLocked(int place, bool locked);
    /// Puts a column in front of the one at `gap` (the number of columns for the end), among the unlocked ones.
    /// Returns its new place, -1 when nothing changed.
    int move(int place, int gap);
    void restoreDefaults();

    /// @name The arrangement as texts, a column each
    /// @{
    /// Empty for the default, so that a later program's default shows.
    QStringList saved() const;
    /// Takes what fits the columns there are and ignores the rest. Lines of columns that are not there now are kept
    /// for saved().
    void restore(const QStringList &lines);
    /// @}

private:
    void complete();
    bool isPlace(int place) const { return place >= 0 && place < list.size(); }

    QVector<CAccountListColumn> defaults;
    QVector<CAccountListColumn> list;
    QStringList absent; ///< saved lines of columns that there are not
};

} // namespace KV
