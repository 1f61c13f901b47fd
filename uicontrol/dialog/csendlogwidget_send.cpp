#include <fmt/format.h>

#include <QtCore/QDateTime>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>

#include "dialog/clogpreview.h"
#include "dialog/clogsaver.h"
#include "dialog/csendlogwidget.h"
#include "dialog/mailaddresses.h"
#include "kv/caccountdata.h"
#include "kv/productinfo.h"
#include "net/rpcengine.h"
#include "utils/clogcenter.h"
#include "zb/clineedit.h"

namespace KV {

namespace {

constexpr int userActionMark = 912;
constexpr int progressSteps = 1000;
constexpr int subjectCharacters = 40; ///< of the description

void logAction(const char *function, const std::string &text)
{
    LOG4CXX_INFO(utils::getStdLogger(), fmt::format("[{0}] [{1}] {2}", userActionMark, function, text));
}

/// Every number that tells whose accounts these are.
QStringList accountNumbers()
{
    QStringList numbers;
    const CAccountData *accounts = getAccountData();
    if (accounts == nullptr)
        return numbers;
    for (const QVector<AccountEntry> &each :
         {accounts->accounts(kdservice::TraderNone), accounts->composedAccounts(kdservice::TraderNone)})
        for (const AccountEntry &account : each)
            numbers << account.id;
    return numbers;
}

} // namespace

void CSendLogWidget::slotSend()
{
    startPacking(Aim::Send);
}

void CSendLogWidget::slotPreview()
{
    startPacking(Aim::Preview);
}

void CSendLogWidget::slotSave()
{
    auto *dialog = new QFileDialog(this, QStringLiteral("另存日志压缩包"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(QStringLiteral("压缩文件 (*.zip)"));
    dialog->setDefaultSuffix(QStringLiteral("zip"));
    dialog->selectFile(QStringLiteral("logs-%1.zip").arg(QDate::currentDate().toString(QStringLiteral("yyyyMMdd"))));
    connect(dialog, &QFileDialog::fileSelected, this, &CSendLogWidget::saveTo);
    dialog->open();
}

void CSendLogWidget::saveTo(const QString &path)
{
    savePath = path;
    startPacking(Aim::Save);
}

void CSendLogWidget::startPacking(Aim newAim)
{
    if (state != State::Ready || !inputProblem().isEmpty())
        return;
    aim = newAim;
    if (pack != nullptr) { // what the user has looked at is what goes out
        usePack();
        return;
    }
    LogPackRequest request;
    request.files = chosenFiles();
    request.accounts = accountNumbers();
    if (const net::CMailService *mail = net::getMailService(); mail != nullptr && aim != Aim::Save)
        request.mostPacked = mail->attachmentLimit();
    request.name =
        QStringLiteral("logs-%1.zip").arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")));
    pack = std::make_shared<LogPack>();
    net::RPCEngine::instance()->getStrand("uicontrol_send_log")->post([request, target = pack] {
        packLogs(request, *target);
    });
    progress->setRange(0, 0);
    setState(State::Packing);
    say(QStringLiteral("正在压缩 %1 个文件…").arg(request.files.size()), QStringLiteral("dim"));
}

void CSendLogWidget::takePack()
{
    if (!pack->problem.isEmpty()) {
        const QString problem = pack->problem;
        forgetPack();
        setState(State::Ready);
        say(problem, QStringLiteral("error"));
        return;
    }
    setState(State::Ready);
    usePack();
}

void CSendLogWidget::usePack()
{
    const QString notes = pack->notes.join(QStringLiteral("；"));
    say(notes, QStringLiteral("warning"));
    switch (aim) {
    case Aim::Preview:
        (new CLogPreview(previewText(), pack, this))->open();
        break;
    case Aim::Save:
        savePack();
        break;
    default:
        sendPack();
    }
}

/// A pack can have two thousand megabytes, and the place be somewhere in a network.
void CSendLogWidget::savePack()
{
    copy = std::make_shared<LogCopy>();
    copy->from = pack->path;
    copy->to = savePath;
    net::RPCEngine::instance()->getStrand("uicontrol_send_log")->post([target = copy, held = pack] {
        saveLogCopy(*target);
    });
    progress->setRange(0, progressSteps);
    progress->setValue(0);
    setState(State::Saving);
    say(QStringLiteral("正在保存到 %1…").arg(savePath), QStringLiteral("dim"));
}

void CSendLogWidget::takeCopy()
{
    const std::shared_ptr<LogCopy> done = std::move(copy);
    const QString notes = pack->notes.join(QStringLiteral("；"));
    setState(State::Ready);
    if (!done->problem.isEmpty())
        say(QStringLiteral("无法保存到 %1：%2").arg(done->to, done->problem), QStringLiteral("error"));
    else
        say(QStringLiteral("已保存到 %1（%2）%3")
                .arg(done->to, sizeText(pack->size), notes.isEmpty() ? notes : QStringLiteral("；") + notes));
}

QString CSendLogWidget::mailSubject() const
{
    const ProductInfo product = getProductInfo();
    const QString first = description->toPlainText().section(QLatin1Char('\n'), 0, 0).simplified();
    const QString subject = QStringLiteral("%1 %2 日志").arg(product.name, product.version);
    return first.isEmpty() ? subject : subject + QStringLiteral("：") + first.left(subjectCharacters);
}

QString CSendLogWidget::mailText() const
{
    const ProductInfo product = getProductInfo();
    QStringList lines{description->toPlainText().trimmed(), QString(),
                      QStringLiteral("%1 %2").arg(product.name, product.version), product.build,
                      QStringLiteral("附件：%1 个日志文件，原大小 %2，账号、口令、令牌等已遮盖")
                          .arg(pack->fileCount)
                          .arg(sizeText(pack->totalBytes))};
    return (lines + pack->notes).join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString CSendLogWidget::previewText() const
{
    const net::CMailService *mail = net::getMailService();
    QStringList head{QStringLiteral("收件人：%1").arg(mail == nullptr ? QString() : mail->recipient())};
    if (const QStringList all = readMailAddresses(copies->text()).addresses; !all.isEmpty())
        head << QStringLiteral("抄送：%1").arg(all.join(QStringLiteral(", ")));
    head << QStringLiteral("主题：%1").arg(mailSubject()) << QString();
    return head.join(QLatin1Char('\n')) + QLatin1Char('\n') + mailText();
}

void CSendLogWidget::sendPack()
{
    net::CMailService *mail = net::getMailService();
    if (mail == nullptr)
        return;
    if (pack->size > mail->attachmentLimit()) { // packed for a file of the user's own
        say(QStringLiteral("压缩后 %1，超过邮件上限 %2").arg(sizeText(pack->size), sizeText(mail->attachmentLimit())),
            QStringLiteral("error"));
        return;
    }
    net::MailMessage message;
    message.subject = mailSubject();
    message.text = mailText();
    message.carbonCopies = readMailAddresses(copies->text()).addresses;
    message.attachmentPath = pack->path;
    message.attachmentName = pack->path.section(QLatin1Char('/'), -1);
    message.attachmentOwner = pack;
    logAction("KV::CSendLogWidget::sendPack",
              fmt::format("User sends logs: {0} files, {1} bytes packed", pack->fileCount, pack->size));
    progress->setRange(0, 0);
    setState(State::Sending);
    say(QStringLiteral("正在发送（%1）…").arg(sizeText(pack->size)), QStringLiteral("dim"));
    mailId = mail->send(
        message,
        [this](qint64 sent, qint64 all) {
            progress->setRange(0, all > 0 && sent < all ? progressSteps : 0);
            if (all > 0)
                progress->setValue(int(std::min<qint64>(progressSteps, sent * progressSteps / all)));
        },
        [this](const net::MailResult &result) { takeResult(result); });
}

void CSendLogWidget::takeResult(const net::MailResult &result)
{
    mailId = -1;
    const QString size = sizeText(pack->size);
    const QString notes =
        pack->notes.isEmpty() ? QString() : QStringLiteral("；") + pack->notes.join(QStringLiteral("；"));
    const net::CMailService *mail = net::getMailService();
    if (result.sent)
        forgetPack();
    setState(State::Ready);
    if (!result.sent) {
        say(result.serverWords.isEmpty() ? result.reason
                                         : QStringLiteral("%1\n服务器回答：%2").arg(result.reason, result.serverWords),
            QStringLiteral("error"));
        return;
    }
    say(QStringLiteral("已发送到 %1（%2）%3").arg(mail == nullptr ? QString() : mail->recipient(), size, notes));
    Q_EMIT sigSent();
}

void CSendLogWidget::slotStop()
{
    const bool isForMail = aim == Aim::Send;
    breakOff();
    setState(State::Ready);
    say(isForMail ? QStringLiteral("已停止，没有发送") : QStringLiteral("已停止"), QStringLiteral("dim"));
}

/// The strand and the mail service let go of the pack, and so of its folder, as soon as they notice.
void CSendLogWidget::breakOff()
{
    if (net::CMailService *mail = net::getMailService(); mail != nullptr && mailId >= 0)
        mail->cancel(mailId);
    mailId = -1;
    listing.reset();
    qDeleteAll(findChildren<QDialog *>()); // a preview holds the pack, a choice of file would start another one
    if (copy != nullptr)
        copy->cancelled = true;
    copy.reset();
    forgetPack();
}

void CSendLogWidget::forgetPack()
{
    if (pack != nullptr)
        pack->cancelled = true;
    pack.reset();
}

} // namespace KV
