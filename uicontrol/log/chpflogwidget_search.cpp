#include <algorithm>
#include <iterator>
#include <limits>

#include "log/chpflogwidget.h"

namespace KV {

/// Hits and view count the same rows afterwards, however fast old lines leave the list.
CHpfLogWidget::Searched CHpfLogWidget::searchAll()
{
    updateScroll();
    Searched searched;
    CModelTextCache::ListState state;
    searched.pieces = cache->getPieces(filter(), 0, std::numeric_limits<int>::max(), &state);
    takeList(state);
    searched.hits = search.find(searched.pieces);
    lastMatchCount = static_cast<int>(searched.hits.starts.size());
    return searched;
}

void CHpfLogWidget::updateMatchCount()
{
    const std::vector<CLogSearch::Place> starts = searchAll().hits.starts;
    const auto shown = std::lower_bound(starts.begin(), starts.end(), foundPlace);
    const bool isThere = shown != starts.end() && !(foundPlace < *shown);
    lastMatchNumber = isThere ? static_cast<int>(shown - starts.begin()) + 1 : 0;
}

bool CHpfLogWidget::findText(const QString &text)
{
    search.setText(text);
    foundPlace = {};
    lastMatchNumber = 0;
    const CLogSearch::Hits hits = searchAll().hits;
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
    const Searched searched = searchAll();
    const std::vector<CLogSearch::Place> &starts = searched.hits.starts;
    if (starts.empty())
        return false;
    const CLogSearch::Place from = foundPlace.row < 0 ? CLogSearch::Place{topLine, -1} : foundPlace;
    auto next = std::upper_bound(starts.begin(), starts.end(), from);
    if (next == starts.end())
        next = starts.begin();
    lastMatchNumber = static_cast<int>(next - starts.begin()) + 1;
    return showHit(searched, *next);
}

bool CHpfLogWidget::findPrevious()
{
    const Searched searched = searchAll();
    const std::vector<CLogSearch::Place> &starts = searched.hits.starts;
    if (starts.empty())
        return false;
    const CLogSearch::Place from = foundPlace.row < 0 ? CLogSearch::Place{topLine, -1} : foundPlace;
    auto next = std::lower_bound(starts.begin(), starts.end(), from);
    if (next == starts.begin())
        next = starts.end();
    lastMatchNumber = static_cast<int>(next - starts.begin());
    return showHit(searched, *std::prev(next));
}

/// Selects the row of an occurrence and scrolls both ways until it can be seen.
bool CHpfLogWidget::showHit(const Searched &searched, const CLogSearch::Place &hit)
{
    foundPlace = hit;
    selectedLine = hit.row;
    selectAll = false;
    if (!isOnPage(hit.row))
        scrollTo(hit.row - 1);
    followTail = false; // or the next new line would take it away

    const QString &text = searched.pieces[static_cast<std::size_t>(hit.row)]->text;
    const int end = std::min(hit.column + search.text().size(), text.size());
    const int left = places->measure().widest(text.utf16(), hit.column, 0);
    const int right = places->measure().widest(text.utf16(), end, 0);
    if (left < hOffset || right > hOffset + geometry.textWidth())
        scrollAcross(left - geometry.textWidth() / 4);
    redraw();
    return true;
}

} // namespace KV
