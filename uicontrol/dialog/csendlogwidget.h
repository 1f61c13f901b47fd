#pragma once

#include <QtCore/QTimer>
#include <memory>

#include "dialog/clogpacker.h"
#include "net/cmailservice.h"
#include "uicontrolexport.h"
#include "zb/cbasewidget.h"

class QDateEdit;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;

namespace ZB {
class CLineEdit;
}

namespace KV {

struct LogCopy;

/// Sends the program's log files to those who look after it: which days, which files, a description, carbon copies.
/// Copies of the files with personal data masked are zipped off the GUI thread and go out by the host's mail service;
/// the user can look at them before, save them, and stop at any time. The log files are only read.
///
/// A window of its own; GUI thread; owned by its Qt parent. Each show reads the folder of logs anew. Closing it breaks
/// off what is under way and leaves nothing in the temporary folder.
class UICONTROL_API CSendLogWidget : public ZB::CBaseWidget
{
    Q_OBJECT

public:
    explicit CSendLogWidget(QWidget *parent);
    ~CSendLogWidget() override;

    /// Whether files are being packed, saved or sent.
    bool isBusy() const { return state != State::Listing && state != State::Ready; }
    /// Packs the files that are chosen, if need be, and writes the zip file to a path, in place of what is there. The
    /// window tells how it went. Does nothing while busy, before the window was shown and has read the folder of logs,
    /// and as long as something that the user has entered or chosen is wrong.
    void saveTo(const QString &path);

    void themeChanged() override;

Q_SIGNALS:
    /// A mail has been sent.
    void sigSent();

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private Q_SLOTS:
    void slotPoll();
    void slotRangeChanged();
    void slotChoiceChanged();
    void slotCheckInput();
    void slotSend();
    void slotPreview();
    void slotSave();
    void slotStop();

private:
    enum class State
    {
        Listing,
        Ready,
        Packing,
        Saving,
        Sending
    };
    enum class Aim ///< of a pack
    {
        Send,
        Preview,
        Save
    };
    struct Listing;

    void build();
    QHBoxLayout *buildRange();
    void buildFiles(QVBoxLayout *column);
    void buildMail(QVBoxLayout *column);
    void buildProgress(QVBoxLayout *column);
    QHBoxLayout *buildButtons();
    void applyLook();

    void startListing();
    void takeListing();
    void showPacking();
    void fillFiles();
    void chooseDays(int days);
    QVector<LogFileEntry> chosenFiles() const;
    QString inputProblem() const;
    QString mailProblem() const;

    void forgetPack();
    void startPacking(Aim aim);
    void takePack();
    void usePack();
    void sendPack();
    void takeResult(const net::MailResult &result);
    void savePack();
    void takeCopy();
    void breakOff();
    void setState(State newState);
    void say(const QString &text, const QString &look = QString());
    QString mailText() const;
    QString previewText() const;
    QString mailSubject() const;

    State state = State::Listing;
    Aim aim = Aim::Send;
    QString savePath;
    std::shared_ptr<Listing> listing;
    QVector<LogFileEntry> files;
    std::shared_ptr<LogPack> pack; ///< of the present choice, once it is packed or while it is
    std::shared_ptr<LogCopy> copy; ///< while the pack is saved
    int mailId = -1;               ///< of the mail that is under way
    QTimer pollTimer;

    QDateEdit *fromDay = nullptr;
    QDateEdit *toDay = nullptr;
    QTreeWidget *fileList = nullptr;
    QLabel *total = nullptr;
    QPlainTextEdit *description = nullptr;
    ZB::CLineEdit *copies = nullptr;
    QLabel *copiesProblem = nullptr;
    QLabel *recipient = nullptr;
    QProgressBar *progress = nullptr;
    QLabel *status = nullptr;
    QPushButton *previewButton = nullptr;
    QPushButton *saveButton = nullptr;
    QPushButton *stopButton = nullptr;
    QPushButton *sendButton = nullptr;
    QWidget *input = nullptr; ///< what is disabled while files are packed and sent
};

} // namespace KV
