#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>
#include <random>
#include <vector>

#include "records/record.h"
#include "soak/briefpanels.h"
#include "soak/processfigures.h"
#include "soak/watchedapplication.h"
#include "window/stallmeter.h"

namespace KV {
class CHpfDataTable;
class CHpfLogWidget;
class CQuotesPricesList;
} // namespace KV

namespace soak {

/// A trading day in a few seconds, again and again: a table that changes under a sort and a filter, a log at full rate,
/// a ladder, and every tenth of a second something that the user or the program does: another filter, another sort, the
/// other theme, another scale, a table that is opened, loaded on the strand and closed, a search, a cleared log, boxes
/// and tables that come and go.
class SoakDay : public QWidget
{
    Q_OBJECT

public:
    /// The application hears what each event is about.
    SoakDay(WatchedApplication &application, unsigned seed);
    ~SoakDay() override;

    void start();
    const std::vector<Figures> &samples() const { return taken; }
    qint64 updates() const { return updateCount; }
    qint64 logLines() const { return lineCount; }
    int actions() const { return actionCount; }
    int boxes() const { return brief->boxes(); }
    int exports() const { return brief->exports(); }

private:
    void feed();
    void act();
    void sample();
    boost::shared_ptr<refhost::OrderRecord> changedOrder();
    void showQuote();
    void openTable();

    std::mt19937 random;
    WatchedApplication &watch;
    std::vector<boost::shared_ptr<refhost::OrderRecord>> orders;
    KV::CHpfDataTable *table;
    KV::CHpfLogWidget *log;
    KV::CQuotesPricesList *ladder;
    std::unique_ptr<KV::CHpfDataTable> opened; ///< for a moment
    std::unique_ptr<BriefPanels> brief;
    int briefCount = 0;
    QTimer feedTimer;
    QTimer actionTimer;
    QTimer sampleTimer;
    QElapsedTimer clock;
    terminal::StallMeter stalls;
    double waited = 0; ///< for a core, up to the last sample, in milliseconds
    std::vector<Figures> taken;
    qint64 updateCount = 0;
    qint64 lineCount = 0;
    int actionCount = 0;
};

} // namespace soak
