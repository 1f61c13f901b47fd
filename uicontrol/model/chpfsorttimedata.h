#pragma once

#include "model/chpfdata.h"

namespace KV {

/// A row of a table sorted by time. Behaves like any row; a type of its own tells such rows apart.
class UICONTROL_API CHpfSortTimeData : public CHpfData
{
public:
    CHpfSortTimeData(const RecordPtr &data, const QMap<int, int> &fieldColumnMap,
                     boost::shared_ptr<CHpfDataModel> model);
    ~CHpfSortTimeData() override;

    QString getQString(int column) override;
};

} // namespace KV
