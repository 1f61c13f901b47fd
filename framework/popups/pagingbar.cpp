#include "popups/pagingbar.h"

#include <QtGui/QPainter>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <algorithm>
#include <utility>

#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int pageSizes[] = {50, 100, 200, 500, 1000};

} // namespace

PagingBar::PagingBar(QWidget *parent) : QWidget(parent)
{
    auto *row = tightRow(this);
    const auto button = [this, row](const QString &text, auto target) {
        QPushButton *made = linkButton(text, this);
        connect(made, &QPushButton::clicked, this, [this, target] { goTo(target()); });
        row->addWidget(made);
        return made;
    };
    first = button(QStringLiteral("首页"), [] { return 0; });
    previous = button(QStringLiteral("上一页"), [this] { return page() - 1; });
    row->addWidget(new QLabel(QStringLiteral("第"), this));
    number = new QSpinBox(this);
    number->setButtonSymbols(QAbstractSpinBox::NoButtons);
    number->setKeyboardTracking(false);
    number->setAccessibleName(QStringLiteral("页码"));
    row->addWidget(number);
    pages = new QLabel(this);
    row->addWidget(pages);
    next = button(QStringLiteral("下一页"), [this] { return page() + 1; });
    last = button(QStringLiteral("末页"), [this] { return pageCount() - 1; });
    row->addStretch();
    count = dimLabel(QString(), this);
    row->addWidget(count);
    size = comboBox(this);
    size->setAccessibleName(QStringLiteral("每页行数"));
    for (const int each : pageSizes)
        size->addItem(QStringLiteral("%1 行/页").arg(each), each);
    showRowsPerPage();
    row->addWidget(size);
    connect(number, QOverload<int>::of(&QSpinBox::valueChanged), this, [this](int value) { goTo(value - 1); });
    connect(size, QOverload<int>::of(&QComboBox::activated), this,
            [this] { setRowsPerPage(size->currentData().toInt()); });
    setLook(PopupLook::fromResources());
    updateState();
    hide();
}

void PagingBar::setTotalCount(int newTotal)
{
    if (total == newTotal)
        return;
    total = std::max(0, newTotal);
    const bool beyond = firstIndex > 0 && firstIndex >= total;
    if (beyond && !atEnd)
        goToLast();
    else if (atEnd && (!held || firstIndex + rows > total))
        catchUp();
    else
        updateState();
}

void PagingBar::setPage(int newFirst, int newRows, int newTotal)
{
    total = std::max(0, newTotal);
    firstIndex = std::max(0, newFirst);
    if (newRows > 0) {
        rows = newRows;
        showRowsPerPage();
    }
    atEnd = followsEnd && newRows > 0 && firstIndex == std::max(0, total - rows);
    updateState();
}

int PagingBar::totalCount() const
{
    return total;
}

int PagingBar::rowsPerPage() const
{
    return rows;
}

int PagingBar::page() const
{
    return atEnd && missedRows() == 0 ? pageCount() - 1 : firstIndex / rows;
}

int PagingBar::pageCount() const
{
    return std::max(1, int((qint64(total) + rows - 1) / rows));
}

void PagingBar::setFollowsEnd(bool follows)
{
    if (followsEnd == follows)
        return;
    const bool onLast = page() == pageCount() - 1;
    followsEnd = follows;
    atEnd = follows && onLast;
    if (atEnd)
        catchUp();
}

bool PagingBar::isAtEnd() const
{
    return atEnd;
}

void PagingBar::setHeld(bool hold)
{
    if (std::exchange(held, hold) && !hold && atEnd)
        catchUp();
}

int PagingBar::missedRows() const
{
    return atEnd ? std::max(0, total - firstIndex - rows) : 0;
}

int PagingBar::enter(int page)
{
    atEnd = followsEnd && page >= pageCount() - 1;
    return atEnd ? std::max(0, total - rows) : std::clamp(page, 0, pageCount() - 1) * rows;
}

void PagingBar::goTo(int page)
{
    firstIndex = enter(page);
    updateState();
    Q_EMIT pageRequested(firstIndex, rows);
}

void PagingBar::goToFirst()
{
    if (firstIndex > 0)
        goTo(0);
}

/// Asks only where the last page begins elsewhere than the one that is shown.
void PagingBar::catchUp()
{
    const int before = std::exchange(firstIndex, enter(pageCount() - 1));
    updateState();
    if (firstIndex != before)
        Q_EMIT pageRequested(firstIndex, rows);
}

/// A number that is not offered shows all the same.
void PagingBar::showRowsPerPage()
{
    size->setPlaceholderText(QStringLiteral("%1 行/页").arg(rows));
    size->setCurrentIndex(size->findData(rows));
}

/// The first row that is shown stays on the page.
void PagingBar::setRowsPerPage(int newRows)
{
    if (rows == newRows)
        return;
    rows = newRows;
    goTo(atEnd ? pageCount() - 1 : firstIndex / rows);
}

void PagingBar::updateState()
{
    const QSignalBlocker quiet(number);
    const int current = page();
    number->setRange(1, pageCount());
    number->setValue(current + 1);
    pages->setText(QStringLiteral("/ %1 页").arg(pageCount()));
    count->setText(QStringLiteral("共 %L1 条").arg(total));
    for (QPushButton *back : {first, previous})
        back->setEnabled(current > 0);
    for (QPushButton *forth : {next, last})
        forth->setEnabled(current + 1 < pageCount());
}

void PagingBar::setLook(const PopupLook &popupLook)
{
    look = popupLook;
    setFont(look.font);
    setStyleSheet(look.sheet());
    layout()->setContentsMargins(scaled(8), scaled(4), scaled(8), scaled(4));
    layout()->setSpacing(scaled(6));
    number->setFixedWidth(scaled(64));
}

void PagingBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), look.raised);
    painter.fillRect(0, 0, width(), 1, look.border);
}

} // namespace ZB
