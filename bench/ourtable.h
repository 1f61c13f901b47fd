#pragma once

#include <boost/shared_ptr.hpp>
#include <memory>
#include <vector>

#include "model/chpfthreaddatamodel.h"
#include "orderset.h"
#include "table/chpfdatatable.h"

namespace bench {

using Records = std::vector<boost::shared_ptr<kdservice::IData>>;

/// Our table over a threaded model, shown at the same size as the stock one.
struct OurTable
{
    OurTable();

    /// Shows what has changed, as the next frame would.
    void paint();
    /// Loads on the strand and handles events until all rows are there, then paints.
    void load(Records records);
    /// What a feed hands over for one frame.
    void update(const Records &records);
    /// The same records one by one, as callbacks deliver them.
    void updateEach(const Records &records);
    int column(int fieldId) const;
    int visibleCells() const;

    boost::shared_ptr<KV::CHpfThreadDataModel> model;
    std::unique_ptr<KV::CHpfDataTable> table;
};

} // namespace bench
