#include "pagemodel/chpfpagedata.h"

namespace KV {

CHpfPageData::CHpfPageData(const boost::shared_ptr<kdservice::IData> &data) : IData(data) {}

CHpfPageData::~CHpfPageData() = default;

CHpfPageData::CHpfPageData(const CHpfPageData &other) = default;

CHpfPageData &CHpfPageData::operator=(const CHpfPageData &other) = default;

} // namespace KV
