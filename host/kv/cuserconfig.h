#pragma once

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include "hostexport.h"
#include "utils/eformatnumberflag.h"

namespace KV {

/// The user's configuration. Implemented by the host and saved by it. Threading: the two flags may be read on any
/// thread, everything else belongs to the GUI thread.
class HOST_API CUserConfig : public QObject
{
    Q_OBJECT

public:
    CUserConfig();
    ~CUserConfig() override;

    /// Whether numbers are shown with digits in groups.
    virtual bool isSegmentedFormat() const = 0;
    /// The flags that ask a formatter for the user's grouping; FormatNone without grouping.
    virtual utils::CFlags<utils::EFormatNumberFlag> getSegmentedFormatFlag() const = 0;
    virtual void setSegmentedFormat(bool on) = 0;

    /// Settings by path ("table/16202/..."), kept across restarts. Setting an invalid value takes the setting away.
    virtual QVariant value(const QString &path, const QVariant &fallback = QVariant()) const = 0;
    virtual void setValue(const QString &path, const QVariant &value) = 0;

Q_SIGNALS:
    /// The user has made, changed or removed groups of accounts: by name, true for one that is gone. On the GUI thread.
    void sigAccountGroupChanged(const QMap<QString, bool> &groups);
};

/// The configuration of the user who is logged in; null before that.
HOST_API CUserConfig *getUserConfig();

} // namespace KV
