#include "window/productname.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include "services/productinfo.h"

namespace terminal {

namespace {

/// Beside the installed program, or where it was built.
QString agreementFile()
{
    const QDir programs(QCoreApplication::applicationDirPath());
    for (const QString &path :
         {programs.absoluteFilePath(QStringLiteral(AGREEMENT_FROM_PROGRAM)), QStringLiteral(AGREEMENT_SOURCE)})
        if (QFileInfo::exists(path))
            return QFileInfo(path).canonicalFilePath();
    return {};
}

} // namespace

void nameProduct()
{
    KV::ProductInfo info = refhost::builtProductInfo();
    info.name = QStringLiteral("模拟交易终端");
    info.components.push_back({QStringLiteral("SQLite"), QString(), QStringLiteral("blessing"),
                               QStringLiteral("https://spdx.org/licenses/blessing.html")}); // the desk file, by Qt SQL
    if (const QString file = agreementFile(); !file.isEmpty())
        info.agreementUrl = QUrl::fromLocalFile(file).toString();
    refhost::setProductInfo(info);
}

} // namespace terminal
