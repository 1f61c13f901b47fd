#include "theme/themedefinition.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace refhost {

namespace {

constexpr int largestSize = 10'000;

QString wrong(const QString &section, const QString &key, const QString &expected)
{
    return QStringLiteral("%1.%2: %3").arg(section, key, expected);
}

bool readTexts(const QJsonObject &file, const QString &section, QMap<QString, QString> &texts, QString &error)
{
    const QJsonObject object = file.value(section).toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry->isString()) {
            error = wrong(section, entry.key(), QStringLiteral("a text expected"));
            return false;
        }
        texts[entry.key()] = entry->toString();
    }
    return true;
}

/// A number of pixels within reason; -1 for anything else.
int pixels(const QJsonValue &value)
{
    const int size = value.toInt(-1);
    return size >= 0 && size <= largestSize ? size : -1;
}

bool readSizes(const QJsonObject &object, QMap<QString, int> &sizes, QString &error)
{
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        sizes[entry.key()] = pixels(*entry);
        if (sizes[entry.key()] < 0) {
            error = wrong(QStringLiteral("sizes"), entry.key(), QStringLiteral("a whole number of pixels expected"));
            return false;
        }
    }
    return true;
}

} // namespace

bool ThemeDefinition::readFonts(const QJsonObject &object, QString &error)
{
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const QJsonObject font = entry->toObject();
        const ThemeFont read{font.value(QLatin1String("family")).toString(), pixels(font.value(QLatin1String("size"))),
                             font.value(QLatin1String("bold")).toBool()};
        if (read.size < 1 || !families.contains(read.family)) {
            error = wrong(QStringLiteral("fonts"), entry.key(), QStringLiteral("a known family and a size expected"));
            return false;
        }
        fonts[entry.key()] = read;
    }
    return true;
}

bool ThemeDefinition::readImages(const QJsonObject &object, QString &error)
{
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        const QJsonObject image = entry->toObject();
        const ThemeImage read{
            image.value(QLatin1String("svg")).toString(),    image.value(QLatin1String("box")).toInt(),
            pixels(image.value(QLatin1String("width"))),     pixels(image.value(QLatin1String("height"))),
            image.value(QLatin1String("colour")).toString(), image.value(QLatin1String("border")).toString()};
        if (read.width < 1 || read.height < 1 || read.colour.isEmpty()) {
            error = wrong(QStringLiteral("images"), entry.key(), QStringLiteral("width, height and colour expected"));
            return false;
        }
        images[entry.key()] = read;
    }
    return true;
}

bool ThemeDefinition::overlay(const QByteArray &json, QString &error)
{
    QJsonParseError parsed;
    const QJsonObject file = QJsonDocument::fromJson(json, &parsed).object();
    if (parsed.error != QJsonParseError::NoError || file.isEmpty()) {
        error = parsed.error != QJsonParseError::NoError
                    ? QStringLiteral("offset %1: %2").arg(parsed.offset).arg(parsed.errorString())
                    : QStringLiteral("an object with entries expected");
        return false;
    }
    name = file.value(QLatin1String("name")).toString(name);
    title = file.value(QLatin1String("title")).toString(name);
    const QJsonObject lists = file.value(QLatin1String("families")).toObject();
    for (auto entry = lists.begin(); entry != lists.end(); ++entry) {
        QStringList &list = families[entry.key()];
        list.clear();
        for (const QJsonValue &family : entry->toArray())
            list << family.toString();
    }
    return readTexts(file, QStringLiteral("roles"), roles, error) &&
           readTexts(file, QStringLiteral("colours"), colours, error) &&
           readFonts(file.value(QLatin1String("fonts")).toObject(), error) &&
           readSizes(file.value(QLatin1String("sizes")).toObject(), sizes, error) &&
           readImages(file.value(QLatin1String("images")).toObject(), error);
}

QString ThemeDefinition::baseOf(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object().value(QLatin1String("base")).toString();
}

} // namespace refhost
