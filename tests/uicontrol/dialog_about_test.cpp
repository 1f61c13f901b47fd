#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include "dialog/authorisationtext.h"
#include "dialog/caboutdialog.h"
#include "eventwindow.h"
#include "picturesinlooks.h"
#include "printtext.h"
#include "services/accounts.h"
#include "services/productinfo.h"
#include "services/userconfig.h"
#include "theme/themeservice.h"

namespace {

/// Takes the place of the browser.
class Browser : public QObject
{
    Q_OBJECT

public:
    QStringList opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened << url.toString(); }
};

class AboutDialog : public testing::Test
{
protected:
    AboutDialog()
    {
        auto made = std::make_unique<refhost::UserConfig>();
        config = made.get();
        refhost::setUserConfig(std::move(made));
        KV::ProductInfo info = refhost::builtProductInfo();
        info.name = QStringLiteral("演示终端");
        info.agreementUrl = QStringLiteral("https://example.invalid/agreement");
        refhost::setProductInfo(info);
    }

    ~AboutDialog() override
    {
        refhost::setProductInfo(refhost::builtProductInfo());
        refhost::setAccountData(nullptr);
        refhost::setUserConfig(nullptr);
    }

    void logIn(const QString &validUntil)
    {
        config->setValue(QStringLiteral("user/name"), QStringLiteral("张三（10086）"));
        config->setValue(QStringLiteral("user/organisation"), QStringLiteral("自营一部"));
        config->setValue(QStringLiteral("user/validUntil"), validUntil);
        auto accounts = std::make_unique<refhost::Accounts>();
        accounts->putAccount({"1", {}, kdservice::TraderFuture, {}});
        accounts->putAccount({"2", {}, kdservice::TraderStock | kdservice::TraderCredit, {}});
        refhost::setAccountData(std::move(accounts));
    }

    /// Every label that is shown, a line each, with its look in front.
    static QStringList lines(const KV::CAboutDialog &dialog)
    {
        QStringList all;
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            if (!label->isHidden() && !label->text().isEmpty())
                all << (label->property("look").toString() + QLatin1Char(' ') + label->text()).trimmed();
        return all;
    }

    static QPushButton *button(const KV::CAboutDialog &dialog, const QString &text)
    {
        for (QPushButton *each : dialog.findChildren<QPushButton *>())
            if (each->text() == text)
                return each;
        return nullptr;
    }

    EventWindow window;
    refhost::UserConfig *config = nullptr;
};

} // namespace

TEST_F(AboutDialog, SaysWhatItIsWhoIsLoggedInAndWhatTheyMayTrade)
{
    logIn(QString());
    const KV::CAboutDialog dialog(&window);
    QStringList shown = lines(dialog);
    EXPECT_TRUE(shown.contains(QStringLiteral("title 演示终端")));
    const QString build = shown.filter(QStringLiteral("构建")).value(0);
    EXPECT_TRUE(
        QRegularExpression("^dim 构建 ([0-9a-f]{10}（\\d{4}-\\d\\d-\\d\\d），)?.*(GNU|Clang)").match(build).hasMatch())
        << build.toStdString();
    EXPECT_TRUE(QRegularExpression("^版本 \\d+\\.\\d+\\.\\d+$").match(shown.filter("版本").value(0)).hasMatch());
    shown = shown.mid(shown.indexOf(QStringLiteral("bold 授权信息")), 9);
    EXPECT_EQ(shown.join("|"), "bold 授权信息|张三（10086）|dim 用户|自营一部|dim 所属机构|证券、信用、期货|"
                               "dim 账户类别|长期有效|dim 有效期");
}

TEST_F(AboutDialog, WithoutAUserSaysSo)
{
    refhost::setUserConfig(nullptr);
    const KV::CAboutDialog dialog(&window);
    EXPECT_TRUE(lines(dialog).contains(QStringLiteral("未登录")));
    EXPECT_FALSE(lines(dialog).contains(QStringLiteral("长期有效")));
}

TEST_F(AboutDialog, MarksAnAuthorisationThatEndsOrHasEnded)
{
    const QDate today(2026, 3, 1);
    const struct
    {
        QDate until;
        KV::EValidity state;
        const char *text;
    } cases[] = {
        {QDate(2026, 4, 1), KV::EValidity::Valid, "至 2026-04-01"},
        {QDate(2026, 3, 31), KV::EValidity::NearExpiry, "至 2026-03-31（还有 30 天到期）"},
        {QDate(2026, 3, 2), KV::EValidity::NearExpiry, "至 2026-03-02（还有 1 天到期）"},
        {QDate(2026, 3, 1), KV::EValidity::NearExpiry, "至 2026-03-01（今天到期）"},
        {QDate(2026, 2, 28), KV::EValidity::Expired, "至 2026-02-28（已过期 1 天）"},
        {QDate(2025, 3, 1), KV::EValidity::Expired, "至 2025-03-01（已过期 365 天）"},
        {QDate(), KV::EValidity::NearExpiry, "有效期未知"},
    };
    for (const auto &each : cases) {
        KV::UserAuthorisation authorisation;
        authorisation.validUntil = each.until;
        const KV::ValidityText validity = KV::validityText(authorisation, today);
        EXPECT_EQ(validity.text, QString::fromUtf8(each.text));
        EXPECT_EQ(validity.state, each.state) << each.text;
    }
    logIn(QStringLiteral("2020-01-02"));
    KV::CAboutDialog dialog(&window);
    EXPECT_EQ(lines(dialog).filter(QStringLiteral("error 至 2020-01-02（已过期")).size(), 1);
    config->setValue(QStringLiteral("user/validUntil"), QStringLiteral("31.12.2099")); // no date: never "no end"
    dialog.show();
    EXPECT_EQ(lines(dialog).filter(QStringLiteral("有效期")).join("|"), "warning 有效期未知|dim 有效期");
}

