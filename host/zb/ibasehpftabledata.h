#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <string>

#include "hostexport.h"

class QColor;

namespace ZB {

/// One row of a high-volume table, asked cell by cell.
///
/// Threading: rows are made, read and replaced on the GUI thread and on the strand of bulk loads; an implementation
/// locks for itself. Columns are those of the row's model, from 0; a column without a value answers with an empty text,
/// 0 and the default colour.
/// Ownership: held by boost::shared_ptr. The order of the virtual functions is part of the contract.
class HOST_API IBaseHpfTableData
{
public:
    IBaseHpfTableData();
    virtual ~IBaseHpfTableData();

    IBaseHpfTableData(const IBaseHpfTableData &) = delete;
    IBaseHpfTableData &operator=(const IBaseHpfTableData &) = delete;

    /// The text drawn in the cell.
    virtual QString getDisplayQString(int column) = 0;
    /// The raw text, for copying, export and sorting by text.
    virtual QString getQString(int column) = 0;
    virtual int getInt(int column) = 0;
    virtual double getDouble(int column) = 0;
    virtual qint64 getLongLong(int column) = 0;
    /// The text colour; never null, owned by the resource service.
    virtual const QColor *getColor(int column) = 0;
    /// The row's unique key; empty for a row without a record.
    virtual std::string key() = 0;

    /// kdservice::hashOfKey of key() unless overridden.
    virtual quint64 hashKey() const;
    /// The key as a display string: key() read as UTF-8 unless overridden. Extra values are kept under it.
    virtual QString qsKey();
    /// The text that column filters match; getDisplayQString unless overridden.
    virtual QString getFilterQString(int column);
    /// A unit shown behind the text in a slot of its own; empty unless overridden.
    virtual QString getDisplayUnit(int column);
    /// Names under which a search finds the row besides its cell texts; empty unless overridden.
    virtual QStringList getIndexFromName() const;
    /// Resource key of an icon shown in front of the text; empty (no icon) unless overridden.
    virtual QString getItemIconKey(int column) const;
    /// The icon's tool tip; empty unless overridden.
    virtual QString getItemIconTip(int column) const;
    /// A background for the cell, or null for the table's own.
    virtual const QColor *getBackgroundColor(int column) const;
    /// By how much the cell's value changed last; 0 unless overridden. Its sign chooses the flash colour.
    virtual double getChangedValue(int column);
    /// Whether this row's cell flashes when it changes; true unless overridden (the column decides too).
    virtual bool isFlashChange(int column) const;
};

} // namespace ZB
