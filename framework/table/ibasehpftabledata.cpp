#include "zb/ibasehpftabledata.h"

#include "kdservice/keyhash.h"

namespace ZB {

IBaseHpfTableData::IBaseHpfTableData() = default;
IBaseHpfTableData::~IBaseHpfTableData() = default;

quint64 IBaseHpfTableData::hashKey() const
{
    // Reading the key is a read although key() is no const function in the contract.
    return kdservice::hashOfKey(const_cast<IBaseHpfTableData *>(this)->key());
}

QString IBaseHpfTableData::qsKey()
{
    return QString::fromStdString(key());
}

QString IBaseHpfTableData::getFilterQString(int column)
{
    return getDisplayQString(column);
}

QString IBaseHpfTableData::getDisplayUnit(int)
{
    return QString();
}

QStringList IBaseHpfTableData::getIndexFromName() const
{
    return QStringList();
}

QString IBaseHpfTableData::getItemIconKey(int) const
{
    return QString();
}

QString IBaseHpfTableData::getItemIconTip(int) const
{
    return QString();
}

const QColor *IBaseHpfTableData::getBackgroundColor(int) const
{
    return nullptr;
}

double IBaseHpfTableData::getChangedValue(int)
{
    return 0;
}

bool IBaseHpfTableData::isFlashChange(int) const
{
    return true;
}

} // namespace ZB
