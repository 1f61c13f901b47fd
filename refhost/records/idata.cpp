#include "kdservice/idata.h"

#include "kdservice/cdealdetailv2.h"
#include "kdservice/corderdetailv2.h"
#include "kdservice/keyhash.h"

namespace kdservice {

IData::IData() = default;
IData::~IData() = default;

quint64 IData::hashKey() const
{
    return hashOfKey(getKey());
}

COrderDetailV2::COrderDetailV2() = default;
COrderDetailV2::~COrderDetailV2() = default;

CDealDetailV2::CDealDetailV2() = default;
CDealDetailV2::~CDealDetailV2() = default;

} // namespace kdservice
