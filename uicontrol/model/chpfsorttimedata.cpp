#include "model/chpfsorttimedata.h"

#include "model/chpfdatamodel.h"

namespace KV {

CHpfSortTimeData::CHpfSortTimeData(const RecordPtr &data, const QMap<int, int> &fieldColumnMap,
                                   boost::shared_ptr<CHpfDataModel> model)
    : CHpfData(data, fieldColumnMap, std::move(model))
{
}

CHpfSortTimeData::~CHpfSortTimeData() = default;

QString CHpfSortTimeData::getQString(int column)
{
    return CHpfData::getQString(column);
}

} // namespace KV
