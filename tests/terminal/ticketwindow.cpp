#include "terminal/ticketwindow.h"

#include <QtWidgets/QApplication>

#include "account/caccountscombobox.h"
#include "kv/cstockcodelineedit.h"
#include "order/cautobutton.h"
#include "records/record.h"
#include "services/accounts.h"
#include "services/instruments.h"
#include "services/userconfig.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "zb/clineedit.h"

namespace {

using namespace kdservice;

struct Known
{
    const char *code;
    const char *name;
    int kind;
    int decimals;
    double tick;
    int lot;
    int multiplier;
    double lower;
    double upper;
};

void know(const Known &known)
{
    const auto record = refhost::makePlain(refhost::MetaInstrument, known.code);
    record->setData(refhost::InstrumentCode, std::string(known.code));
    record->setData(refhost::InstrumentName, std::string(known.name));
    record->setData(refhost::InstrumentKind, known.kind);
    record->setData(refhost::InstrumentPriceDecimals, known.decimals);
    record->setData(refhost::InstrumentPriceTick, known.tick);
    record->setData(refhost::InstrumentLot, known.lot);
    record->setData(refhost::InstrumentMultiplier, known.multiplier);
    record->setData(refhost::InstrumentLowerLimit, known.lower);
    record->setData(refhost::InstrumentUpperLimit, known.upper);
    refhost::Instruments::put(record);
}

} // namespace

TicketWindow::TicketWindow()
{
    know({"600519.SH", "贵州茅台", KV::FilterStock, 2, 0.01, 100, 1, 9, 11});
    know({"510050.SH", "50ETF", KV::FilterFund, 3, 0.001, 100, 1, 2.25, 2.75});
    know({"rb2410", "螺纹钢2410", KV::FilterFuture, 0, 1, 1, 10, 3000, 4000});
    know({"000300.SH", "沪深300", KV::FilterIndex, 2, 0.01, 100, 1, 0, 0});
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    auto accounts = std::make_unique<refhost::Accounts>();
    accounts->putAccount({"600001", QStringLiteral("现货"), TraderStock, {}});
    accounts->putAccount({"700001", QStringLiteral("两融"), TraderCredit, {}});
    accounts->putAccount({"800001", QStringLiteral("期货"), TraderFuture, {}});
    refhost::setAccountData(std::move(accounts));

    form = new terminal::TicketForm(this);
    form->setGeometry(0, 0, 300, 520);
    resize(300, 520);
    price = form->findChild<terminal::PriceField *>();
    quantity = form->findChild<terminal::QuantityField *>();
    send = form->findChild<KV::CAutoButton *>();
    showNow();
    QApplication::setActiveWindow(this);
    form->findChild<KV::CStockCodeLineEdit *>()->setFocus();
    take();
}

TicketWindow::~TicketWindow()
{
    delete form;
    refhost::setAccountData(nullptr);
    refhost::setUserConfig(nullptr);
}

void TicketWindow::press(int key, Qt::KeyboardModifiers modifiers)
{
    QApplication::setActiveWindow(this); // without a window system a popup takes the keyboard for good
    QTest::keyClick(focusWidget(), static_cast<Qt::Key>(key), modifiers);
}

void TicketWindow::type(const QString &text)
{
    QApplication::setActiveWindow(this);
    QTest::keyClicks(focusWidget(), text);
}

void TicketWindow::enterCode(const QString &code)
{
    ZB::CLineEdit *edit = form->findChild<KV::CStockCodeLineEdit *>()->getLineEdit();
    edit->setFocus();
    edit->selectAll();
    type(code);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QTest::keyClick(edit, Qt::Key_Return);
        return form->code().startsWith(code);
    })) << code.toStdString();
}

void TicketWindow::takePriceAndQuantity(const char *priceText, const char *quantityText)
{
    form->takeLadderEvent(1128, 0, QLatin1String(priceText));
    form->takeLadderEvent(1129, 0, QLatin1String(quantityText));
}

void TicketWindow::takeOrders()
{
    form->setSender([this](const terminal::OrderDraft &order) {
        sent << order.logText();
        return QString();
    });
}

void TicketWindow::sendNow()
{
    ASSERT_TRUE(QTest::qWaitFor([this] { return send->isEnabled(); }));
    click(send);
}

void TicketWindow::pickAccount(int entry)
{
    for (KV::CAccountsComboBox *box : form->findChildren<KV::CAccountsComboBox *>()) {
        if (!box->isVisible())
            continue;
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
        for (int step = 0; step < entry; ++step)
            QTest::keyClick(box, Qt::Key_Down);
        QTest::keyClick(box, Qt::Key_Return);
    }
}

void TicketWindow::click(QWidget *widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

QAbstractButton *TicketWindow::button(const char *text) const
{
    for (QAbstractButton *button : form->findChildren<QAbstractButton *>())
        if (button->isVisible() && button->text() == QString::fromUtf8(text))
            return button;
    ADD_FAILURE() << "no button " << text;
    return nullptr;
}

QString TicketWindow::focus() const
{
    const QWidget *widget = focusWidget();
    if (widget == nullptr)
        return QStringLiteral("nobody");
    if (widget == send)
        return QStringLiteral("委托");
    const auto *button = qobject_cast<const QAbstractButton *>(widget);
    return !widget->accessibleName().isEmpty() || button == nullptr ? widget->accessibleName() : button->text();
}

QString TicketWindow::sendText() const
{
    return send->text();
}
