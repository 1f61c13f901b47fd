#pragma once

#include <QtCore/QRect>
#include <QtGui/QImage>
#include <boost/shared_ptr.hpp>
#include <memory>
#include <vector>

#include "model/chpfthreaddatamodel.h"
#include "orderset.h"
#include "table/chpfdatatable.h"

namespace ZB {
class GridView;
}

namespace bench {

using Records = std::vector<boost::shared_ptr<kdservice::IData>>;

/// A cell of which at least a part is on the screen.
struct OurCell
{
    int row; ///< as shown, from 0
    int column;
    QRect place; ///< in the grid
};

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
    /// Row by row.
    std::vector<OurCell> cells() const;
    /// The record of a row as shown, from 0.
    boost::shared_ptr<kdservice::IData> recordAt(int row) const;
    /// The grid as it is on the screen.
    QImage picture() const;

    boost::shared_ptr<KV::CHpfThreadDataModel> model;
    std::unique_ptr<KV::CHpfDataTable> table;
    ZB::GridView *grid; ///< the table's
};

} // namespace bench
