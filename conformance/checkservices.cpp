#include <QtCore/QThread>
#include <future>
#include <memory>

#include "checks.h"
#include "kv/cuserconfig.h"
#include "net/rpcengine.h"
#include "utils/clogcenter.h"

namespace conformance {

namespace {

constexpr std::chrono::seconds patience(5);

void checkStrands(Report &report)
{
    const QString subject = QStringLiteral("net::RPCEngine::getStrand");
    net::RPCEngine *engine = net::RPCEngine::instance();
    const auto strand = engine ? engine->getStrand("uicontrol_hpf_data_model") : nullptr;
    report.expect(strand != nullptr, subject, QStringLiteral("no strand"));
    if (!strand)
        return;
    report.expect(strand == engine->getStrand("uicontrol_hpf_data_model"), subject,
                  QStringLiteral("another object for the same name"));

    struct Notes
    {
        std::promise<void> finished;
        std::string order;
        QThread *thread = nullptr;
    };
    const auto notes = std::make_shared<Notes>();
    std::future<void> finished = notes->finished.get_future();
    for (const char step : {'a', 'b', 'c', 'd'})
        strand->post([notes, step] {
            notes->order += step;
            notes->thread = QThread::currentThread();
        });
    strand->post([notes] { notes->finished.set_value(); });
    if (finished.wait_for(patience) != std::future_status::ready) {
        report.expect(false, subject, QStringLiteral("posted tasks have not run within 5 seconds"));
        return;
    }
    report.expectText(subject + QStringLiteral(", order of tasks"), QString::fromStdString(notes->order),
                      QStringLiteral("abcd"));
    report.expect(notes->thread != QThread::currentThread(), subject, QStringLiteral("tasks run on the GUI thread"));
}

void checkConfiguration(Report &report)
{
    const QString subject = QStringLiteral("KV::CUserConfig");
    KV::CUserConfig *config = KV::getUserConfig();
    report.expect(config != nullptr, subject, QStringLiteral("null although somebody is logged in"));
    if (!config)
        return;
    const QString path = QStringLiteral("conformance/check");
    report.expect(!config->value(path).isValid(), subject, QStringLiteral("a value where none was set"));
    report.expect(config->value(path, 7) == QVariant(7), subject, QStringLiteral("the fallback was not given"));
    config->setValue(path, QByteArray("\x00\x01kept", 6));
    report.expect(config->value(path).toByteArray() == QByteArray("\x00\x01kept", 6), subject,
                  QStringLiteral("a value did not come back as it was set"));
    config->setValue(path, QVariant());
    report.expect(config->isSegmentedFormat() == (config->getSegmentedFormatFlag().value() != 0), subject,
                  QStringLiteral("isSegmentedFormat() and getSegmentedFormatFlag() disagree"));
}

} // namespace

Findings checkServices()
{
    Report report;
    report.expect(utils::CLogCenter::instance() != nullptr, QStringLiteral("utils::CLogCenter::instance"),
                  QStringLiteral("null"));
    report.expect(utils::getStdLogger() != nullptr, QStringLiteral("utils::getStdLogger"), QStringLiteral("null"));
    report.expect(utils::getLogger("KDDbgFile") != nullptr, QStringLiteral("utils::getLogger"), QStringLiteral("null"));
    checkStrands(report);
    checkConfiguration(report);
    return report.take();
}

} // namespace conformance
