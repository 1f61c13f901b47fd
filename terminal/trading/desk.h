#pragma once

#include "trading/deskwriter.h"
#include "trading/paperbroker.h"

#include <QtCore/QObject>
#include <deque>
#include <memory>

namespace trading {

/// A paper broker with its file. An order goes into the market once it is stored, and what happened is told by
/// changed() once that is stored too: what the user has seen survives any end of the program. While the file cannot be
/// written, orders that are not stored end as rejected, and new ones are refused; what has happened is kept and written
/// as soon as that is possible. Without a file everything counts at once. GUI thread; nothing waits but open().
class Desk : public QObject
{
    Q_OBJECT

public:
    explicit Desk(TradingRules rules = {}, QObject *parent = nullptr);
    ~Desk() override;

    /// Takes up the desk of a file, or begins it. To be called before anything else, if at all. The text tells what is
    /// wrong, empty for nothing; the desk then goes on without a file.
    QString open(const QString &path);
    /// Orders and deals of the present days that were in the file.
    const DeskState &initialState() const { return initial; }

    void setRules(const TradingRules &rules) { paper.setRules(rules); }
    void openAccount(const Account &account);
    void takeInstrument(const feed::Instrument &instrument);
    void takeDeal(const feed::Deal &deal);
    void takeQuote(const feed::QuoteSnapshot &quote);

    /// The market's clock has come to this time without an event.
    void takeTime(qint64 time);

    PaperBroker::Answer submit(const OrderRequest &request);
    Refusal cancel(qint64 order);

    const PaperBroker &broker() const { return paper; }
    /// Why nothing can be stored at present; empty when all is well.
    const QString &storageProblem() const { return problem; }
    /// Nothing is on its way to the file.
    bool isSettled() const { return unstored.empty(); }

Q_SIGNALS:
    void changed(const trading::DeskChange &change);
    /// When storing begins to fail, and with an empty text when it works again.
    void storageProblemChanged(const QString &text);

private:
    void handOver();
    void storedUpTo(qint64 number);
    void storingFailed(const QString &text);
    void confirmOrders(const DeskChange &change);

    PaperBroker paper;
    std::unique_ptr<DeskWriter> writer; ///< none without a file
    DeskState initial;
    std::deque<DeskChange> unstored;
    qint64 lastStored = 0;
    QString problem;
};

} // namespace trading
