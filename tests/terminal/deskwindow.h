#pragma once

#include <QtCore/QTemporaryDir>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

#include "desk/tradedesk.h"
#include "window/marketrecords.h"

class QDialog;

namespace KV {
class CQuotesGraphWidget;
struct QuoteValuePlace;
} // namespace KV

namespace ZB {
class GridView;
}

namespace terminal {
class DeskControl;
class MainWindow;
class TicketForm;
class TradePage;
} // namespace terminal

/// The window in front of its trading page with a desk behind it, and a market that says what the test says.
class DeskWindow : public ::testing::Test
{
protected:
    DeskWindow();
    ~DeskWindow() override;

    void SetUp() override;
    void TearDown() override;
    void open(terminal::TradeDesk::Market market = terminal::TradeDesk::Market::Recorded);
    void close();
    void tell(const feed::Instrument &instrument);
    void tell(const feed::QuoteSnapshot &quote);
    /// Calls back with the box that comes next.
    void whenBoxOpens(const std::function<void(QDialog &)> &answer);
    /// A stock at 9.99 to 10.00 and a future at 3500 to 3501, at ten o'clock and so many minutes.
    void showMarket(int day, int minute);
    void settle();
    terminal::TradePage &page() const;
    terminal::TicketForm &ticket() const;
    KV::CQuotesGraphWidget &graph() const;

    /// @name What a user does
    /// @{
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void chooseAccount();
    void typeCode(const QString &letters, const QString &expected);
    void clickLadder(const QPoint &point);
    void clickPrice(const KV::QuoteValuePlace &place);
    void send();
    /// Everything up to the button: a hundred shares at the ladder's best ask, or another quantity.
    void enterOrder(qint64 quantity = 100);
    /// Past the ticket, until the desk's file has it.
    void sendBuy(double price, qint64 quantity);
    /// Answers the box that comes next by its buttons, or by a key; what it asks goes to `asked`.
    void answerBox(bool yes);
    void answerBoxByKey(int key);
    void withoutQuestions();
    /// On a cell of a shown row.
    static void doubleClick(ZB::GridView &grid, int row, int column);
    void doubleClickOrder(qint64 number);
    /// @}

    /// "number side price quantity filled status", the newest first.
    std::string orderRows() const;

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("desk.db"));
    terminal::MarketRecords records;
    std::unique_ptr<terminal::FeedPump> pump;
    std::unique_ptr<terminal::TradeDesk> desk;
    std::unique_ptr<terminal::MainWindow> window;
    terminal::DeskControl *control = nullptr; ///< the page's
    QString asked;
    int fillSounds = 0;
    int rejectSounds = 0;
};
