#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>

#include "hostexport.h"

namespace KV {

/// Somebody else's work that the product uses.
struct ComponentLicence
{
    QString name;
    QString version; ///< empty where nobody knows
    QString licence; ///< short name, such as "LGPL-3.0"
    QString url;     ///< of the licence's text
};

/// What there is to know about the product that the user sits before.
struct ProductInfo
{
    QString name;
    QString version;      ///< "0.1.0"
    QString build;        ///< what was built, when and how; empty where nobody knows
    QString agreementUrl; ///< of the user agreement; empty without one
    QVector<ComponentLicence> components;
};

/// Told by the host. GUI thread.
HOST_API ProductInfo getProductInfo();

} // namespace KV
