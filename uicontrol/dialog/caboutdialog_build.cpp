#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include "dialog/caboutdialog.h"
#include "dialog/dialoglook.h"
#include "zb/cuiresource.h"

namespace KV {

void CAboutDialog::build()
{
    auto *column = new QVBoxLayout(this);
    addProduct(column);
    addAuthorisation(column);
    addComponents(column);
    addButtons(column);
}

void CAboutDialog::addProduct(QVBoxLayout *column)
{
    column->addWidget(plainLabel(product.name, QStringLiteral("title"), this));
    column->addWidget(plainLabel(QStringLiteral("版本 %1").arg(product.version), QString(), this));
    auto *built = plainLabel(product.build, QStringLiteral("dim"), this);
    built->setTextInteractionFlags(Qt::TextSelectableByMouse);
    built->setWordWrap(true);
    built->setVisible(!product.build.isEmpty());
    column->addWidget(built);
}

void CAboutDialog::addAuthorisation(QVBoxLayout *column)
{
    column->addSpacing(ZB::scaled(6));
    column->addWidget(plainLabel(QStringLiteral("授权信息"), QStringLiteral("bold"), this));
    auto *grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    user = addRow(grid, QStringLiteral("用户"));
    organisation = addRow(grid, QStringLiteral("所属机构"));
    kinds = addRow(grid, QStringLiteral("账户类别"));
    auto *until = new QHBoxLayout;
    validityIcon = new QLabel(this);
    validity = plainLabel(QString(), QString(), this);
    until->addWidget(validityIcon);
    until->addWidget(validity, 1);
    grid->addWidget(plainLabel(QStringLiteral("有效期"), QStringLiteral("dim"), this), 3, 0);
    grid->addLayout(until, 3, 1);
    column->addLayout(grid);
}

QLabel *CAboutDialog::addRow(QGridLayout *grid, const QString &title)
{
    const int row = grid->count() / 2;
    auto *value = plainLabel(QString(), QString(), this);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(plainLabel(title, QStringLiteral("dim"), this), row, 0, Qt::AlignTop);
    grid->addWidget(value, row, 1);
    return value;
}

void CAboutDialog::addComponents(QVBoxLayout *column)
{
    column->addSpacing(ZB::scaled(6));
    column->addWidget(plainLabel(QStringLiteral("使用的开源组件"), QStringLiteral("bold"), this));
    components = new QTreeWidget(this);
    components->setAccessibleName(QStringLiteral("使用的开源组件"));
    components->setRootIsDecorated(false);
    components->setUniformRowHeights(true);
    components->setHeaderLabels({QStringLiteral("组件"), QStringLiteral("版本"), QStringLiteral("许可证")});
    components->header()->setStretchLastSection(false);
    components->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (const ComponentLicence &each : product.components) {
        auto *line = new QTreeWidgetItem(components, {each.name, each.version, each.licence});
        line->setData(0, Qt::UserRole, each.url);
        line->setToolTip(0, each.name);
        line->setToolTip(2, QStringLiteral("双击或按回车查看许可证：%1").arg(each.url));
    }
    connect(components, &QTreeWidget::itemActivated, this, &CAboutDialog::openLicence);
    column->addWidget(components, 1);
}

void CAboutDialog::addButtons(QVBoxLayout *column)
{
    notice = plainLabel(QString(), QStringLiteral("dim"), this);
    column->addWidget(notice);
    auto *row = new QHBoxLayout;
    auto *agreement = dialogButton(QStringLiteral("用户协议"), true, this);
    auto *copy = dialogButton(QStringLiteral("复制版本信息"), true, this);
    auto *close = dialogButton(QStringLiteral("关闭"), false, this);
    agreement->setVisible(!product.agreementUrl.isEmpty());
    agreement->setToolTip(product.agreementUrl);
    close->setDefault(true);
    row->addWidget(agreement);
    row->addWidget(copy);
    row->addStretch();
    row->addWidget(close);
    column->addLayout(row);
    connect(agreement, &QPushButton::clicked, this, [this] { openAddress(product.agreementUrl); });
    connect(copy, &QPushButton::clicked, this, [this] {
        QGuiApplication::clipboard()->setText(versionText());
        setLabelLook(notice, QStringLiteral("dim"));
        notice->setText(QStringLiteral("版本信息已复制到剪贴板"));
    });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

} // namespace KV
