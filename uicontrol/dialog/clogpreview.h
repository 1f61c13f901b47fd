#pragma once

#include <QtWidgets/QDialog>
#include <memory>

#include "dialog/clogpacker.h"
#include "uicontrolexport.h"
#include "zb/cuiresourcechangehandler.h"

class QLabel;
class QListWidget;
class QPlainTextEdit;

namespace KV {

/// Shows what is about to leave: the mail's text, and the files as they are in the zip file, the beginning of each. GUI
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
    QString fileText(const QString &name);

    const QString mail;
    const std::shared_ptr<const LogPack> pack;
    QListWidget *list = nullptr;
    QPlainTextEdit *contents = nullptr;
    QLabel *note = nullptr;
};

} // namespace KV
