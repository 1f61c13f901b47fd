#include <algorithm>
#include <iterator>

#include "log/chpflogwidget.h"

namespace KV {

CLogSearch::Hits CHpfLogWidget::searchAll()
{
    const std::optional<int> level = filter();
    const CModelTextCache::ListState state = cache->getState(level);
    CLogSearch::Hits hits = search.find(cache->getPieces(level, 0, state.size));
    lastMatchCount = static_cast<int>(hits.starts.size());
    return hits;
}

void CHpfLogWidget::updateMatchCount()
{
    const CLogSearch::Hits hits = searchAll();
    const auto shown = std::lower_bound(hits.starts.begin(), hits.starts.end(), foundPlace);
    const bool isThere = shown != hits.starts.end() && !(foundPlace < *shown);
    lastMatchNumber = isThere ? static_cast<int>(shown - hits.starts.begin()) + 1 : 0;
}

bool CHpfLogWidget::findText(const QString &text)
{
    search.setText(text);
    foundPlace = {};
    lastMatchNumber = 0;
    const CLogSearch::Hits hits = searchAll();
    if (!hits.rows.empty()) {
        const int top = verticalBar->sliderPosition();
        const auto below = std::upper_bound(hits.rows.begin(), hits.rows.end(), top);
        const int row = below == hits.rows.end() ? hits.rows.back() : *below;
        if (row > geometry.pageLines() + top)
            verticalBar->setSliderPosition(row - 1);
        const auto start = std::lower_bound(hits.starts.begin(), hits.starts.end(), CLogSearch::Place{row, 0});
        if (start != hits.starts.end() && isOnPage(start->row)) { // one above the page is still to be shown
            foundPlace = *start;
            lastMatchNumber = static_cast<int>(start - hits.starts.begin()) + 1;
        }
    }
    redraw();
    return !hits.rows.empty();
}

bool CHpfLogWidget::findNext()
{
    updateScroll(); // what the list has gained and lost meanwhile
    const CLogSearch::Hits hits = searchAll();
    if (hits.starts.empty())
        return false;
    const CLogSearch::Place from = foundPlace.row < 0 ? CLogSearch::Place{topLine, -1} : foundPlace;
    auto next = std::upper_bound(hits.starts.begin(), hits.starts.end(), from);
    if (next == hits.starts.end())
        next = hits.starts.begin();
    lastMatchNumber = static_cast<int>(next - hits.starts.begin()) + 1;
    return showHit(*next);
}

bool CHpfLogWidget::findPrevious()
{
    updateScroll();
    const CLogSearch::Hits hits = searchAll();
    if (hits.starts.empty())
        return false;
    const CLogSearch::Place from = foundPlace.row < 0 ? CLogSearch::Place{topLine, -1} : foundPlace;
    auto next = std::lower_bound(hits.starts.begin(), hits.starts.end(), from);
    if (next == hits.starts.begin())
        next = hits.starts.end();
    lastMatchNumber = static_cast<int>(next - hits.starts.begin());
    return showHit(*std::prev(next));
}

/// Selects the row of an occurrence and scrolls both ways until it can be seen.
bool CHpfLogWidget::showHit(const CLogSearch::Place &hit)
{
    foundPlace = hit;
    selectedLine = hit.row;
    selectAll = false;
    if (!isOnPage(hit.row))
        scrollTo(hit.row - 1);
    followTail = false; // or the next new line would take it away

    const auto pieces = cache->getPieces(filter(), hit.row, 1);
    if (!pieces.empty()) {
        const QString &text = pieces.front()->text;
        const int left = places->measure().widest(text.utf16(), hit.column, 0);
        const int right =
            places->measure().widest(text.utf16(), std::min(hit.column + search.text().size(), text.size()), 0);
        if (left < hOffset || right > hOffset + geometry.textWidth())
            scrollAcross(left - geometry.textWidth() / 4);
    }
    redraw();
    return true;
}

} // namespace KV
