#include "theme/themeservice.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QFontInfo>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPixmap>
#include <atomic>
#include <functional>
#include <limits>
#include <thread>

#include "services/logservice.h"
#include "zb/cuiresource.h"
#include "zb/cuiresourcechangehandler.h"

using namespace refhost;

namespace {

ZB::CUiResource *resources()
{
    return ZB::CUiResource::instance();
}

std::string color(const char *key)
{
    return resources()->getColor(QLatin1String(key))->name(QColor::HexArgb).toStdString();
}

/// Warnings that a piece of work writes to the log.
QStringList warningsOf(const std::function<void()> &work)
{
    QStringList lines;
    testing::internal::CaptureStderr();
    const int id = LogService::instance().addListener([&lines](const QString &text, int level) {
        if (level > LogInfo)
            lines << text.section(QLatin1Char(' '), 1);
    });
    work();
    LogService::instance().removeListener(id);
    testing::internal::GetCapturedStderr();
    return lines;
}

QString write(const QTemporaryDir &folder, const QByteArray &json)
{
    const QString path = folder.filePath(QStringLiteral("theme.json"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(json);
    return path;
}

class Theme : public ::testing::Test
{
protected:
    void TearDown() override
    {
        service.setTheme(QStringLiteral("dark"));
        service.setRiseFall(RiseFall::RedUp);
        service.setScale(1);
    }

    ThemeService &service = ThemeService::instance();
};

QStringList told;

class Handler : public ZB::CUiResourceChangeHandler
{
public:
    explicit Handler(const char *text, std::function<void()> work = {}) : name(QLatin1String(text)), action(work) {}

    void themeChanged() override
    {
        told << name + QLatin1Char(' ') + resources()->getColor(QStringLiteral("clr_background"))->name();
        if (action)
            action();
    }

private:
    QString name;
    std::function<void()> action;
};

} // namespace

/// Beside the keys that the check of a host gathers from the sources.
TEST_F(Theme, HasTheKeysWithAPrefixOfTheirOwn)
{
    const auto keys = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    for (const QString &theme : {QStringLiteral("dark"), QStringLiteral("light")}) {
        const QStringList warnings = warningsOf([&] {
            service.setTheme(theme);
            resources()->getColor(QStringLiteral("ic_clr_syntax_edit_highlight"));
            for (const QString &key :
                 keys("kv_siz_code_quotes_height kv_siz_code_quotes_height_L2H kv_siz_code_quotes_height_L2V "
                      "kv_siz_code_quotes_width kv_siz_code_quotes_width_L2H kv_siz_select_code_widget_height"))
                EXPECT_GT(resources()->getSize(key), 0) << key.toStdString();
            for (const QString &key : keys("kv_img_btn_green_small kv_img_btn_red_small "
                                           "kv_img_combo_btn_small_nonormal kv_img_setting_tree_icon_account"))
                EXPECT_FALSE(resources()->getPixmap(key)->isNull()) << key.toStdString();
        });
        EXPECT_EQ(warnings.join(QLatin1Char('\n')).toStdString(), "") << theme.toStdString();
    }
}

TEST_F(Theme, KeepsOneObjectPerKeyAndChangesItInPlace)
{
    const QColor *background = resources()->getColor(QStringLiteral("clr_table_background"));
    const QFont *font = resources()->getFont(QStringLiteral("fnt_table_text_default"));
    const QPixmap *image = resources()->getPixmap(QStringLiteral("img_filter"));
    const qint64 imageBefore = image->cacheKey();
    EXPECT_EQ(background->name(), QStringLiteral("#14181f"));
    EXPECT_TRUE(service.setTheme(QStringLiteral("light")));
    service.setScale(1.5);
    EXPECT_EQ(background->name(), QStringLiteral("#ffffff"));
    EXPECT_EQ(font->pixelSize(), 18);
    EXPECT_EQ(image->size(), QSize(18, 18));
    EXPECT_NE(image->cacheKey(), imageBefore);
    EXPECT_EQ(resources()->getColor(QStringLiteral("clr_table_background")), background);
    EXPECT_EQ(resources()->getFont(QStringLiteral("fnt_table_text_default")), font);
    EXPECT_EQ(resources()->getPixmap(QStringLiteral("img_filter")), image);
    EXPECT_FALSE(service.setTheme(QStringLiteral("no such")));
    EXPECT_EQ(service.theme(), QStringLiteral("light"));
}

TEST_F(Theme, ScalesLengthsFromOneToThree)
{
    EXPECT_EQ(ZB::scaled(24), 24);
    EXPECT_EQ(resources()->getSize(QStringLiteral("siz_standard_table_item_height")), 24);
    service.setScale(1.25);
    EXPECT_EQ(ZB::scaled(1), 1);
    EXPECT_EQ(ZB::scaled(2), 3);
    EXPECT_EQ(ZB::scaled(0), 0);
    EXPECT_EQ(ZB::scaled(-10), -12);
    EXPECT_EQ(resources()->getSize(QStringLiteral("siz_standard_table_header_height")), 35);
    service.setScale(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(resources()->scale(), 1.25);
    service.setScale(100);
    EXPECT_EQ(resources()->scale(), 3.0);
    service.setScale(-std::numeric_limits<double>::infinity());
    EXPECT_EQ(resources()->scale(), 1.0);
}

TEST_F(Theme, OneSwitchTurnsRiseAndFallEverywhere)
{
    const std::string red = color("clr_global_rise");
    const std::string green = color("clr_global_fall");
    const std::string bars = color("clr_table_item_bg_rise");
    const QImage buy = resources()->getPixmap(QStringLiteral("kv_img_btn_red_small"))->toImage();
    const QImage sell = resources()->getPixmap(QStringLiteral("kv_img_btn_green_small"))->toImage();
    service.setRiseFall(RiseFall::GreenUp);
    EXPECT_EQ(color("clr_global_rise"), green);
    EXPECT_EQ(color("clr_global_fall"), red);
    EXPECT_EQ(color("clr_table_item_bg_fall"), bars);
    EXPECT_EQ(resources()->getPixmap(QStringLiteral("kv_img_btn_red_small"))->toImage(), sell);
    EXPECT_EQ(resources()->getPixmap(QStringLiteral("kv_img_btn_green_small"))->toImage(), buy);
    service.setRiseFall(RiseFall::OrangeBlue);
    EXPECT_NE(color("clr_global_rise"), green);
    EXPECT_NE(color("clr_global_fall"), red);
}

TEST_F(Theme, AMissingKeyShowsAndIsWarnedOfOnce)
{
    const QStringList warnings = warningsOf([this] {
        EXPECT_EQ(color("clr_no_such_key"), "#ffff00ff");
        EXPECT_EQ(color("clr_no_such_key"), "#ffff00ff");
        EXPECT_NE(resources()->getFont(QStringLiteral("fnt_no_such_key")), nullptr);
        EXPECT_EQ(resources()->getSize(QStringLiteral("siz_no_such_key")),
                  resources()->getSize(QStringLiteral("siz_no_such_key")));
        EXPECT_FALSE(resources()->getPixmap(QStringLiteral("img_no_such_key"))->isNull());
        service.setTheme(QStringLiteral("light"));
        EXPECT_EQ(color("clr_no_such_key"), "#ffff00ff");
        EXPECT_FALSE(resources()->getPixmap(QStringLiteral("img_no_such_key"))->isNull());
    });
    EXPECT_EQ(warnings.size(), 4) << warnings.join(QLatin1Char('\n')).toStdString();
}

TEST_F(Theme, TellsHandlersInTheOrderInWhichTheyCame)
{
    told.clear();
    const Handler first("first");
    auto second = std::make_unique<Handler>("second");
    std::unique_ptr<Handler> late;
    const Handler third("third", [&] {
        second.reset();
        late = std::make_unique<Handler>("late");
    });
    auto fourth = std::make_unique<Handler>("fourth");
    const Handler fifth("fifth");
    service.setTheme(QStringLiteral("light"));
    EXPECT_EQ(told.join(QLatin1Char('|')).toStdString(),
              "first #ffffff|second #ffffff|third #ffffff|fourth #ffffff|fifth #ffffff");
    told.clear();
    fourth.reset();
    late.reset();
    service.setScale(2);
    EXPECT_EQ(told.join(QLatin1Char('|')).toStdString(), "first #ffffff|third #ffffff|fifth #ffffff");
    told.clear();
    service.setScale(2);
    service.setTheme(QStringLiteral("light"));
    EXPECT_EQ(told.size(), 0);
}

TEST_F(Theme, AHandlerMayChangeTheThemeItself)
{
    told.clear();
    const Handler first("first");
    const Handler second("second", [this, once = false]() mutable {
        if (!std::exchange(once, true))
            service.setTheme(QStringLiteral("dark"));
    });
    const Handler third("third");
    service.setTheme(QStringLiteral("light"));
    EXPECT_EQ(told.join(QLatin1Char('|')).toStdString(), "first #ffffff|second #ffffff|first #14181f|second #14181f|"
                                                         "third #14181f|third #14181f");
}

TEST_F(Theme, LoadsFilesLaidOverAnother)
{
    QTemporaryDir folder;
    EXPECT_EQ(service.loadFile(write(folder, R"({"name": "mine", "title": "我的", "base": "light",
        "roles": {"background": "#FFF8E7"},
        "colours": {"clr_mine": "rise 50% on #000000", "clr_table_split_line": "accent 40%"},
        "fonts": {"fnt_table_text_default": {"family": "mono", "size": 13, "bold": true}},
        "sizes": {"siz_standard_table_item_height": 20},
        "images": {"img_filter": {"box": 2, "width": 5, "height": 6, "colour": "red"}}})")),
              QString());
    EXPECT_TRUE(service.themes().contains(QStringLiteral("mine")));
    EXPECT_EQ(service.title(QStringLiteral("mine")), QStringLiteral("我的"));
    EXPECT_TRUE(service.setTheme(QStringLiteral("mine")));
    EXPECT_EQ(color("clr_table_background"), "#fffff8e7");
    EXPECT_EQ(color("clr_mine"), "#ff5f0d12");
    EXPECT_EQ(resources()->getColor(QStringLiteral("clr_table_split_line"))->alpha(), 102);
    EXPECT_TRUE(resources()->getFont(QStringLiteral("fnt_table_text_default"))->bold());
    EXPECT_EQ(resources()->getSize(QStringLiteral("siz_standard_table_item_height")), 20);
    EXPECT_EQ(resources()->getPixmap(QStringLiteral("img_filter"))->size(), QSize(5, 6));

    // Loaded again, it shows at once.
    EXPECT_EQ(service.loadFile(write(folder, R"({"name": "mine", "roles": {"background": "#010203"}})")), QString());
    EXPECT_EQ(color("clr_table_background"), "#ff010203");
    EXPECT_FALSE(resources()->getFont(QStringLiteral("fnt_table_text_default"))->bold());
}

TEST_F(Theme, RefusesAFileThatIsNoThemeAndSaysWhy)
{
    QTemporaryDir folder;
    const std::pair<const char *, const char *> files[] = {
        {"", "offset"},
        {"{\"name\": \"x\"", "offset"},
        {"[1, 2]", "object"},
        {R"({"roles": {}, "title": "no name"})", "name"},
        {R"({"name": "x", "base": "nowhere"})", "nowhere"},
        {R"({"name": "x", "roles": {"background": 3}})", "roles.background"},
        {R"({"name": "x", "roles": {"background": "paper"}})", "clr_background"},
        {R"({"name": "x", "colours": {"clr_a": "no such role"}})", "clr_a"},
        {R"({"name": "x", "colours": {"clr_a": "rise 120%"}})", "clr_a"},
        {R"({"name": "x", "colours": {"clr_a": "rise 10% on nothing"}})", "clr_a"},
        {R"({"name": "x", "sizes": {"siz_a": -1}})", "sizes.siz_a"},
        {R"({"name": "x", "sizes": {"siz_a": 1e99}})", "sizes.siz_a"},
        {R"({"name": "x", "fonts": {"fnt_a": {"family": "fancy", "size": 12}}})", "fonts.fnt_a"},
        {R"({"name": "x", "fonts": {"fnt_a": 12}})", "fonts.fnt_a"},
        {R"({"name": "x", "images": {"img_a": {"svg": "x.svg", "colour": "text"}}})", "images.img_a"},
    };
    const QStringList before = service.themes();
    for (const auto &[json, reason] : files) {
        const QString error = service.loadFile(write(folder, json));
        EXPECT_TRUE(error.contains(QLatin1String(reason))) << json << ": " << error.toStdString();
    }
    EXPECT_TRUE(service.loadFile(folder.filePath(QStringLiteral("none.json"))).contains(QLatin1String("none.json")));
    EXPECT_EQ(service.themes(), before);
    EXPECT_EQ(color("clr_background"), "#ff14181f");
}

TEST_F(Theme, LinesUpFiguresAndHalvesChineseWidthsInTheLog)
{
    if (!QFontInfo(*resources()->getFont(QStringLiteral("fnt_default_normal")))
             .family()
             .contains(QLatin1String("Noto")))
        GTEST_SKIP() << "the Noto CJK fonts are not installed";
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        service.setScale(scale);
        const QFontMetricsF numbers(*resources()->getFont(QStringLiteral("fnt_table_number_default")));
        const QFontMetricsF log(*resources()->getFont(QStringLiteral("fnt_output_log_text")));
        EXPECT_EQ(numbers.horizontalAdvance(QStringLiteral("1111.11")),
                  numbers.horizontalAdvance(QStringLiteral("8888.88")));
        EXPECT_EQ(log.horizontalAdvance(QStringLiteral("il")), log.horizontalAdvance(QStringLiteral("WM")));
        EXPECT_NEAR(log.horizontalAdvance(QStringLiteral("委托")), log.horizontalAdvance(QStringLiteral("abcd")), 1.0);
    }
}

TEST_F(Theme, IsLookedUpOnManyThreadsWhileItChanges)
{
    testing::internal::CaptureStderr(); // the missing keys are warned of
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    const QColor *text = resources()->getColor(QStringLiteral("clr_text_default"));
    for (int index = 0; index < 3; ++index) {
        threads.emplace_back([&stop, &wrong, text, index] {
            for (int round = 0; !stop; ++round) {
                const QString missing = QStringLiteral("clr_missing_%1").arg(round % 50);
                if (resources()->getColor(QStringLiteral("clr_text_default")) != text ||
                    resources()->getColor(missing) != resources()->getColor(missing) ||
                    resources()->getFont(QStringLiteral("fnt_missing_%1").arg(index)) == nullptr ||
                    resources()->getSize(QStringLiteral("siz_standard_table_item_height")) < 24 || ZB::scaled(10) < 10)
                    ++wrong;
            }
        });
    }
    for (int round = 0; round < 100; ++round) {
        service.setTheme(round % 2 == 0 ? QStringLiteral("light") : QStringLiteral("dark"));
        service.setScale(1 + round % 5 * 0.25);
    }
    stop = true;
    for (std::thread &thread : threads)
        thread.join();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(wrong, 0);
}
