// Settings files of any content: what is read is written again as it was read, and nothing crashes.

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>

#include "fuzzinput.h"
#include "services/userconfig.h"
#include "table/settingtext.h"
#include "theme/themeservice.h"

namespace {

QTemporaryDir *folder;

QString written(const QString &name, const QByteArray &content)
{
    const QString path = folder->filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        fuzz::fail("the temporary folder cannot be written");
    return path;
}

void readTableSettings(const QByteArray &content)
{
    const auto setting = ZB::settingFromText(QString::fromUtf8(content));
    if (!setting)
        return;
    for (const ZB::CBaseTableColumnFilter &filter :
         setting->frame.filters.value_or(QVector<ZB::CBaseTableColumnFilter>()))
        fuzz::require(filter.column >= 0 && !filter.conditions.isEmpty(), "half a filter was read");
    const QString text = ZB::settingText(*setting);
    const auto again = ZB::settingFromText(text);
    fuzz::require(again.has_value(), "own settings cannot be read back");
    fuzz::require(ZB::settingText(*again) == text, "settings change when they are written and read");
}

void readConfiguration(const QByteArray &content)
{
    const QString path = written(QStringLiteral("config.ini"), content);
    refhost::UserConfig config(path);
    config.value(QStringLiteral("table/1/columns")).toString();
    config.setValue(QStringLiteral("own"), 7);
    fuzz::require(config.value(QStringLiteral("own")).toInt() == 7, "a setting was not taken");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    folder = new QTemporaryDir;
    std::atexit([] { delete folder; });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::Input input(bytes, size);
    const int kind = input.below(3);
    const QByteArray content = input.rest();
    if (kind == 0)
        readTableSettings(content);
    else if (kind == 1)
        readConfiguration(content);
    else
        refhost::ThemeService::instance().loadFile(written(QStringLiteral("theme.json"), content));
    return 0;
}
