// Runs a mixed day for some time and fails when something grows: memory, threads, descriptors, stalls of the window.
// usage: uicontrol_soak [--seconds N] [--seed N]
// A day in which nothing was exported or a box did not open fails as well.
// Writes a line of JSON for every tenth of the run, one for every kind of event that ever took longer than a frame, and
// one about the whole.

#include <QtCore/QCommandLineParser>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QTextStream>
#include <algorithm>

#include "services/accounts.h"
#include "services/userconfig.h"
#include "soak/soakday.h"
#include "window/demoaccounts.h"
#include "zb/messagebox.h"

namespace {

constexpr int boxesOfRound = 4; ///< that open before each export

void write(const QJsonObject &object)
{
    QTextStream(stdout) << QJsonDocument(object).toJson(QJsonDocument::Compact) << '\n';
}

QJsonObject described(const soak::Figures &figures)
{
    return {{QStringLiteral("seconds"), figures.seconds},
            {QStringLiteral("megabytes"), figures.megabytes},
            {QStringLiteral("threads"), figures.threads},
            {QStringLiteral("descriptors"), figures.descriptors},
            {QStringLiteral("worst_stall_ms"), figures.worstStall}};
}

void tellCauses(const soak::WatchedApplication &application)
{
    for (const auto &[name, cause] : application.causes())
        write({{QStringLiteral("held_up_by"), name},
               {QStringLiteral("times"), cause.count},
               {QStringLiteral("worst_ms"), cause.worst},
               {QStringLiteral("busy_ms"), cause.worstBusy}});
}

int tell(const soak::SoakDay &day)
{
    const std::vector<soak::Figures> &samples = day.samples();
    const std::size_t step = std::max<std::size_t>(samples.size() / 10, 1);
    for (std::size_t first = 0; first + step <= samples.size(); first += step) {
        soak::Figures figures = samples[first + step - 1];
        for (std::size_t i = first; i < first + step; ++i)
            figures.worstStall = std::max(figures.worstStall, samples[i].worstStall);
        write(described(figures));
    }
    const QString grown = soak::growth(samples);
    write({{QStringLiteral("updates"), day.updates()},
           {QStringLiteral("log_lines"), day.logLines()},
           {QStringLiteral("actions"), day.actions()},
           {QStringLiteral("boxes"), day.boxes()},
           {QStringLiteral("exports"), day.exports()},
           {QStringLiteral("grown"), grown}});
    return grown.isEmpty() && day.exports() > 0 && day.boxes() >= boxesOfRound * day.exports() ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    soak::WatchedApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions(
        {{QStringLiteral("seconds"), QStringLiteral("How long"), QStringLiteral("N"), QStringLiteral("300")},
         {QStringLiteral("seed"), QStringLiteral("Of the random numbers"), QStringLiteral("N"), QStringLiteral("1")}});
    parser.addHelpOption();
    parser.process(application);

    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    refhost::setAccountData(terminal::demoAccounts());
    ZB::setMessageBoxesShown(false);
    int result = 1;
    {
        soak::SoakDay day(application, parser.value(QStringLiteral("seed")).toUInt());
        day.start();
        QTimer::singleShot(1000 * parser.value(QStringLiteral("seconds")).toInt(), &application, &QApplication::quit);
        QApplication::exec();
        tellCauses(application);
        result = tell(day);
    }
    refhost::setAccountData(nullptr);
    refhost::setUserConfig(nullptr);
    return result;
}
