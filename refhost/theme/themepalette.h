#pragma once

#include <QtGui/QColor>

#include "theme/themedefinition.h"

namespace refhost {

/// Which pair of colours says rise and fall, everywhere at once.
enum class RiseFall
{
    RedUp,     ///< red rises, green falls
    GreenUp,   ///< green rises, red falls
    OrangeBlue ///< orange rises, blue falls, for eyes that do not tell red from green
};

/// Works out a theme's colours. An expression is a role or "#RRGGBB", then perhaps a share ("rise 12%": as much
/// opacity), then perhaps "on" and a second colour, over which the first is laid ("rise 12% on background": opaque
/// again). The roles "rise", "fall", "riseFill" and "fallFill" stand for those of the chosen pair.
class ThemePalette
{
public:
    ThemePalette(const ThemeDefinition &theme, RiseFall riseFall);

    /// Invalid when the expression cannot be read or names an unknown role.
    QColor colour(const QString &expression) const;
    /// The first key whose expression cannot be worked out; empty when all can.
    QString firstWrongKey() const;

private:
    QColor term(const QString &name) const;

    const ThemeDefinition &definition;
    QMap<QString, QString> pair; ///< the four roles of direction to those of the chosen pair
};

} // namespace refhost