#ifdef Q_OS_LINUX
TEST_F(AboutDialog, NamesWhatIsLoadedWithTheProgram)
{
    const struct
    {
        const char *file;
        const char *name;
    } known[] = {{"/libQt5Core.", "Qt"},
                 {"/libboost_", "Boost"},
                 {"/libfmt.", "{fmt}"},
                 {"/liblog4cxx", "Apache log4cxx"},
                 {"/libicui18n", "ICU"},
                 {"/libKF5Archive", "KArchive"},
                 {"/libcurl", "libcurl"},
                 {"/libssl.", "OpenSSL"},
                 {"/libxlsxwriter", "libxlsxwriter"},
                 {"/libminizip", "minizip"},
                 {"/libz.", "zlib"}};
    QFile maps("/proc/self/maps");
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray loaded = maps.readAll();
    QStringList named;
    for (const KV::ComponentLicence &each : KV::getProductInfo().components)
        named << each.name;
    int found = 0;
    for (const auto &each : known) {
        if (!loaded.contains(each.file))
            continue;
        ++found;
        EXPECT_TRUE(named.contains(each.name)) << each.file;
    }
    EXPECT_GT(found, 7);
}
#endif

TEST_F(AboutDialog, LinksOpenInTheBrowserAndAnythingElseIsOnlyCopied)
{
    Browser browser;
    QDesktopServices::setUrlHandler("https", &browser, "open");
    KV::CAboutDialog dialog(&window);
    dialog.show();
    button(dialog, QStringLiteral("用户协议"))->click();
    auto *components = dialog.findChild<QTreeWidget *>();
    ASSERT_GT(components->topLevelItemCount(), 5);
    EXPECT_EQ(components->topLevelItem(0)->text(0), "Qt");
    EXPECT_TRUE(components->topLevelItem(0)->text(1).startsWith("5.15"));
    for (int line = 0; line < components->topLevelItemCount(); ++line)
        EXPECT_FALSE(components->topLevelItem(line)->text(2).isEmpty()) << line;
    components->setCurrentItem(components->topLevelItem(1));
    components->setFocus();
    QTest::keyClick(components, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(browser.opened,
              QStringList({"https://example.invalid/agreement", "https://spdx.org/licenses/BSL-1.0.html"}));
    QDesktopServices::unsetUrlHandler("https");

    button(dialog, QStringLiteral("复制版本信息"))->click();
    const QString copied = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(copied.startsWith(QStringLiteral("演示终端 "))) << copied.toStdString();
    EXPECT_TRUE(copied.contains(QStringLiteral("\nQt 5.15")));

    KV::ProductInfo odd = KV::getProductInfo();
    odd.agreementUrl = QStringLiteral("javascript:alert(1)");
    refhost::setProductInfo(odd);
    const KV::CAboutDialog other(&window);
    button(other, QStringLiteral("用户协议"))->click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), odd.agreementUrl);
    EXPECT_EQ(lines(other).last(), QStringLiteral("error 无法打开 javascript:alert(1)，地址已复制到剪贴板"));
}

TEST_F(AboutDialog, FollowsThemeAndScaleWhileItIsOpen)
{
    logIn(QDate::currentDate().addDays(9).toString(Qt::ISODate));
    KV::CAboutDialog dialog(&window);
    dialog.show();
    const QList<QImage> images = picturesInLooks(
        dialog, "about", [&dialog](double scale) { EXPECT_GE(dialog.grab().width(), int(460 * scale)); });
    EXPECT_LT(qGray(images[0].pixel(2, 2)), qGray(images[2].pixel(2, 2)));
    EXPECT_NEAR(images[2].width(), images[0].width(), 8); // back to its size when the scale is
    EXPECT_NEAR(images[2].height(), images[0].height(), 8);
    dialog.resize(dialog.size() + QSize(100, 40)); // what the user makes of it stays
    const QSize larger = dialog.size();
    dialog.close();
    dialog.show();
    refhost::ThemeService::instance().setTheme("light");
    EXPECT_EQ(dialog.size(), larger);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    refhost::ThemeService::instance().setTheme("dark");
}

#include "dialog_about_test.moc"
