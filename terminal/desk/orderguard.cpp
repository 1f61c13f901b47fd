#include "desk/orderguard.h"

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include "desk/confirmbox.h"
#include "desk/desktexts.h"
#include "desk/tradedesk.h"
#include "trading/ordercheck.h"
#include "window/feedpump.h"
#include "zb/numberformat.h"

namespace terminal {

namespace {

/// Quotes come every three seconds; ten of them missing in a row are no chance.
constexpr qint64 silenceMs = 30'000;

QString grouped(double amount)
{
    return ZB::formatDoubleNumber(amount, 2, utils::FormatGroupDigits, false, QString());
}

} // namespace

OrderGuard::OrderGuard(const TradeDesk &tradeDesk, const FeedPump &feedPump) : desk(tradeDesk), pump(feedPump) {}

QString OrderGuard::refusal(const std::vector<trading::OrderRequest> &requests, const DeskSettings &settings) const
{
    for (const trading::OrderRequest &request : requests) {
        if (const trading::Refusal refused = desk.desk().broker().check(request))
            return refused.text;
        if (const QString limit = limitRefusal(request, settings); !limit.isEmpty())
            return limit;
    }
    return {};
}

QString OrderGuard::overLimit(const std::vector<trading::OrderRequest> &requests, const DeskSettings &settings) const
{
    for (const trading::OrderRequest &request : requests)
        if (const QString limit = limitRefusal(request, settings); !limit.isEmpty())
            return limit;
    return {};
}

QString OrderGuard::limitRefusal(const trading::OrderRequest &request, const DeskSettings &settings) const
{
    const feed::Instrument &instrument = *desk.desk().broker().instrument(request.code);
    const bool isFuture = instrument.kind == feed::InstrumentKind::Future;
    const qint64 most = isFuture ? settings.mostLots : settings.mostShares;
    if (request.quantity > most)
        return QStringLiteral("委托数量 %1 %3超过您设定的单笔上限 %2 %3，请减少数量或改设置")
            .arg(request.quantity)
            .arg(most)
            .arg(desktexts::unit(isFuture));
    const double amount = request.price * double(request.quantity) * instrument.multiplier;
    if (amount > settings.mostAmount)
        return QStringLiteral("委托金额 %1 元超过您设定的单笔上限 %2 元，请减少数量或改设置")
            .arg(grouped(amount), grouped(settings.mostAmount));
    return {};
}

QString OrderGuard::warning(const std::vector<trading::OrderRequest> &requests) const
{
    if (pump.isFinished())
        return QStringLiteral("行情已经结束，价格不再变化。");
    if (pump.isPaused())
        return QStringLiteral("行情已暂停，价格可能已过时。");
    for (const trading::OrderRequest &request : requests) {
        const QString code = QString::fromStdString(request.code);
        if (!desk.quote(request.code))
            return QStringLiteral("还没有收到 %1 的行情。").arg(code);
        const qint64 silence = desk.silence(request.code);
        if (silence > silenceMs)
            return QStringLiteral("%1 的行情已静默 %2 秒，价格可能已过时。").arg(code).arg(silence / 1000);
    }
    return {};
}

QString OrderGuard::summary(const std::vector<trading::OrderRequest> &requests) const
{
    QStringList lines;
    for (const trading::OrderRequest &request : requests) {
        const feed::Instrument &instrument = *desk.desk().broker().instrument(request.code);
        const bool isFuture = instrument.kind == feed::InstrumentKind::Future;
        QString what = QString::fromStdString(request.code);
        if (!instrument.name.empty())
            what += QLatin1Char(' ') + QString::fromStdString(instrument.name);
        lines += QStringLiteral("%1  %2 %3  价格 %4  数量 %5 %6  金额 %7")
                     .arg(QString::fromStdString(request.account),
                          desktexts::operation(request.side, request.offset, isFuture), what,
                          QString::number(request.price, 'f', instrument.priceDecimals))
                     .arg(request.quantity)
                     .arg(desktexts::unit(isFuture),
                          grouped(request.price * double(request.quantity) * instrument.multiplier));
    }
    constexpr int shown = 12;
    const int all = lines.size();
    if (all > shown)
        lines = lines.mid(0, shown) << QStringLiteral("… 共 %1 笔").arg(all);
    return lines.join(QLatin1Char('\n'));
}

bool OrderGuard::isWanted(const std::vector<trading::OrderRequest> &requests, const DeskSettings &settings,
                          QWidget &page)
{
    const QPointer<QWidget> self(&page);
    const QString question = summary(requests);
    const auto ask = [&](const QString &title, const QString &why, const QString &yes, EnterMeans enter) {
        const QString text = why.isEmpty() ? question : why + QStringLiteral("\n\n") + question;
        return askToConfirm(&page, title, text, yes, enter) && self;
    };
    const QString anyway = QStringLiteral("仍然委托");
    if (!unsaved.isEmpty()) {
        if (!ask(QStringLiteral("交易不保存"), unsaved, anyway, EnterMeans::No))
            return false;
        unsaved.clear();
    }
    if (settings.confirms && warning(requests).isEmpty() &&
        !ask(QStringLiteral("确认委托"), {}, QStringLiteral("委托"), EnterMeans::Yes))
        return false;
    const QString silent = warning(requests);
    return silent.isEmpty() || ask(QStringLiteral("行情提醒"), silent, anyway, EnterMeans::No);
}

} // namespace terminal
