#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <functional>

#include "terminal/ticketwindow.h"
#include "theme/themeservice.h"
#include "window/pricefield.h"
#include "window/quantityfield.h"
#include "window/ticketform.h"
#include "zb/clineedit.h"
#include "zb/csimpletextwidget.h"
#include "zb/cuiresource.h"

using namespace terminal;

namespace {

constexpr int formWidth = 300; ///< as narrow as the panel may be
constexpr int formHeight = 450;

void fill(TicketWindow &window)
{
    window.form->setFundsSource([](const OrderDraft &) { return TicketFunds{1'234'567, 2'000'000, 12'350}; });
    window.pickAccount();
    window.form->setCode(QStringLiteral("600519.SH"));
    window.form->setPrice(10.06);
    window.form->setQuantity(1200);
}

void fillCredit(TicketWindow &window)
{
    window.form->setTrade(kdservice::TraderCredit);
    fill(window);
}

/// A ticket as a user meets it.
struct State
{
    const char *name;
    std::function<void(TicketWindow &)> enter;
};

const std::vector<State> &states()
{
    static const std::vector<State> all = {
        {"empty", [](TicketWindow &) {}},
        {"buy", fill},
        {"sell",
         [](TicketWindow &window) {
             fill(window);
             window.click(window.button("1/2"));
             window.press(Qt::Key_F2);
         }},
        {"credit",
         [](TicketWindow &window) {
             fillCredit(window);
             window.click(window.button("指定"));
             window.type(QStringLiteral("C20240711"));
         }},
        {"future",
         [](TicketWindow &window) {
             window.form->setTrade(kdservice::TraderFuture);
             window.pickAccount();
             window.form->setFundsSource([](const OrderDraft &) { return TicketFunds{1e6, 2e6, 7}; });
             window.form->setCode(QStringLiteral("rb2410"));
             window.form->takeLadderEvent(1127, KV::PriceBestFive, QString());
             window.form->setQuantity(3);
             window.click(window.button("开"));
         }},
        {"fault-account", [](TicketWindow &window) { window.sendNow(); }},
        {"fault-code",
         [](TicketWindow &window) {
             fill(window);
             window.form->setCode(QStringLiteral("999999.SH"));
             window.sendNow();
         }},
        {"fault-price",
         [](TicketWindow &window) {
             fill(window);
             window.form->setPrice(11.01);
             window.sendNow();
         }},
        {"fault-contract",
         [](TicketWindow &window) {
             fillCredit(window);
             window.click(window.button("指定"));
             window.sendNow();
         }},
        {"disabled",
         [](TicketWindow &window) {
             fillCredit(window);
             window.form->setEnabled(false);
         }},
    };
    return all;
}

/// A ticket in one theme and scale, which are put back.
class Shown
{
public:
    Shown(const char *theme, double scale)
    {
        refhost::ThemeService::instance().setTheme(QLatin1String(theme));
        refhost::ThemeService::instance().setScale(scale);
        const QSize size(ZB::scaled(formWidth), ZB::scaled(formHeight));
        window = std::make_unique<TicketWindow>();
        window->resize(size);
        window->form->resize(size);
    }
    ~Shown()
    {
        window.reset();
        refhost::ThemeService::instance().setScale(1);
        refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
    }

    /// The ticket on its ground.
    QImage picture() const
    {
        QImage image(window->size(), QImage::Format_RGB32);
        image.fill(*ZB::CUiResource::instance()->getColor(QStringLiteral("clr_background")));
        QPainter painter(&image);
        window->form->render(&painter, {}, QRegion(), QWidget::DrawChildren);
        return image;
    }

    std::unique_ptr<TicketWindow> window;
};

QString nameOf(const QWidget &widget)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget); button && !button->text().isEmpty())
        return button->text();
    if (const auto *line = qobject_cast<const ZB::CSimpleTextWidget *>(&widget); line && !line->text().isEmpty())
        return line->text();
    return widget.accessibleName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className())
                                             : widget.accessibleName();
}

/// Texts that are cut, widgets that stand out of their parent or over their neighbours.
QStringList layoutFaults(const QWidget &parent)
{
    QStringList faults;
    std::vector<const QWidget *> shown;
    for (const QObject *child : parent.children())
        if (const auto *widget = qobject_cast<const QWidget *>(child);
            widget && widget->isVisible() && !widget->isWindow() && !widget->geometry().isEmpty())
            shown.push_back(widget);
    for (const QWidget *widget : shown) {
        if (!parent.rect().contains(widget->geometry()))
            faults << nameOf(*widget) + QStringLiteral(" stands out");
        for (const QWidget *other : shown)
            if (other != widget && other->geometry().intersects(widget->geometry()))
                faults << nameOf(*widget) + QStringLiteral(" touches ") + nameOf(*other);
        int needed = 0;
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            needed = button->fontMetrics().horizontalAdvance(button->text());
        if (qobject_cast<const ZB::CSimpleTextWidget *>(widget))
            needed = widget->sizeHint().width();
        if (const auto *edit = qobject_cast<const QLineEdit *>(widget))
            needed = edit->fontMetrics().horizontalAdvance(edit->text()) + 2;
        if (needed > widget->width())
            faults << nameOf(*widget) + QStringLiteral(" is cut");
        faults << layoutFaults(*widget);
    }
    return faults;
}

} // namespace

/// Pictures for the eye go where SHOTS_DIR says.
TEST(TicketPictures, EveryStateIsAPictureOfItsOwnAndNothingIsCutInIt)
{
    const QString folder = qEnvironmentVariable("SHOTS_DIR");
    for (const char *theme : {"dark", "light"})
        for (const int percent : {100, 150}) {
            std::vector<QImage> pictures;
            for (const State &state : states()) {
                SCOPED_TRACE(
                    QStringLiteral("%1 %2 %3").arg(QLatin1String(theme)).arg(percent).arg(state.name).toStdString());
                const Shown shown(theme, percent / 100.0);
                state.enter(*shown.window);
                QCoreApplication::processEvents(); // lays out what has come and gone
                EXPECT_EQ(layoutFaults(*shown.window->form).join(QStringLiteral(", ")), QString());
                const QImage picture = shown.picture();
                EXPECT_EQ(std::count(pictures.begin(), pictures.end(), picture), 0);
                pictures.push_back(picture);
                const QString file = QStringLiteral("ticket-%1-%2-%3.png").arg(state.name, theme).arg(percent);
                EXPECT_TRUE(folder.isEmpty() || picture.save(QDir(folder).filePath(file)));
            }
        }
}
