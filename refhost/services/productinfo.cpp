#include "services/productinfo.h"

#include <curl/curl.h>

#include <QtCore/QStringList>
#include <optional>

#include "buildinfo.h"

namespace refhost {

namespace {

std::optional<KV::ProductInfo> &given()
{
    static std::optional<KV::ProductInfo> info;
    return info;
}

/// "构建 be42c06d7b（2026-11-21），Release，GNU 12.2.0，Linux x86_64", without what nobody knows.
QString buildText()
{
    QString revision = QStringLiteral(BUILD_REVISION);
    const QString date = QStringLiteral(BUILD_DATE);
    if (!revision.isEmpty() && !date.isEmpty())
        revision += QStringLiteral("（%1）").arg(date);
    QStringList parts{revision, QStringLiteral(BUILD_TYPE), QStringLiteral(BUILD_COMPILER),
                      QStringLiteral(BUILD_SYSTEM)};
    parts.removeAll(QString());
    return QStringLiteral("构建 %1").arg(parts.join(QStringLiteral("，")));
}

QString spdx(const char *licence)
{
    return QStringLiteral("https://spdx.org/licenses/%1.html").arg(QLatin1String(licence));
}

/// What libcurl encrypts with ("OpenSSL/3.0.17") shows when the program runs.
void addEncryption(QVector<KV::ComponentLicence> &components)
{
    const QString used = QString::fromLatin1(curl_version_info(CURLVERSION_NOW)->ssl_version);
    const struct
    {
        const char *name;
        const char *licence;
    } known[] = {{"OpenSSL", "Apache-2.0"}, {"GnuTLS", "LGPL-2.1-or-later"}};
    for (const auto &each : known)
        if (used.startsWith(QLatin1String(each.name)))
            components.push_back({QLatin1String(each.name),
                                  used.section(QLatin1Char('/'), 1).section(QLatin1Char(' '), 0, 0),
                                  QLatin1String(each.licence), spdx(each.licence)});
}

QVector<KV::ComponentLicence> builtWith()
{
    const struct
    {
        const char *name;
        const char *version;
        const char *licence;
    } all[] = {
        {"Qt", BUILT_WITH_QT, "LGPL-3.0-only"},
        {"Boost", BUILT_WITH_BOOST, "BSL-1.0"},
        {"{fmt}", BUILT_WITH_FMT, "MIT"},
        {"Apache log4cxx", BUILT_WITH_LOG4CXX, "Apache-2.0"},
        {"ICU", BUILT_WITH_ICU, "Unicode-DFS-2016"},
        {"KArchive", BUILT_WITH_KARCHIVE, "LGPL-2.1-or-later"},
        {"libcurl", BUILT_WITH_CURL, "curl"},
        {"libxlsxwriter", BUILT_WITH_XLSXWRITER, "BSD-2-Clause"},
        {"minizip", BUILT_WITH_MINIZIP, "Zlib"},
        {"zlib", BUILT_WITH_ZLIB, "Zlib"},
        {"Noto Sans CJK", "", "OFL-1.1"},
    };
    QVector<KV::ComponentLicence> components;
    for (const auto &each : all)
        components.push_back(
            {QLatin1String(each.name), QLatin1String(each.version), QLatin1String(each.licence), spdx(each.licence)});
    addEncryption(components);
    return components;
}

} // namespace

KV::ProductInfo builtProductInfo()
{
    return {QStringLiteral("uicontrol"), QStringLiteral(PRODUCT_VERSION), buildText(), QString(), builtWith()};
}

void setProductInfo(const KV::ProductInfo &info)
{
    given() = info;
}

} // namespace refhost

namespace KV {

ProductInfo getProductInfo()
{
    return refhost::given().value_or(refhost::builtProductInfo());
}

} // namespace KV
