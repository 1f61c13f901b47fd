#include <algorithm>

#include "order/cquotesgraphwidget.h"

namespace KV {

namespace {

/// Milliseconds between two looks at the clock.
constexpr int ageStep = 500;

} // namespace

void CQuotesGraphWidget::setSilenceLimit(int milliseconds)
{
    silenceLimit = std::max(milliseconds, 0);
    updateAge();
}

void CQuotesGraphWidget::setFeedCut(bool cut)
{
    feedCut = cut;
    updateAge();
}

void CQuotesGraphWidget::setQuoteAge(qint64 milliseconds)
{
    ageWhenGiven = std::max<qint64>(milliseconds, 0);
    updateAge();
}

/// Milliseconds; only for a quote that was given.
qint64 CQuotesGraphWidget::quoteAge() const
{
    return ageWhenGiven + sinceSnapshot.elapsed();
}

bool CQuotesGraphWidget::isStale() const
{
    return feedCut || (silenceLimit > 0 && sinceSnapshot.isValid() && quoteAge() > silenceLimit);
}

QString CQuotesGraphWidget::ageText() const
{
    if (!isStale())
        return {};
    if (!sinceSnapshot.isValid())
        return QStringLiteral("行情中断");
    const QString age = quotevalue::ageText(quoteAge() / 1000);
    return feedCut ? QStringLiteral("行情中断 %1").arg(age) : QStringLiteral("%1未更新").arg(age);
}

/// Looks at the clock as long as it can change what is shown: with a limit or a cut, and something that grows old.
void CQuotesGraphWidget::updateAge()
{
    const bool watching = sinceSnapshot.isValid() && (silenceLimit > 0 || feedCut);
    if (watching != ageTimer.isActive()) {
        if (watching)
            ageTimer.start(ageStep, this);
        else
            ageTimer.stop();
    }
    const QString age = ageText();
    const bool grey = !age.isEmpty() || !isEnabled();
    if (age == view.age && grey == view.grey)
        return;
    view.age = age;
    view.grey = grey;
    update();
}

} // namespace KV
