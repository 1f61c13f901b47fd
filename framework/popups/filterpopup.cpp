#include "popups/filterpopup.h"

#include <QtCore/QHash>
#include <QtCore/QPointer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <algorithm>

#include "filter/valuefilter.h"
#include "popups/checklist.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int sliceMilliseconds = 8;

QString shownText(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("(空白)") : text;
}

/// An exact condition without texts is none to it.
core::ValueFilter matcherOf(const FilterConditions &conditions)
{
    core::ValueFilter matcher;
    for (const FilterCondition &condition : conditions)
        matcher.narrow(condition.first, condition.second);
    return matcher;
}

} // namespace

FilterPopup::FilterPopup(int column, const QString &title, const FilterConditions &presentFilter,
                         std::unique_ptr<DistinctTexts> texts, QWidget *parent)
    : PopupFrame(parent), filterColumn(column), present(presentFilter), gatherer(std::move(texts))
{
    build(title);
    connect(&step, &QTimer::timeout, this, &FilterPopup::gatherOn);
    step.start(0);
    updateState();
}

FilterPopup::~FilterPopup() = default;

int FilterPopup::column() const
{
    return filterColumn;
}

/// Whether the present filter is one condition of this type.
bool FilterPopup::isPresent(EFilterType type) const
{
    return present.size() == 1 && present.first().first == type;
}

void FilterPopup::setCountsShown(bool shown)
{
    countsShown = shown;
}

bool FilterPopup::isGathered() const
{
    return gatherer && !step.isActive();
}

QStringList FilterPopup::texts() const
{
    QStringList all;
    if (gatherer)
        for (const DistinctTexts::Value &value : gatherer->values())
            all.append(value.text);
    return all;
}

void FilterPopup::abandon()
{
    step.stop();
    disconnect(this, &FilterPopup::gathered, nullptr, nullptr);
    disconnect(this, &FilterPopup::chosen, nullptr, nullptr);
    gatherer.reset();
    PopupFrame::abandon();
}

void FilterPopup::gatherOn()
{
    if (!gatherer->step(sliceMilliseconds)) {
        list->setEmptyText(QStringLiteral("正在读取 %1%").arg(gatherer->progress() / 10));
        return;
    }
    step.stop();
    list->setEmptyText(QStringLiteral("没有匹配的取值"));
    const QPointer<FilterPopup> self(this);
    offered = false;
    Q_EMIT gathered();
    if (self && gatherer && !offered)
        setTexts(texts());
}

/// A value that the filter holds is offered also where no row has it any more, or applying would lose it.
QStringList FilterPopup::withFiltered(QStringList texts) const
{
    QSet<QString> missing;
    for (const FilterCondition &condition : present)
        if (condition.first != FilterContains)
            missing += condition.second;
    for (const QString &text : qAsConst(texts))
        missing.remove(text);
    QStringList rest = missing.values();
    rest.sort();
    return texts + rest;
}

/// Nearly always the texts are those that were gathered, in their order.
std::vector<int> FilterPopup::countsOf(const QStringList &texts) const
{
    const std::vector<DistinctTexts::Value> &values = gatherer->values();
    QHash<QString, int> elsewhere;
    std::vector<int> counts;
    counts.reserve(std::size_t(texts.size()));
    for (const QString &text : texts) {
        const std::size_t place = counts.size();
        if (place < values.size() && values[place].text == text) {
            counts.push_back(values[place].count);
            continue;
        }
        if (elsewhere.isEmpty())
            for (const DistinctTexts::Value &value : values)
                elsewhere.insert(value.text, value.count);
        counts.push_back(elsewhere.value(text));
    }
    return counts;
}

