#pragma once

#include <functional>
#include <memory>

#include "rows/rowslots.h"
#include "rows/rowview.h"
#include "zb/ibasehpftablemodel.h"

namespace ZB {

/// The rows of a model and their present order.
struct HpfModelContent
{
    using Row = IBaseHpfTableModel::Row;

    HpfModelContent(const core::Arrangement &arrangement, quint32 lastGeneration)
        : slots(lastGeneration), view(std::make_unique<core::RowView>(arrangement))
    {
    }

    using Slots = core::RowSlots<Row>;

    Slots slots;
    std::unique_ptr<core::RowView> view;

    /// Destroys the content: a few rows at once, many on a thread in the background. There the last of them is handed
    /// to the GUI thread, since it may take the model along.
    static void release(std::unique_ptr<HpfModelContent> content);
    /// Destroys a view that was replaced, in the background when it is a large one.
    static void release(std::unique_ptr<core::RowView> view);
};

} // namespace ZB
