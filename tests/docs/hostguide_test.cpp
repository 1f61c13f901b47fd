#include <gtest/gtest.h>

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>

#include "docs/contentof.h"

namespace {

/// The headers that a document names: "`zb/c*.h`" stands for many, "`zb/a.h`, `b.h`" for two of one folder.
QStringList namedHeaders(const QString &document)
{
    static const QRegularExpression word(QStringLiteral("`(?:([a-z]+)/)?([a-z0-9*]+\\.h)`"));
    QStringList patterns;
    QString folder;
    for (auto words = word.globalMatch(document); words.hasNext();) {
        const QRegularExpressionMatch match = words.next();
        if (!match.captured(1).isEmpty())
            folder = match.captured(1);
        patterns << QRegularExpression::wildcardToRegularExpression(folder + QLatin1Char('/') + match.captured(2));
    }
    return patterns;
}

} // namespace

TEST(HostGuide, NamesEveryHeaderThatDeclaresWhatAHostBrings)
{
    const QRegularExpression named(namedHeaders(contentOf(QStringLiteral(HOST_GUIDE))).join(QLatin1Char('|')));
    QStringList missing;
    int declaring = 0;
    const QString contract = QStringLiteral(HOST_FOLDER "/");
    for (QDirIterator header(contract, {QStringLiteral("*.h")}, QDir::Files, QDirIterator::Subdirectories);
         header.hasNext();) {
        const QString name = header.next().mid(contract.size());
        if (name == QLatin1String("hostexport.h") || !contentOf(contract + name).contains(QLatin1String("HOST_API")))
            continue;
        ++declaring;
        if (!named.match(name).hasMatch())
            missing << name;
    }
    EXPECT_GT(declaring, 40);
    EXPECT_EQ(missing.join(QLatin1Char(' ')).toStdString(), "");
}
