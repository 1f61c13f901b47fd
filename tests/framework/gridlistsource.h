#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <functional>
#include <map>
#include <vector>

#include "grid/gridlook.h"
#include "grid/gridrows.h"
#include "grid/gridsource.h"

/// A grid source over a plain list of rows. A row's cells are texts that tests may set; those that are not set are made
/// up from its id and column. Counts what it is asked for.
class ListSource : public ZB::GridSource
{
public:
    struct Row
    {
        ZB::GridRowId id = ZB::NoGridRow;
        quint32 version = 0;
        std::map<int, QString> texts;
        bool marked = false; ///< has a background of its own
    };

    explicit ListSource(int rowCount = 0, int columnCount = 5);

    /// Adds a row in front of `place`; returns its id.
    ZB::GridRowId insert(qint64 place);
    void remove(qint64 place);
    void setText(qint64 place, int column, const QString &text);
    void setMarked(qint64 place, bool marked);
    void reorder(const std::function<void(std::vector<Row> &)> &change);
    ZB::GridRowId idAt(qint64 place) const { return rows.at(static_cast<size_t>(place)).id; }
    /// Makes every cell be asked again.
    void renew();

    quint64 revision() const override { return changes; }
    quint64 epoch() const override { return renewals; }
    qint64 rowCount() const override { return static_cast<qint64>(rows.size()); }
    void fetch(qint64 first, int count, ZB::GridWindow &window) override;
    void refetch(ZB::GridWindow &window) override;
    qint64 rowOf(ZB::GridRowId id) const override;
    void rowIds(qint64 first, qint64 count, std::vector<ZB::GridRowId> &ids) const override;
    void content(int windowRow, int column, ZB::GridContent &content) override;
    ZB::GridFlash flash(int windowRow, int column) override;
    bool isSettling() const override { return settling; }
    int columnCount() const override { return columns; }
    QString headerText(int column) const override;
    QString statisticsText(int column) const override;
    QString cellText(qint64 row, int column) const override;

    std::vector<Row> rows;
    int columns;
    ZB::GridFlash flashes = ZB::GridFlash::None;
    QString statistics;
    bool settling = false;
    int asked = 0; ///< calls of content()
    QColor mark{200, 220, 120};

private:
    std::vector<Row> held; ///< of the last fetch
    ZB::GridRowId nextId = 1;
    quint64 changes = 1;
    quint64 renewals = 1;
};

/// Ids of the rows on the screen, "3 4 5".
QString idsOf(const ZB::GridWindow &window);
QString joined(const std::vector<ZB::GridRowId> &ids);
QString joined(const std::vector<int> &columns);

/// A look without any transparency, sizes as at 100 %.
ZB::GridLook plainLook();
