#include "services/productinfo.h"

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

QVector<KV::ComponentLicence> builtWith()
{
    const auto spdx = [](const char *licence) {
        return QStringLiteral("https://spdx.org/licenses/%1.html").arg(QLatin1String(licence));
    };
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
