#pragma once

#include "trading/desktypes.h"

#include <QtCore/QLockFile>
#include <QtCore/QString>
#include <memory>
#include <vector>

namespace trading {

/// A desk in one SQLite file. What apply() has taken is on the disk when it returns, whatever happens to the program or
/// the machine afterwards; what it refuses has changed nothing. Used by the thread that opened it; everything may wait
/// for the disk. Texts that tell a problem name the file and what to do, and are empty when all is well.
class DeskStore
{
public:
    DeskStore();
    ~DeskStore();
    DeskStore(const DeskStore &) = delete;
    DeskStore &operator=(const DeskStore &) = delete;

    /// Opens or makes the file. No other program may have it open as a desk. A file that cannot be used is not touched.
    QString open(const QString &path);
    void close();
    /// What the desk stood at.
    QString load(DeskState &state);
    /// Writes changes in their order, all in one transaction.
    QString apply(const std::vector<DeskChange> &changes);

private:
    class Statements;

    QString problem(const QString &what) const;

    QString path;
    QString connection;
    std::unique_ptr<QLockFile> lock;
    std::unique_ptr<Statements> statements;
};

} // namespace trading
