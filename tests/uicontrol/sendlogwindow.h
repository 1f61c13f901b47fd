#pragma once

#include <gtest/gtest.h>

#include <QtCore/QMap>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>
#include <memory>

#include "dialog/csendlogwidget.h"
#include "eventwindow.h"
#include "mail/smtpserver.h"
#include "printtext.h"
#include "services/userconfig.h"
#include "zb/clineedit.h"

/// A folder of logs, a temporary folder of its own, a user, a mail service, and the widget over a window.
class SendLogWindow : public testing::Test
{
protected:
    SendLogWindow();
    ~SendLogWindow() override;

    /// A log file with its last change on a day.
    void writeLog(const QString &name, const QByteArray &contents, const QDate &day = QDate::currentDate());
    QByteArray readLog(const QString &name) const;
    /// Shows the widget and waits until it knows the files.
    void open();
    /// Waits until the widget is at rest, and answers what it says.
    QString outcome();

    QPushButton *button(const QString &text) const;
    void press(const QString &text) { button(text)->click(); }
    QTreeWidget *fileList() const { return widget->findChild<QTreeWidget *>(); }
    QPlainTextEdit *description() const { return widget->findChild<QPlainTextEdit *>(); }
    ZB::CLineEdit *copies() const { return widget->findChild<ZB::CLineEdit *>(); }
    /// "x name days size" a line each; x for a file that goes along.
    QStringList shownFiles() const;
    /// Texts of the labels that contain this.
    QStringList labels(const QString &part) const;
    /// What lies in the temporary folder.
    QStringList leftOvers() const;
    bool isCleanSoon() const;
    static QMap<QString, QByteArray> filesIn(const QJsonObject &mail);

    QTemporaryDir folder;
    EventWindow window;
    refhost::UserConfig *config = nullptr;
    std::unique_ptr<KV::CSendLogWidget> widget;

private:
    QByteArray formerTemp;
};
