#pragma once

#include <boost/shared_ptr.hpp>

#include "uicontrolexport.h"

namespace kdservice {
class IData;
}

namespace KV {

/// One record of a paged model with its place in the order of arrival. Copies share the host record.
///
/// Threading: belongs to its model once it was handed in, which changes it under the model's lock only; readers that
/// got one from the model may keep the record pointer, and ask the model again for later states.
class UICONTROL_API CHpfPageData
{
public:
    explicit CHpfPageData(const boost::shared_ptr<kdservice::IData> &data);
    virtual ~CHpfPageData();
    CHpfPageData(const CHpfPageData &other);
    CHpfPageData &operator=(const CHpfPageData &other);

    boost::shared_ptr<kdservice::IData> getIData() const { return IData; }
    void setIData(const boost::shared_ptr<kdservice::IData> &data) { IData = data; }
    /// 0 until a model stamps it.
    int getDataSeq() const { return dataSeq; }
    void setDataSeq(int sequence) { dataSeq = sequence; }

private:
    boost::shared_ptr<kdservice::IData> IData;
    int dataSeq = 0;
};

} // namespace KV
