#include "trading/desk.h"

#include <utility>

namespace trading {

Desk::Desk(TradingRules rules, QObject *parent) : QObject(parent), paper(std::move(rules)) {}

Desk::~Desk()
{
    paper.tellPrices();
    if (writer && paper.hasChanges())
        writer->put(paper.takeChanges());
}

QString Desk::open(const QString &path)
{
    auto opened = std::make_unique<DeskWriter>();
    DeskState state;
    const QString trouble = opened->open(path, state);
    if (!trouble.isEmpty())
        return trouble;
    if (!paper.restore(state))
        return QStringLiteral("交易桌面文件 %1：账目互相矛盾，文件已损坏，请用备份恢复或换一个文件").arg(path);
    initial = std::move(state);
    for (PaperOrder &order : initial.orders)
        order = paper.orders().at(order.id);
    writer = std::move(opened);
    connect(writer.get(), &DeskWriter::stored, this, &Desk::storedUpTo, Qt::QueuedConnection);
    connect(writer.get(), &DeskWriter::failed, this, &Desk::storingFailed, Qt::QueuedConnection);
    return {};
}

void Desk::openAccount(const Account &account)
{
    paper.openAccount(account);
    handOver();
}

void Desk::takeInstrument(const feed::Instrument &instrument)
{
    paper.takeInstrument(instrument);
    handOver();
}

void Desk::takeDeal(const feed::Deal &deal)
{
    paper.takeDeal(deal);
    handOver();
}

void Desk::takeQuote(const feed::QuoteSnapshot &quote)
{
    paper.takeQuote(quote);
    handOver();
}

void Desk::takeTime(qint64 time)
{
    paper.takeTime(time);
    handOver();
}

PaperBroker::Answer Desk::submit(const OrderRequest &request)
{
    if (!problem.isEmpty())
        return {0, {Refusal::Reason::NotStored, QStringLiteral("委托无法保存，没有报出。%1").arg(problem)}};
    PaperBroker::Answer answer = paper.submit(request);
    handOver();
    return answer;
}

Refusal Desk::cancel(qint64 order)
{
    Refusal refusal = paper.cancel(order);
    handOver();
    return refusal;
}

/// What has changed goes to the file; without one it counts at once, which may change more.
void Desk::handOver()
{
    while (paper.hasChanges()) {
        DeskChange change = paper.takeChanges();
        if (writer) {
            unstored.push_back(change);
            writer->put(std::move(change));
            return;
        }
        confirmOrders(change);
        Q_EMIT changed(change);
    }
}

void Desk::confirmOrders(const DeskChange &change)
{
    for (const PaperOrder &order : change.orders)
        if (order.status == feed::OrderStatus::Sending)
            paper.confirm(order.id);
}

void Desk::storedUpTo(qint64 number)
{
    if (!problem.isEmpty()) {
        problem.clear();
        Q_EMIT storageProblemChanged(problem);
    }
    for (; lastStored < number; ++lastStored) {
        const DeskChange change = std::move(unstored.front());
        unstored.pop_front();
        confirmOrders(change);
        Q_EMIT changed(change);
    }
    handOver();
}

void Desk::storingFailed(const QString &text)
{
    for (const DeskChange &change : unstored)
        for (const PaperOrder &order : change.orders)
            if (order.status == feed::OrderStatus::Sending)
                paper.reject(order.id, QStringLiteral("无法保存，没有报出。%1").arg(text).toStdString());
    if (problem != text) {
        problem = text;
        Q_EMIT storageProblemChanged(problem);
    }
    handOver();
}

} // namespace trading
