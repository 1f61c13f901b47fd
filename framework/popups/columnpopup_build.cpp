#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>

#include "popups/checkbutton.h"
#include "popups/checklist.h"
#include "popups/columnpopup.h"
#include "popups/hintfield.h"
#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

void ColumnPopup::build()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(scaled(8), scaled(8), scaled(8), scaled(8));
    column->setSpacing(scaled(6));
    auto *head = new QWidget(this);
    auto *headRow = tightRow(head);
    headRow->addWidget(titleLabel(QStringLiteral("列设置"), scaled(100), head));
    headRow->addStretch();
    headRow->addWidget(dimLabel(QStringLiteral("拖动或 Ctrl+↑↓ 调整顺序"), head));
    column->addWidget(head);
    search = new HintField(QStringLiteral("搜索列"), this);
    search->installEventFilter(this);
    column->addWidget(search);
    list = new CheckList(look, this);
    list->setMinimumWidth(scaled(300));
    list->setMovable(true);
    list->setEmptyText(QStringLiteral("没有匹配的列"));
    column->addWidget(list);
    column->addWidget(buildFrameRow());
    column->addWidget(buildSetRow());
    column->addWidget(buildButtonRow());
    setFocusProxy(search);

    connect(search, &QLineEdit::textChanged, list, &CheckList::setSearch);
    connect(list, &CheckList::checkChanged, this, &ColumnPopup::tellVisible);
    connect(list, &CheckList::itemMoved, this, &ColumnPopup::tellOrder);
}

QWidget *ColumnPopup::buildFrameRow()
{
    auto *row = new QWidget(this);
    auto *line = tightRow(row);
    line->addWidget(new QLabel(QStringLiteral("冻结前"), row));
    frozen = new QSpinBox(row);
    frozen->setButtonSymbols(QAbstractSpinBox::NoButtons);
    frozen->setFixedWidth(scaled(40));
    line->addWidget(frozen);
    line->addWidget(new QLabel(QStringLiteral("列"), row));
    line->addStretch();
    rowNumbers = new CheckButton(QStringLiteral("行号"), look, row);
    statistics = new CheckButton(QStringLiteral("统计行"), look, row);
    line->addWidget(rowNumbers);
    line->addWidget(statistics);
    const auto unlessFilling = [this](auto signal) {
        return [this, signal](auto value) {
            if (!filling)
                Q_EMIT(this->*signal)(value);
        };
    };
    connect(frozen, QOverload<int>::of(&QSpinBox::valueChanged), this,
            unlessFilling(&ColumnPopup::frozenColumnsChanged));
    connect(rowNumbers, &CheckButton::toggled, this, unlessFilling(&ColumnPopup::rowNumbersChanged));
    connect(statistics, &CheckButton::toggled, this, unlessFilling(&ColumnPopup::statisticsChanged));
    return row;
}

QWidget *ColumnPopup::buildSetRow()
{
    auto *row = new QWidget(this);
    auto *line = tightRow(row);
    line->addWidget(new QLabel(QStringLiteral("列方案"), row));
    sets = comboBox(row);
    sets->setLineEdit(new HintField(QStringLiteral("方案名称"), sets));
    sets->setInsertPolicy(QComboBox::NoInsert);
    line->addWidget(sets, 1);
    save = linkButton(QStringLiteral("保存"), row);
    remove = linkButton(QStringLiteral("删除"), row);
    line->addWidget(save);
    line->addWidget(remove);
    connect(sets, &QComboBox::editTextChanged, this, &ColumnPopup::updateSetButtons);
    connect(sets, QOverload<int>::of(&QComboBox::activated), this, [this](int index) {
        if (index >= 0 && !filling)
            Q_EMIT setChosen(sets->itemText(index));
    });
    connect(save, &QPushButton::clicked, this, [this] { Q_EMIT setSaved(sets->currentText().trimmed()); });
    connect(remove, &QPushButton::clicked, this, [this] { Q_EMIT setDeleted(sets->currentText().trimmed()); });
    return row;
}

QWidget *ColumnPopup::buildButtonRow()
{
    auto *row = new QWidget(this);
    auto *line = tightRow(row);
    const auto add = [this, row, line](const QString &text) {
        auto *button = new QPushButton(text, row);
        button->setAutoDefault(false);
        line->addWidget(button);
        return button;
    };
    connect(add(QStringLiteral("全部显示")), &QPushButton::clicked, list, [this] { list->checkShown(true); });
    connect(add(QStringLiteral("最适合的列宽")), &QPushButton::clicked, this, &ColumnPopup::fitRequested);
    connect(add(QStringLiteral("恢复默认")), &QPushButton::clicked, this, &ColumnPopup::resetRequested);
    line->addStretch();
    connect(add(QStringLiteral("关闭")), &QPushButton::clicked, this, &ColumnPopup::close);
    return row;
}

} // namespace ZB
