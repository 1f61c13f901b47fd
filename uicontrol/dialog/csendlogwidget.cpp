#include "dialog/csendlogwidget.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QDateEdit>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <algorithm>
#include <numeric>

#include "dialog/clogpackfolder.h"
#include "dialog/clogsaver.h"
#include "dialog/dialoglook.h"
#include "dialog/mailaddresses.h"
#include "net/rpcengine.h"
#include "utils/clogcenter.h"
#include "zb/clineedit.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int pollMs = 50;
constexpr int usualDays = 3;
constexpr int windowWidth = 620;
constexpr int windowHeight = 600;
constexpr int progressSteps = 1000;
constexpr int placeRole = Qt::UserRole; ///< of a line: the file's place in the list of all

QString daysText(const LogFileEntry &file)
{
    const QString last = file.lastDay.toString(Qt::ISODate);
    return file.firstDay == file.lastDay ? last
                                         : QStringLiteral("%1 至 %2").arg(file.firstDay.toString(Qt::ISODate), last);
}

qint64 bytesOf(const QVector<LogFileEntry> &files)
{
    return std::accumulate(files.begin(), files.end(), qint64(0),
                           [](qint64 sum, const LogFileEntry &file) { return sum + file.size; });
}

} // namespace

/// What a look into the folder of logs brings; made on the strand.
struct CSendLogWidget::Listing
{
    std::atomic<bool> finished{false};
    QVector<LogFileEntry> files;
};

CSendLogWidget::CSendLogWidget(QWidget *parent) : ZB::CBaseWidget(parent, QStringLiteral("send_log_widget"))
{
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    setWindowTitle(QStringLiteral("发送日志"));
    build();
    applyLook();
    pollTimer.setInterval(pollMs);
    connect(&pollTimer, &QTimer::timeout, this, &CSendLogWidget::slotPoll);
    setState(State::Ready);
}

CSendLogWidget::~CSendLogWidget()
{
    breakOff();
}

void CSendLogWidget::applyLook()
{
    setStyleSheet(dialogStyleSheet());
    const int margin = ZB::scaled(14);
    layout()->setContentsMargins(margin, margin, margin, ZB::scaled(12));
    layout()->setSpacing(ZB::scaled(8));
    input->layout()->setSpacing(ZB::scaled(6));
    fileList->header()->setFixedHeight(ZB::scaled(26));
    fileList->header()->resizeSection(1, ZB::scaled(190));
    fileList->header()->resizeSection(2, ZB::scaled(90));
    fitToScale(this, QSize(windowWidth, windowHeight));
    update();
}

void CSendLogWidget::themeChanged()
{
    if (sendButton != nullptr)
        applyLook();
}

void CSendLogWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), *ZB::CUiResource::instance()->getColor(QStringLiteral("clr_background")));
}

void CSendLogWidget::showEvent(QShowEvent *event)
{
    ZB::CBaseWidget::showEvent(event);
    if (!event->spontaneous() && !isBusy())
        startListing();
}

void CSendLogWidget::closeEvent(QCloseEvent *event)
{
    breakOff();
    setState(State::Ready);
    ZB::CBaseWidget::closeEvent(event);
}

void CSendLogWidget::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        ZB::CBaseWidget::keyPressEvent(event);
    else if (isBusy())
        slotStop();
    else
        close();
}

void CSendLogWidget::slotPoll()
{
    if (state == State::Listing && listing->finished)
        takeListing();
    else if (state == State::Packing && pack->finished)
        takePack();
    else if (state == State::Packing)
        showPacking();
    else if (state == State::Saving && copy->finished)
        takeCopy();
    else if (state == State::Saving && pack->size > 0)
        progress->setValue(int(copy->writtenBytes * progressSteps / pack->size));
}

void CSendLogWidget::showPacking()
{
    const qint64 bytes = bytesOf(chosenFiles());
    progress->setRange(0, progressSteps);
    progress->setValue(bytes > 0 ? int(std::min<qint64>(progressSteps, pack->readBytes * progressSteps / bytes)) : 0);
}

void CSendLogWidget::startListing()
{
    forgetPack();
    files.clear();
    fillFiles();
    listing = std::make_shared<Listing>();
    setState(State::Listing);
    say(QStringLiteral("正在查找日志文件…"), QStringLiteral("dim"));
    net::RPCEngine::instance()
        ->getStrand("uicontrol_send_log")
        ->post([target = listing, folder = utils::getLogFolder()] {
            CLogPackFolder::removeLeftOvers();
            target->files = listLogFiles(folder);
            target->finished = true;
        });
}

void CSendLogWidget::takeListing()
{
    files = listing->files;
    listing.reset();
    setState(State::Ready);
    say(QString());
    chooseDays(usualDays);
}

/// The last days that there are logs of; all for 0.
void CSendLogWidget::chooseDays(int days)
{
    if (!files.isEmpty()) {
        const auto byFirst = [](const LogFileEntry &left, const LogFileEntry &right) {
            return left.firstDay < right.firstDay;
        };
        const QDate last = files.constFirst().lastDay;
        const QSignalBlocker quietFrom(fromDay);
        const QSignalBlocker quietTo(toDay);
        toDay->setDate(last);
        fromDay->setDate(days > 0 ? last.addDays(1 - days)
                                  : std::min_element(files.begin(), files.end(), byFirst)->firstDay);
    }
    slotRangeChanged();
}

