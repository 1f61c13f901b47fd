#pragma once

#include <memory>

#include "kv/cuserconfig.h"
#include "refhostexport.h"

namespace refhost {

/// Whose configuration it is that KV::getUserConfig() gives: kept in an ini file, or only in memory.
///
/// Threading: the two flags on any thread, all else on the GUI thread. Changes are written within a second while an
/// event loop runs, at flush() and at the end, each time to a new file that then takes the old one's place.
class REFHOST_API UserConfig : public KV::CUserConfig
{
public:
    /// In memory, for tests and for programs without a display.
    UserConfig();
    /// A file that cannot be read is kept aside under its name with ".broken" behind, with a warning in the log, and an
    /// empty configuration takes its place. A file that cannot be written costs a warning. Passwords stand in it as
    /// they are: a file that others may read is made the user's alone, where the file system knows users.
    explicit UserConfig(const QString &iniPath);
    ~UserConfig() override;

    bool isSegmentedFormat() const override;
    utils::CFlags<utils::EFormatNumberFlag> getSegmentedFormatFlag() const override;
    void setSegmentedFormat(bool on) override;

    QVariant value(const QString &path, const QVariant &fallback = QVariant()) const override;
    void setValue(const QString &path, const QVariant &value) override;
    /// Removes a setting and all below it.
    void remove(const QString &path);

    /// Writes now. False when that failed; the log says why.
    bool flush();
    /// Empty for a configuration in memory.
    QString path() const;

private:
    struct State;
    std::unique_ptr<State> state;
};

/// Makes a configuration that of the user who is logged in, or nobody's (null). The one before is destroyed: only when
/// no other thread may be asking for it.
REFHOST_API void setUserConfig(std::unique_ptr<UserConfig> config);
/// The same, but hands out the one before: for work that shall leave no trace in it, which puts it back afterwards.
REFHOST_API std::unique_ptr<UserConfig> exchangeUserConfig(std::unique_ptr<UserConfig> config);

} // namespace refhost
