#include "table/tablefind.h"

#include "grid/gridview.h"
#include "popups/findbar.h"
#include "table/tablerows.h"

namespace ZB {

namespace {

constexpr int progressMilliseconds = 200;

} // namespace

TableFind::TableFind(GridView *gridView, FindBar *findBar, const TableRows &tableSource)
    : grid(gridView), bar(findBar), source(tableSource), finder(tableSource)
{
    progress.setInterval(progressMilliseconds);
    connect(&progress, &QTimer::timeout, this, &TableFind::showProgress);
    connect(bar, &FindBar::textChanged, this, &TableFind::textChanged);
    connect(bar, &FindBar::findRequested, this, &TableFind::findNext);
    connect(bar, &FindBar::closed, this, &TableFind::close);
    connect(&finder, &TableFinder::found, this, &TableFind::showHit);
    connect(&finder, &TableFinder::notFound, this, &TableFind::showMiss);
}

void TableFind::open()
{
    bar->show();
    bar->activate();
    grid->setMarkedText(bar->text());
}

void TableFind::close()
{
    cancel();
    bar->hide();
    bar->setState(QString());
    grid->setMarkedText(QString());
    grid->setFocus();
}

void TableFind::findNext(bool forward)
{
    if (bar->text().isEmpty())
        open();
    else
        find(bar->text(), forward, false);
}

/// Typing stays on a cell that still fits.
void TableFind::textChanged(const QString &text)
{
    grid->setMarkedText(text);
    find(text, true, true);
}

void TableFind::find(const QString &text, bool forward, bool includeCurrent)
{
    cancel();
    if (text.isEmpty()) {
        bar->setState(QString());
        return;
    }
    TableFinder::Search search;
    search.text = text;
    search.columns = grid->visibleColumns();
    search.row = grid->currentRow();
    search.column = grid->currentColumn();
    search.forward = forward;
    search.includeStart = includeCurrent;
    if (search.row == NoGridRow) {
        search.row = source.idAt(grid->firstVisibleRow());
        search.includeStart = true;
    }
    finder.start(search);
    progress.start();
}

void TableFind::cancel()
{
    progress.stop();
    finder.cancel();
}

void TableFind::showHit(quint64 row, int column, bool wrapped)
{
    progress.stop();
    bar->setState(wrapped ? QStringLiteral("已从另一端继续") : QString());
    grid->setCurrent(row, column);
    grid->scrollTo(row);
    grid->scrollToColumn(column);
}

void TableFind::showMiss()
{
    progress.stop();
    bar->setState(QStringLiteral("没有找到"), true);
}

void TableFind::showProgress()
{
    bar->setState(QStringLiteral("正在查找 %1%").arg(finder.progress() / 10));
}

} // namespace ZB