/// A range that is the wrong way round is meant the other way.
void CSendLogWidget::slotRangeChanged()
{
    fillFiles();
    slotChoiceChanged();
}

/// Whatever is packed is of another choice from now on.
void CSendLogWidget::slotChoiceChanged()
{
    if (state != State::Ready)
        return;
    forgetPack();
    slotCheckInput();
}

void CSendLogWidget::fillFiles()
{
    const QSignalBlocker quiet(fileList);
    fileList->clear();
    const auto [from, to] = std::minmax({fromDay->date(), toDay->date()});
    for (int place = 0; place < files.size(); ++place) {
        const LogFileEntry &file = files[place];
        if (file.lastDay < from || file.firstDay > to)
            continue;
        const bool isReadable = file.problem.isEmpty();
        auto *line =
            new QTreeWidgetItem(fileList, {file.name, isReadable ? daysText(file) : file.problem, sizeText(file.size)});
        line->setData(0, placeRole, place);
        line->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        line->setToolTip(0, file.path);
        line->setToolTip(1, line->text(1));
        line->setCheckState(0, isReadable ? Qt::Checked : Qt::Unchecked);
        line->setDisabled(!isReadable);
    }
}

QVector<LogFileEntry> CSendLogWidget::chosenFiles() const
{
    QVector<LogFileEntry> chosen;
    for (int at = 0; at < fileList->topLevelItemCount(); ++at) {
        const QTreeWidgetItem *line = fileList->topLevelItem(at);
        if (line->checkState(0) == Qt::Checked)
            chosen.push_back(files[line->data(0, placeRole).toInt()]);
    }
    return chosen;
}

/// Why the files cannot be packed; empty when they can.
QString CSendLogWidget::inputProblem() const
{
    if (files.isEmpty())
        return utils::getLogFolder().isEmpty()
                   ? QStringLiteral("程序没有写日志文件")
                   : QStringLiteral("日志目录 %1 中没有日志文件").arg(utils::getLogFolder());
    if (fileList->topLevelItemCount() == 0)
        return QStringLiteral("所选日期内没有日志文件");
    const QVector<LogFileEntry> chosen = chosenFiles();
    if (chosen.isEmpty())
        return QStringLiteral("没有选择日志文件");
    const qint64 bytes = bytesOf(chosen);
    return bytes <= mostLogBytes
               ? QString()
               : QStringLiteral("所选日志共 %1，超过 %2，请缩小日期范围").arg(sizeText(bytes), sizeText(mostLogBytes));
}

void CSendLogWidget::slotCheckInput()
{
    if (state != State::Ready)
        return;
    const QVector<LogFileEntry> chosen = chosenFiles();
    const qint64 bytes = bytesOf(chosen);
    const QString problem = inputProblem();
    setLabelLook(total, problem.isEmpty() ? QStringLiteral("dim") : QStringLiteral("error"));
    total->setText(problem.isEmpty()
                       ? QStringLiteral("已选 %1 个文件，压缩前共 %2").arg(chosen.size()).arg(sizeText(bytes))
                       : problem);
    const MailAddresses read = readMailAddresses(copies->text());
    copies->setWarning(!read.wrong.isEmpty());
    copiesProblem->setText(read.wrong.isEmpty() ? QString() : QStringLiteral("“%1”不是邮箱地址").arg(read.wrong));
    const net::CMailService *mail = net::getMailService();
    recipient->setText(mail == nullptr || !mail->problem().isEmpty()
                           ? mailProblem()
                           : QStringLiteral("收件人 %1").arg(mail->recipient()));
    setLabelLook(recipient, mailProblem().isEmpty() ? QString() : QStringLiteral("error"));
    previewButton->setEnabled(problem.isEmpty());
    saveButton->setEnabled(problem.isEmpty());
    sendButton->setEnabled(problem.isEmpty() && read.wrong.isEmpty() && mailProblem().isEmpty());
}

QString CSendLogWidget::mailProblem() const
{
    const net::CMailService *mail = net::getMailService();
    const QString problem = mail == nullptr ? QStringLiteral("程序没有邮件服务") : mail->problem();
    return problem.isEmpty() ? QString() : QStringLiteral("无法发送：%1；可以另存后自行发送").arg(problem);
}

void CSendLogWidget::setState(State newState)
{
    state = newState;
    input->setEnabled(state == State::Ready);
    progress->setVisible(isBusy());
    stopButton->setVisible(isBusy());
    saveButton->setEnabled(false);
    sendButton->setEnabled(false);
    if (state == State::Ready) {
        pollTimer.stop();
        slotCheckInput();
    } else if (!pollTimer.isActive()) {
        pollTimer.start();
    }
}

void CSendLogWidget::say(const QString &text, const QString &look)
{
    setLabelLook(status, look);
    status->setText(text);
}

} // namespace KV
