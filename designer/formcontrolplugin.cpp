#include "formcontrolplugin.h"

#include <QtGui/QIcon>

namespace designer {

FormControlPlugin::FormControlPlugin(const Description &description, QObject *parent)
    : QObject(parent), about(description)
{
}

FormControlPlugin::~FormControlPlugin() = default;

QString FormControlPlugin::group() const
{
    return QStringLiteral("uicontrol");
}

QIcon FormControlPlugin::icon() const
{
    return QIcon();
}

QString FormControlPlugin::domXml() const
{
    const QString shortName = about.className.section(QStringLiteral("::C"), -1);
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"%2\">%3</widget></ui>")
        .arg(about.className, shortName.left(1).toLower() + shortName.mid(1), about.properties);
}

} // namespace designer
