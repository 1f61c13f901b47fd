#include "theme/themepalette.h"

#include <QtCore/QRegularExpression>

namespace refhost {

namespace {

QColor laidOver(const QColor &top, const QColor &bottom)
{
    const double share = top.alphaF();
    const auto mixed = [share](int above, int below) { return qRound(above * share + below * (1 - share)); };
    return QColor(mixed(top.red(), bottom.red()), mixed(top.green(), bottom.green()), mixed(top.blue(), bottom.blue()));
}

} // namespace

ThemePalette::ThemePalette(const ThemeDefinition &theme, RiseFall riseFall) : definition(theme)
{
    const auto choose = [this](const char *rise, const char *fall) {
        pair[QStringLiteral("rise")] = QLatin1String(rise);
        pair[QStringLiteral("fall")] = QLatin1String(fall);
        pair[QStringLiteral("riseFill")] = QLatin1String(rise) + QLatin1String("Fill");
        pair[QStringLiteral("fallFill")] = QLatin1String(fall) + QLatin1String("Fill");
    };
    switch (riseFall) {
    case RiseFall::RedUp:
        choose("red", "green");
        break;
    case RiseFall::GreenUp:
        choose("green", "red");
        break;
    case RiseFall::OrangeBlue:
        choose("orange", "blue");
        break;
    }
}

QColor ThemePalette::term(const QString &name) const
{
    const QString text = name.startsWith(QLatin1Char('#')) ? name : definition.roles.value(pair.value(name, name));
    return text.startsWith(QLatin1Char('#')) ? QColor(text) : QColor();
}

QColor ThemePalette::colour(const QString &expression) const
{
    static const QRegularExpression form(QStringLiteral("^\\s*(\\S+)(?:\\s+(\\d{1,3})%)?(?:\\s+on\\s+(\\S+))?\\s*$"));
    const QRegularExpressionMatch match = form.match(expression);
    QColor result = term(match.captured(1));
    const int share = match.captured(2).isEmpty() ? 100 : match.captured(2).toInt();
    if (!match.hasMatch() || !result.isValid() || share > 100)
        return QColor();
    result.setAlphaF(result.alphaF() * share / 100);
    if (match.captured(3).isEmpty())
        return result;
    const QColor below = term(match.captured(3));
    return below.isValid() ? laidOver(result, below) : QColor();
}

QString ThemePalette::firstWrongKey() const
{
    for (auto entry = definition.colours.begin(); entry != definition.colours.end(); ++entry)
        if (!colour(*entry).isValid())
            return entry.key();
    for (auto entry = definition.images.begin(); entry != definition.images.end(); ++entry)
        if (!colour(entry->colour).isValid() || (!entry->border.isEmpty() && !colour(entry->border).isValid()))
            return entry.key();
    return {};
}

} // namespace refhost
