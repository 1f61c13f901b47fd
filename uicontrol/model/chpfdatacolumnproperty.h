#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/Qt>

namespace KV {

/// What a table knows of one column besides its values. A value type.
struct CHpfDataColumnProperty
{
    QString name;                 ///< the header is made of it: the part before a single hyphen, or all of it
    int type = QVariant::Invalid; ///< QVariant::Type of the values
    int alignment = Qt::AlignHCenter | Qt::AlignVCenter;
    bool statEnable = false;   ///< summed in the statistics row
    bool flag8 = false;        ///< users may filter by it
    bool flag11 = false;       ///< bold
    bool flagDefaultOn = true; ///< offered in the list of columns
    int fieldId = -1;          ///< the record field that it shows; -1 for none
};

inline bool operator==(const CHpfDataColumnProperty &a, const CHpfDataColumnProperty &b)
{
    return a.name == b.name && a.type == b.type && a.alignment == b.alignment && a.statEnable == b.statEnable &&
           a.flag8 == b.flag8 && a.flag11 == b.flag11 && a.flagDefaultOn == b.flagDefaultOn && a.fieldId == b.fieldId;
}

inline bool operator!=(const CHpfDataColumnProperty &a, const CHpfDataColumnProperty &b)
{
    return !(a == b);
}

} // namespace KV
