#include "dialog/caboutdialog.h"

#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QPixmap>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QTreeWidget>

#include "dialog/authorisationtext.h"
#include "dialog/dialoglook.h"
#include "kv/userauthorisation.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int dialogWidth = 460;
constexpr int dialogHeight = 520;
constexpr int addressRole = Qt::UserRole;

} // namespace

CAboutDialog::CAboutDialog(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint), product(getProductInfo())
{
    setObjectName(QStringLiteral("about_dialog"));
    setWindowTitle(QStringLiteral("关于 %1").arg(product.name));
    build();
    applyLook();
    showAuthorisation();
}

CAboutDialog::~CAboutDialog() = default;

void CAboutDialog::themeChanged()
{
    applyLook();
}

void CAboutDialog::applyLook()
{
    setStyleSheet(dialogStyleSheet());
    const int margin = ZB::scaled(16);
    layout()->setContentsMargins(margin, margin, margin, ZB::scaled(12));
    layout()->setSpacing(ZB::scaled(8));
    components->header()->setFixedHeight(ZB::scaled(26));
    components->header()->resizeSection(1, ZB::scaled(90));
    components->header()->resizeSection(2, ZB::scaled(130));
    validityIcon->setVisible(!validityImage.isEmpty());
    if (!validityImage.isEmpty())
        validityIcon->setPixmap(*ZB::CUiResource::instance()->getPixmap(validityImage));
    fitToScale(this, QSize(dialogWidth, dialogHeight));
}

/// The list passes Return on although a licence was opened with it; the dialog would press its default button.
void CAboutDialog::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || focusWidget() != components)
        QDialog::keyPressEvent(event);
}

void CAboutDialog::showEvent(QShowEvent *event)
{
    showAuthorisation();
    notice->clear();
    QDialog::showEvent(event);
}

void CAboutDialog::showAuthorisation()
{
    const UserAuthorisation known = getUserAuthorisation();
    const bool isLoggedIn = !known.user.isEmpty();
    const QString none = QStringLiteral("-");
    user->setText(isLoggedIn ? known.user : QStringLiteral("未登录"));
    organisation->setText(known.organisation.isEmpty() ? none : known.organisation);
    kinds->setText(known.accountKinds.isEmpty() ? none : known.accountKinds.join(QStringLiteral("、")));
    const ValidityText until = validityText(known, QDate::currentDate());
    validity->setText(isLoggedIn ? until.text : none);
    const EValidity state = isLoggedIn ? until.state : EValidity::Valid;
    setLabelLook(validity, state == EValidity::Expired      ? QStringLiteral("error")
                           : state == EValidity::NearExpiry ? QStringLiteral("warning")
                                                            : QString());
    validityImage = state == EValidity::Expired      ? QStringLiteral("img_error")
                    : state == EValidity::NearExpiry ? QStringLiteral("img_warning")
                                                     : QString();
    applyLook();
}

QString CAboutDialog::versionText() const
{
    QStringList lines{QStringLiteral("%1 %2").arg(product.name, product.version), product.build};
    for (const ComponentLicence &each : product.components)
        lines << QStringLiteral("%1 %2").arg(each.name, each.version).trimmed();
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

/// The host's word is not taken for anything but a page or a file.
void CAboutDialog::openAddress(const QString &address)
{
    const QUrl url(address);
    const bool isPage =
        QStringList({QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("file")}).contains(url.scheme());
    if (isPage && QDesktopServices::openUrl(url)) {
        notice->clear();
        return;
    }
    QGuiApplication::clipboard()->setText(address);
    setLabelLook(notice, QStringLiteral("error"));
    notice->setText(QStringLiteral("无法打开 %1，地址已复制到剪贴板").arg(address));
}

void CAboutDialog::openLicence(QTreeWidgetItem *item)
{
    openAddress(item->data(0, addressRole).toString());
}

} // namespace KV
