#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

#include "checks.h"
#include "zb/ceventwidgett.h"
#include "zb/cstandscrollbar.h"

namespace conformance {

namespace {

/// Notes what passes it.
class Listener : public ZB::CEventWidgetT<QWidget>
{
public:
    Listener(const QString &listenerName, QStringList &noteList, QWidget *parent)
        : ZB::CEventWidgetT<QWidget>(parent), name(listenerName), notes(&noteList)
    {
    }

    bool handleEvent(int event, int first, int second, QString text, void *pointer) override
    {
        *notes += QStringLiteral("%1:%2,%3,%4,%5,%6")
                      .arg(name)
                      .arg(event)
                      .arg(first)
                      .arg(second)
                      .arg(text, pointer == notes ? QStringLiteral("own") : QStringLiteral("other"));
        delete victim.data();
        return ends;
    }

    bool ends = false;
    QPointer<QWidget> victim; ///< destroyed while the event is here

private:
    QString name;
    QStringList *notes;
};

void checkTrip(Report &report)
{
    const QString subject = QStringLiteral("ZB::CEventDeliverer::deliverEvent");
    QStringList notes;
    Listener window(QStringLiteral("window"), notes, nullptr);
    Listener panel(QStringLiteral("panel"), notes, &window);
    QWidget plain(&panel);
    Listener control(QStringLiteral("control"), notes, &plain);

    bool taken = control.deliverEvent(1128, 1, -2, QStringLiteral("文"), &notes);
    report.expectText(subject, notes.join(' '),
                      QStringLiteral("control:1128,1,-2,文,own panel:1128,1,-2,文,own window:1128,1,-2,文,own"));
    report.expect(!taken, subject, QStringLiteral("true although nobody dealt with the event"));

    notes.clear();
    panel.ends = true;
    taken = control.deliverEvent(5, 7, 0, QString(), &notes);
    report.expectText(subject, notes.join(' '), QStringLiteral("control:5,7,0,,own panel:5,7,0,,own"));
    report.expect(taken, subject, QStringLiteral("false although the event was dealt with"));

    notes.clear();
    panel.ends = false;
    auto *shortLived = new Listener(QStringLiteral("button"), notes, &panel);
    panel.victim = shortLived;
    shortLived->deliverEvent(5, 1, 0, QString(), &notes);
    report.expectText(subject + QStringLiteral(" of a sender that is destroyed on the way"), notes.join(' '),
                      QStringLiteral("button:5,1,0,,own panel:5,1,0,,own"));
}

void checkScrollBar(Report &report)
{
    const QString subject = QStringLiteral("event 17 of ZB::CStandScrollBar");
    QStringList notes;
    Listener parent(QStringLiteral("parent"), notes, nullptr);
    ZB::CStandScrollBar bar(1, Qt::Vertical, &parent);
    bar.setRange(0, 100);
    notes.clear();
    bar.setSliderPosition(42);
    const QString got = notes.join(' ');
    report.expect(got.startsWith(QLatin1String("parent:17,1,")), subject,
                  QStringLiteral("\"%1\" instead of \"parent:17,1,...\" once the position is set").arg(got));
    report.expect(bar.sliderPosition() == 42, subject, QStringLiteral("the position was not taken"));
    notes.clear();
    bar.setSliderPosition(42);
    report.expectText(subject + QStringLiteral(" when the position stays"), notes.join(' '), QString());
}

} // namespace

Findings checkEvents()
{
    Report report;
    checkTrip(report);
    checkScrollBar(report);
    return report.take();
}

} // namespace conformance
