// This program has no accounts and no list of instruments: the controls that show them stay empty.

#include "kv/caccountdata.h"
#include "kv/instrumentlist.h"
#include "kv/instrumentlookup.h"

namespace KV {

CAccountData::CAccountData() = default;
CAccountData::~CAccountData() = default;

CAccountData *getAccountData()
{
    return nullptr;
}

std::vector<InstrumentItem> getInstrumentList()
{
    return {};
}

quint64 getInstrumentListVersion()
{
    return 0;
}

InstrumentText getInstrumentText(const std::string &)
{
    return {};
}

QString getExOptName(const std::string &)
{
    return QString();
}

} // namespace KV
