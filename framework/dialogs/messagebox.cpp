#include "zb/messagebox.h"

#include "dialogs/informationbox.h"
#include "utils/clogcenter.h"

namespace ZB {

namespace {

bool boxesShown = true;

} // namespace

void setMessageBoxesShown(bool shown)
{
    boxesShown = shown;
}

void showInformation(QWidget *parent, const QString &title, const QString &text)
{
    if (!boxesShown) {
        const QString line = QStringLiteral("%1: %2").arg(title, text);
        LOG4CXX_INFO(utils::getStdLogger(), line.toUtf8().constData());
        return;
    }
    auto *box = new InformationBox(parent, title, text);
    box->open();
}

} // namespace ZB
