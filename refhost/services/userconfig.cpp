#include "services/userconfig.h"

#include <log4cxx/logger.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSettings>
#include <atomic>

#include "utils/clogcenter.h"

namespace refhost {

namespace {

const QString segmentedPath = QStringLiteral("user/segmentedFormat");

std::atomic<KV::CUserConfig *> present{nullptr};

void warn(const QString &text)
{
    LOG4CXX_WARN(utils::getStdLogger(), text.toStdString());
}

std::unique_ptr<QSettings> openSettings(const QString &path)
{
    auto settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    settings->setIniCodec("UTF-8");
    settings->setFallbacksEnabled(false);
    return settings;
}

/// QSettings passes over bytes 0, which a file has that a power cut left half written.
bool isReadable(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly) || file.readAll().contains('\0'))
        return false;
    const auto settings = openSettings(path);
    settings->allKeys(); // reads the file
    return settings->status() == QSettings::NoError;
}

/// Passwords may stand in it: nobody but the user reads it. On Windows the user's folder sees to that.
void makePrivate(const QString &path)
{
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    const QFileDevice::Permissions owners = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    QFile file(path);
    if (file.exists() && (file.permissions() & others) && !file.setPermissions(file.permissions() & owners))
        warn(QStringLiteral("配置文件 %1 其他用户也能读取：%2").arg(path, file.errorString()));
}

void keepAside(const QString &path)
{
    const QString aside = path + QStringLiteral(".broken");
    QFile::remove(aside);
    if (QFile::rename(path, aside))
        warn(QStringLiteral("配置文件 %1 无法读取，已另存为 %2，使用默认配置").arg(path, aside));
    else
        warn(QStringLiteral("配置文件 %1 无法读取").arg(path));
}

} // namespace

struct UserConfig::State
{
    std::atomic<bool> segmented{true};
    std::unique_ptr<QSettings> settings; ///< null for a configuration in memory
    QMap<QString, QVariant> values;      ///< of a configuration in memory
};

UserConfig::UserConfig() : state(std::make_unique<State>()) {}

UserConfig::UserConfig(const QString &iniPath) : state(std::make_unique<State>())
{
    makePrivate(iniPath);
    if (!isReadable(iniPath))
        keepAside(iniPath);
    QDir().mkpath(QFileInfo(iniPath).absolutePath());
    if (QFile created(iniPath); created.open(QIODevice::Append)) // a file that is written anew keeps its permissions
        makePrivate(iniPath);
    state->settings = openSettings(iniPath);
    if (!state->settings->isWritable())
        warn(QStringLiteral("配置文件 %1 无法写入，更改不会保存").arg(iniPath));
    state->segmented = value(segmentedPath, true).toBool();
}

UserConfig::~UserConfig()
{
    KV::CUserConfig *self = this;
    present.compare_exchange_strong(self, nullptr);
    flush();
}

bool UserConfig::isSegmentedFormat() const
{
    return state->segmented;
}

utils::CFlags<utils::EFormatNumberFlag> UserConfig::getSegmentedFormatFlag() const
{
    return isSegmentedFormat() ? utils::FormatGroupDigits : utils::FormatNone;
}

void UserConfig::setSegmentedFormat(bool on)
{
    if (state->segmented.exchange(on) != on)
        setValue(segmentedPath, on);
}

QVariant UserConfig::value(const QString &path, const QVariant &fallback) const
{
    return state->settings != nullptr ? state->settings->value(path, fallback) : state->values.value(path, fallback);
}

void UserConfig::setValue(const QString &path, const QVariant &value)
{
    if (!value.isValid())
        remove(path);
    else if (state->settings != nullptr)
        state->settings->setValue(path, value);
    else
        state->values[path] = value;
}

void UserConfig::remove(const QString &path)
{
    if (state->settings != nullptr) {
        state->settings->remove(path);
        return;
    }
    for (const QString &known : state->values.keys())
        if (known == path || known.startsWith(path + QLatin1Char('/')))
            state->values.remove(known);
}

bool UserConfig::flush()
{
    if (state->settings == nullptr)
        return true;
    state->settings->sync();
    if (state->settings->status() == QSettings::NoError)
        return true;
    warn(QStringLiteral("配置文件 %1 保存失败").arg(path()));
    return false;
}

QString UserConfig::path() const
{
    return state->settings != nullptr ? state->settings->fileName() : QString();
}

void setUserConfig(std::unique_ptr<UserConfig> config)
{
    exchangeUserConfig(std::move(config));
}

std::unique_ptr<UserConfig> exchangeUserConfig(std::unique_ptr<UserConfig> config)
{
    static std::unique_ptr<UserConfig> owned;
    present = config.get();
    owned.swap(config);
    return config;
}

} // namespace refhost

namespace KV {

CUserConfig::CUserConfig() = default;
CUserConfig::~CUserConfig() = default;

CUserConfig *getUserConfig()
{
    return refhost::present;
}

} // namespace KV
