#pragma once

#include <QtWidgets/QDialog>
#include <memory>

#include "dialog/clogpacker.h"
#include "uicontrolexport.h"
#include "zb/cuiresourcechangehandler.h"

class KZip;
class QLabel;
class QListWidget;
class QIODevice;
class QPlainTextEdit;
class QPushButton;

namespace KV {

/// Shows what is about to leave: the mail's text, and the files as they are in the zip file, piece by piece. GUI
/// thread; owned by its Qt parent; holds the pack.
class UICONTROL_API CLogPreview : public QDialog, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    CLogPreview(const QString &mailText, const std::shared_ptr<const LogPack> &pack, QWidget *parent);
    ~CLogPreview() override;

    void themeChanged() override;

private:
    void applyLook();
    void showLine(int line);
    void openFile(const QString &name);
    void showMore();

    const QString mail;
    const std::shared_ptr<const LogPack> pack;
    std::unique_ptr<KZip> zip;
    std::unique_ptr<QIODevice> file; ///< the one that is shown; null for the mail
    qint64 fileSize = 0;             ///< bytes, unpacked
    qint64 shownSize = 0;
    QByteArray rest; ///< the beginning of a line whose end has not been read
    QListWidget *list = nullptr;
    QPlainTextEdit *contents = nullptr;
    QLabel *note = nullptr;
    QPushButton *moreButton = nullptr;
};

} // namespace KV
