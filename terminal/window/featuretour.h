#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "window/tourconfig.h"

namespace terminal {

class MainWindow;
class TouredTable;

/// Opens what the tables can do, one feature after the other, on the records that are in them, each by the mouse or the
/// keys that a user would take, and asks for a picture of each. The tables are arranged as at first for that; the
/// user's own settings, in the configuration and in the tables, are back at the end. Records that come in or change
/// meanwhile, and more rows than there are where a long work is to be seen, are the newest records again: a tour is the
/// last thing that a run does with its tables.
///
/// GUI thread. Takes a few seconds; events go on being processed.
class FeatureTour : public QObject
{
    Q_OBJECT

public:
    /// False when a picture cannot be taken, which ends the tour.
    using Picture = std::function<bool(const QString &name)>;

    explicit FeatureTour(MainWindow &window);
    ~FeatureTour() override;

    /// The pictures' names in their order: "01-sorted" and so on.
    static QStringList names();
    /// Once through all features, in the present theme and scale. False when a picture could not be taken.
    bool run(const Picture &picture);

private:
    struct Stop
    {
        const char *name;
        void (FeatureTour::*show)();
    };
    static const std::vector<Stop> &stops();
    void visit(const Stop &stop);
    void tidy();
    void lowerBox() const;
    void take();
    void bring(const TouredTable &table, int field);
    void bringRightEdge(const TouredTable &table);
    void bringMiddle();
    void menuOf(TouredTable &table, int line, int field);
    void headerMenuOf(TouredTable &table, int field);
    void focusCell(TouredTable &table, int line, int field);
    void openFilter(TouredTable &table, int field);
    void takeWhileBusy(TouredTable &table, const std::function<void()> &start, const std::function<bool()> &isOver);
    void settle();

    /// @name Order and filters
    /// @{
    void sorted();
    void sortedBySeveral();
    void sorting();
    void headerMenu();
    void filterBox();
    void filterSearch();
    void filtered();
    void filterContains();
    void onlyThisValue();
    void nothingLeft();
    void byStatus();
    /// @}
    /// @name Columns
    /// @{
    void columnDragged();
    void columnFitted();
    void numberTooNarrow();
    void columnHidden();
    void columnBox();
    void columnSets();
    void columnsFrozen();
    void rowsOnly();
    /// @}
    /// @name Rows and cells
    /// @{
    void rowMenu();
    void rowsSelected();
    void cellsSelected();
    void found();
    void notFound();
    void markBox();
    void rowsMarked();
    void paused();
    void newRows();
    void changedCells();
    void otherPage();
    void emptyTable();
    /// @}
    /// @name Copying and exporting
    /// @{
    void copying();
    void exportBox();
    void exporting();
    void exported();
    /// @}

    MainWindow &window;
    TourConfig config;
    std::unique_ptr<TouredTable> orders;
    std::unique_ptr<TouredTable> deals;
    Picture picture;
    QString name;      ///< of the picture that is due
    int boxTop = 0;    ///< on the screen: where a box under a header belongs
    bool fine = true;  ///< every picture could be taken
    bool taken = true; ///< the picture that was due
};

} // namespace terminal
