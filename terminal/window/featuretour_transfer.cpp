#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <algorithm>

#include "grid/gridview.h"
#include "popups/taskstrip.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "window/featuretour.h"
#include "window/mainwindow.h"
#include "window/touredtable.h"
#include "window/tourwait.h"
#include "window/userhand.h"
#include "zb/messagebox.h"

namespace terminal {

using namespace refhost;

namespace {

constexpr int workingTime = 10000; ///< milliseconds, far more than it takes
const Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;

bool isBusy(const TouredTable &table)
{
    const auto strips = table.grid().findChildren<ZB::TaskStrip *>();
    return std::any_of(strips.begin(), strips.end(), [](const ZB::TaskStrip *strip) { return strip->isVisible(); });
}

QFileDialog *saveBox()
{
    return qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
}

/// Boxes that tell of an end are shown for as long as it lives, though nobody is there to close them.
class BoxesShown
{
public:
    BoxesShown() { ZB::setMessageBoxesShown(true); }
    ~BoxesShown() { ZB::setMessageBoxesShown(false); }
};

} // namespace

/// Starts a long work; the picture is taken as soon as its progress is shown, and then the user stops it. What is over
/// too soon for that is shown done.
void FeatureTour::takeWhileBusy(TouredTable &table, const std::function<void()> &start,
                                const std::function<bool()> &isOver)
{
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        if (taken || !isBusy(table))
            return;
        take();
        table.grid().setFocus();
        UserHand::key(Qt::Key_Escape);
    });
    watch.start(1);
    start();
    waitFor([&] { return taken || isOver(); }, workingTime);
}

void FeatureTour::copying()
{
    QGuiApplication::clipboard()->clear();
    focusCell(*deals, 0, DealCode);
    UserHand::key(Qt::Key_A, Qt::ControlModifier);
    takeWhileBusy(
        *deals, [] { UserHand::key(Qt::Key_C, Qt::ControlModifier); },
        [] { return !QGuiApplication::clipboard()->text().isEmpty(); });
}

void FeatureTour::exportBox()
{
    bringMiddle();
    focusCell(*deals, 0, DealCode);
    UserHand::key(Qt::Key_E, controlShift);
    if (QFileDialog *box = saveBox())
        box->setDirectory(QDir::tempPath());
}

void FeatureTour::exporting()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("deals.xlsx"));
    focusCell(*deals, 0, DealCode);
    UserHand::key(Qt::Key_E, controlShift);
    const auto save = [&path] {
        if (QFileDialog *box = saveBox()) {
            box->selectFile(path);
            UserHand::pushButton(box, QStringLiteral("保存"));
        }
    };
    takeWhileBusy(*deals, save, [&path] { return QFile::exists(path); });
}

void FeatureTour::exported()
{
    const BoxesShown shown;
    QTemporaryDir folder;
    focusCell(*orders, 0, OrderCode);
    UserHand::key(Qt::Key_E, controlShift);
    bringMiddle();
    if (QFileDialog *box = saveBox()) {
        box->selectFile(folder.filePath(QStringLiteral("orders.xlsx")));
        UserHand::pushButton(box, QStringLiteral("保存"));
        waitFor([] { return QApplication::activeModalWidget() && saveBox() == nullptr; }, workingTime);
    }
    take();
    tidy();
}

} // namespace terminal
