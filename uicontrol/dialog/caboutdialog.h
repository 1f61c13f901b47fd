#pragma once

#include <QtWidgets/QDialog>

#include "kv/productinfo.h"
#include "uicontrolexport.h"
#include "zb/cuiresourcechangehandler.h"

class QGridLayout;
class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
class QVBoxLayout;

namespace KV {

/// What the product is, what the user may do with it and for how long, and whose work is in it. Reads the host's
/// product information when it is made, the authorisation at every show. GUI thread; owned by its Qt parent; does not
/// block.
class UICONTROL_API CAboutDialog : public QDialog, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit CAboutDialog(QWidget *parent);
    ~CAboutDialog() override;

    /// Product, version, build and libraries, a line each, as the copy button puts it on the clipboard.
    QString versionText() const;

    void themeChanged() override;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build();
    void addProduct(QVBoxLayout *column);
    void addAuthorisation(QVBoxLayout *column);
    void addComponents(QVBoxLayout *column);
    void addButtons(QVBoxLayout *column);
    QLabel *addRow(QGridLayout *grid, const QString &title);
    void showAuthorisation();
    void openAddress(const QString &address);
    void openLicence(QTreeWidgetItem *item);
    void applyLook();

    const ProductInfo product;
    QLabel *user = nullptr;
    QLabel *organisation = nullptr;
    QLabel *kinds = nullptr;
    QLabel *validityIcon = nullptr;
    QLabel *validity = nullptr;
    QTreeWidget *components = nullptr;
    QLabel *notice = nullptr;
    QString validityImage; ///< key; empty for none
};

} // namespace KV
