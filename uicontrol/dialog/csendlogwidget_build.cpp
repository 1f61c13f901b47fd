#include <QtWidgets/QDateEdit>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

#include "dialog/csendlogwidget.h"
#include "dialog/dialoglook.h"
#include "zb/clineedit.h"
#include "zb/cuiresource.h"

namespace KV {

namespace {

constexpr int copiesFieldId = 1;

QDateEdit *dayField(QWidget *parent)
{
    auto *field = new QDateEdit(QDate::currentDate(), parent);
    field->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    return field;
}

} // namespace

void CSendLogWidget::build()
{
    auto *column = new QVBoxLayout(this);
    input = new QWidget(this);
    auto *inputs = new QVBoxLayout(input);
    inputs->setContentsMargins(0, 0, 0, 0);
    inputs->addLayout(buildRange());
    buildFiles(inputs);
    buildMail(inputs);
    column->addWidget(input, 1);
    buildProgress(column);
    column->addLayout(buildButtons());
}

QHBoxLayout *CSendLogWidget::buildRange()
{
    auto *row = new QHBoxLayout;
    fromDay = dayField(input);
    toDay = dayField(input);
    fromDay->setAccessibleName(QStringLiteral("最早的日志日期"));
    toDay->setAccessibleName(QStringLiteral("最晚的日志日期"));
    row->addWidget(plainLabel(QStringLiteral("日志日期"), QString(), input));
    row->addWidget(fromDay);
    row->addWidget(plainLabel(QStringLiteral("至"), QString(), input));
    row->addWidget(toDay);
    const struct
    {
        const char *text;
        int days;
    } choices[] = {{"当天", 1}, {"近 3 天", 3}, {"近 7 天", 7}, {"全部", 0}};
    for (const auto &choice : choices) {
        QPushButton *each = dialogButton(QString::fromUtf8(choice.text), true, input);
        connect(each, &QPushButton::clicked, this, [this, days = choice.days] { chooseDays(days); });
        row->addWidget(each);
    }
    row->addStretch();
    connect(fromDay, &QDateEdit::dateChanged, this, &CSendLogWidget::slotRangeChanged);
    connect(toDay, &QDateEdit::dateChanged, this, &CSendLogWidget::slotRangeChanged);
    return row;
}

void CSendLogWidget::buildFiles(QVBoxLayout *column)
{
    fileList = new QTreeWidget(input);
    fileList->setAccessibleName(QStringLiteral("日志文件"));
    fileList->setRootIsDecorated(false);
    fileList->setUniformRowHeights(true);
    fileList->setHeaderLabels({QStringLiteral("文件"), QStringLiteral("日期"), QStringLiteral("大小")});
    fileList->header()->setStretchLastSection(false);
    fileList->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    fileList->headerItem()->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
    connect(fileList, &QTreeWidget::itemChanged, this, &CSendLogWidget::slotChoiceChanged);
    column->addWidget(fileList, 3);
    auto *row = new QHBoxLayout;
    total = plainLabel(QString(), QStringLiteral("dim"), input);
    previewButton = dialogButton(QStringLiteral("查看将要发送的内容"), true, input);
    row->addWidget(total, 1);
    row->addWidget(previewButton);
    column->addLayout(row);
    column->addWidget(plainLabel(QStringLiteral("发出的是副本，其中的账号、口令、令牌等已遮盖；日志文件本身不会改动"),
                                 QStringLiteral("dim"), input));
    connect(previewButton, &QPushButton::clicked, this, &CSendLogWidget::slotPreview);
}

void CSendLogWidget::buildMail(QVBoxLayout *column)
{
    column->addWidget(plainLabel(QStringLiteral("问题描述"), QString(), input));
    description = new QPlainTextEdit(input);
    description->setAccessibleName(QStringLiteral("问题描述"));
    description->setPlaceholderText(QStringLiteral("何时、做了什么、看到了什么"));
    description->setTabChangesFocus(true);
    column->addWidget(description, 2);
    recipient = plainLabel(QString(), QString(), input);
    recipient->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(recipient);
    auto *row = new QHBoxLayout;
    row->addWidget(plainLabel(QStringLiteral("抄送"), QString(), input));
    copies = new ZB::CLineEdit(copiesFieldId, input);
    copies->setAccessibleName(QStringLiteral("抄送"));
    copies->setEmptyHintText(QStringLiteral("可不填；多个地址用逗号或分号分隔"));
    row->addWidget(copies, 1);
    column->addLayout(row);
    copiesProblem = plainLabel(QString(), QStringLiteral("error"), input);
    column->addWidget(copiesProblem);
    connect(copies, &QLineEdit::textChanged, this, &CSendLogWidget::slotCheckInput);
}

void CSendLogWidget::buildProgress(QVBoxLayout *column)
{
    progress = new QProgressBar(this);
    QSizePolicy keeps = progress->sizePolicy();
    keeps.setRetainSizeWhenHidden(true); // nothing jumps when the work begins
    progress->setSizePolicy(keeps);
    status = plainLabel(QString(), QString(), this);
    status->setWordWrap(true);
    status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(progress);
    column->addWidget(status);
}

QHBoxLayout *CSendLogWidget::buildButtons()
{
    auto *row = new QHBoxLayout;
    saveButton = dialogButton(QStringLiteral("另存为…"), false, this);
    stopButton = dialogButton(QStringLiteral("停止"), false, this);
    auto *closeButton = dialogButton(QStringLiteral("关闭"), false, this);
    sendButton = dialogButton(QStringLiteral("发送"), false, this);
    sendButton->setDefault(true);
    row->addWidget(saveButton);
    row->addStretch();
    row->addWidget(stopButton);
    row->addWidget(closeButton);
    row->addWidget(sendButton);
    connect(saveButton, &QPushButton::clicked, this, &CSendLogWidget::slotSave);
    connect(stopButton, &QPushButton::clicked, this, &CSendLogWidget::slotStop);
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);
    connect(sendButton, &QPushButton::clicked, this, &CSendLogWidget::slotSend);
    return row;
}

} // namespace KV