void FilterPopup::setTexts(const QStringList &wanted)
{
    offered = true;
    const QStringList texts = withFiltered(wanted);
    const std::vector<int> counts = countsOf(texts);
    const bool byText = isPresent(FilterContains);
    const bool passesNone = isPresent(FilterExact) && present.first().second.isEmpty();
    const core::ValueFilter matcher = matcherOf(present);
    std::vector<CheckItem> items;
    items.reserve(std::size_t(texts.size()) + 1);
    textOfItem.assign(texts.begin(), texts.end());
    QString note; // shared by neighbours: a hundred thousand single values need one
    for (const QString &text : texts) {
        const std::size_t place = items.size();
        if (countsShown && (place == 0 || counts[place] != counts[place - 1]))
            note = QStringLiteral("%L1").arg(counts[place]);
        items.push_back({shownText(text), note, byText || (!passesNone && matcher.passes(text)), int(place)});
    }
    if (const bool except = isPresent(FilterExcept); gatherer->isTruncated() || except)
        items.push_back(
            {QStringLiteral("（其余未列出的取值）"), QString(), present.isEmpty() || except || byText, restItem});
    offeredChecks.clear();
    for (const CheckItem &item : items)
        offeredChecks.push_back(item.checked);
    list->setFixedHeight(list->lineHeight() * std::clamp(int(items.size()), fewestLines, mostLines));
    list->setItems(std::move(items));
    updateState();
    if (isVisible())
        fit();
}

QSet<QString> FilterPopup::checkedTexts() const
{
    QSet<QString> checked;
    for (const int index : list->shownItems()) {
        const CheckItem &item = list->items()[std::size_t(index)];
        if (item.checked && item.id != restItem)
            checked.insert(textOfItem[std::size_t(item.id)]);
    }
    return checked;
}

bool FilterPopup::isRestChecked() const
{
    const auto &shown = list->shownItems();
    const CheckItem *last = shown.empty() ? nullptr : &list->items()[std::size_t(shown.back())];
    return last && last->id == restItem && last->checked;
}

void FilterPopup::updateState()
{
    const bool byText = !contains->text().trimmed().isEmpty();
    const auto &shown = list->shownItems();
    const auto checked = std::count_if(shown.begin(), shown.end(),
                                       [this](int index) { return list->items()[std::size_t(index)].checked; });
    QString text = QStringLiteral("已选 %L1 / %L2").arg(checked).arg(shown.size());
    if (!isGathered())
        text = QStringLiteral("正在读取…");
    else if (gatherer->isTruncated())
        text += QStringLiteral("（取值过多，未全部列出）");
    state->setText(text);
    list->setEnabled(!byText);
    for (QPushButton *button : choiceButtons)
        button->setEnabled(!byText && isGathered());
    accept->setEnabled(byText || (isGathered() && checked > 0));
    remove->setEnabled(!present.isEmpty());
}

bool FilterPopup::isUntouched() const
{
    const std::vector<CheckItem> &items = list->items();
    return contains->text() == presentWords && search->text().isEmpty() &&
           std::equal(items.begin(), items.end(), offeredChecks.begin(), offeredChecks.end(),
                      [](const CheckItem &item, bool checked) { return item.checked == checked; });
}

/// Everything chosen means no filter, so that values which come later show too. With the values that are not listed
/// chosen, those that are not chosen are the filter. What was left as it is stays so: a filter may be one that the box
/// can tell but not make, and other filters may leave nothing else to choose.
void FilterPopup::apply()
{
    if (isUntouched()) {
        close();
        return;
    }
    QSet<QString> values;
    for (const QString &word : contains->text().split(QLatin1Char(' '), Qt::SkipEmptyParts))
        values.insert(word);
    if (!values.isEmpty())
        return finish(FilterContains, values);
    if (!accept->isEnabled())
        return;
    values = checkedTexts();
    if (isRestChecked())
        return finish(FilterExcept, QSet<QString>(textOfItem.begin(), textOfItem.end()) - values);
    finish(FilterExact, values.size() == int(list->items().size()) ? QSet<QString>() : values);
}

void FilterPopup::takeOff()
{
    finish(FilterExact, QSet<QString>());
}

/// The receiver may close popups, this one included, while it filters.
void FilterPopup::finish(int type, const QSet<QString> &values)
{
    close();
    Q_EMIT chosen(type, values);
}

void FilterPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        apply();
    else
        PopupFrame::keyPressEvent(event);
}

bool FilterPopup::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == search && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down) {
        list->setFocus();
        return true;
    }
    return PopupFrame::eventFilter(watched, event);
}

} // namespace ZB
