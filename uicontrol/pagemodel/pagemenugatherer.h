#pragma once

#include <QtCore/QStringList>
#include <optional>

#include "pagemodel/pagemenu.h"

namespace KV {

class CHpfPageDataModel;

/// Gathers the menu texts of a paged model's column in slices. Records that change meanwhile are seen or not; when the
/// columns change it starts again.
///
/// Threading: one thread; the model may change on any. The model must outlive it.
class PageMenuGatherer
{
public:
    PageMenuGatherer(const CHpfPageDataModel &pageModel, int columnId);

    int column() const { return menuColumn; }
    /// Goes on for about as many milliseconds; true when the texts of all records stand in order.
    bool step(int milliseconds);
    /// In thousandths.
    int progress() const;
    /// What CHpfPageDataModel::getMenuItems() answers, once step() is done; call it once.
    QStringList items() { return menu->items(); }

private:
    /// False when there were no more records.
    bool readPiece();

    const CHpfPageDataModel &model;
    const int menuColumn;
    std::optional<PageMenu> menu; ///< made with the first piece
    quint64 columnsRevision = 0;  ///< of the columns that it was made for
    quint32 next = 0;
    quint32 limit = 0;
    bool allRead = false;
    bool finished = false;
};

} // namespace KV
