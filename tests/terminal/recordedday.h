#pragma once

#include <QFileInfo>
#include <QStringList>

/// The orders and deals of a recorded day of three stocks; nothing where there is no recorded data.
inline QStringList recordedDay()
{
    const QString folder = QStringLiteral(SHARED_DATA_DIR "/orders_trades/");
    QStringList paths{folder + QStringLiteral("sse_orders_2023-07-11_3stocks.csv.gz"),
                      folder + QStringLiteral("sse_trades_2023-07-11_3stocks.csv.gz")};
    return QFileInfo::exists(paths[0]) && QFileInfo::exists(paths[1]) ? paths : QStringList();
}
