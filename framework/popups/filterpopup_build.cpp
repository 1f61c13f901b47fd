#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "popups/checklist.h"
#include "popups/filterpopup.h"
#include "popups/hintfield.h"
#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

QStringList sortedTexts(const FilterCondition &condition)
{
    QStringList texts = condition.second.values();
    texts.sort();
    return texts;
}

QString conditionText(const FilterCondition &condition)
{
    constexpr int named = 3;
    QStringList texts = sortedTexts(condition);
    const int count = texts.size();
    texts = texts.mid(0, named);
    for (QString &text : texts)
        text = QStringLiteral("“%1”").arg(text.size() > 12 ? text.left(12) + QStringLiteral("…") : text);
    QString list = texts.join(condition.first == FilterContains ? QStringLiteral("或") : QStringLiteral("、"));
    if (count > named)
        list += QStringLiteral("等 %1 个").arg(count);
    return (condition.first == FilterContains ? QStringLiteral("包含%1") : QStringLiteral("不是%1")).arg(list);
}

/// Of several conditions; exact ones have been put into one with the others.
QString conditionsText(const FilterConditions &conditions)
{
    QStringList texts;
    for (const FilterCondition &condition : conditions)
        texts.append(conditionText(condition));
    return QStringLiteral("现有条件：%1。改选后由新的选择代替。").arg(texts.join(QStringLiteral("，且")));
}

} // namespace

void FilterPopup::build(const QString &title)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(scaled(8), scaled(8), scaled(8), scaled(8));
    column->setSpacing(scaled(6));
    column->addWidget(titleLabel(QStringLiteral("筛选：%1").arg(title), scaled(250), this));
    if (present.size() > 1) {
        QLabel *conditions = dimLabel(conditionsText(present), this);
        conditions->setWordWrap(true);
        column->addWidget(conditions);
    }
    search = new HintField(QStringLiteral("搜索取值"), this);
    search->installEventFilter(this);
    column->addWidget(search);
    list = new CheckList(look, this);
    list->setMinimumWidth(scaled(268));
    list->setFixedHeight(list->lineHeight() * mostLines);
    list->setEmptyText(QStringLiteral("正在读取…"));
    column->addWidget(buildChoiceRow());
    column->addWidget(list);
    contains = new HintField(QStringLiteral("或：包含文字（空格分隔多个）"), this);
    if (isPresent(FilterContains))
        contains->setText(sortedTexts(present.first()).join(QLatin1Char(' ')));
    presentWords = contains->text();
    column->addWidget(contains);
    column->addWidget(buildButtonRow());
    setFocusProxy(search);

    connect(search, &QLineEdit::textChanged, list, &CheckList::setSearch);
    connect(search, &QLineEdit::textChanged, this, &FilterPopup::updateState);
    connect(contains, &QLineEdit::textChanged, this, &FilterPopup::updateState);
    connect(list, &CheckList::checkChanged, this, &FilterPopup::updateState);
}

QWidget *FilterPopup::buildChoiceRow()
{
    auto *row = new QWidget(this);
    auto *line = tightRow(row);
    const auto add = [this, row, line](const QString &text) {
        QPushButton *button = linkButton(text, row);
        choiceButtons.push_back(button);
        line->addWidget(button);
        return button;
    };
    connect(add(QStringLiteral("全选")), &QPushButton::clicked, list, [this] { list->checkShown(true); });
    connect(add(QStringLiteral("全不选")), &QPushButton::clicked, list, [this] { list->checkShown(false); });
    connect(add(QStringLiteral("反选")), &QPushButton::clicked, list, &CheckList::invertShown);
    line->addStretch();
    state = dimLabel(QString(), row);
    line->addWidget(state);
    return row;
}

QWidget *FilterPopup::buildButtonRow()
{
    auto *row = new QWidget(this);
    auto *line = tightRow(row);
    remove = new QPushButton(QStringLiteral("清除筛选"), row);
    remove->setAutoDefault(false);
    auto *cancel = new QPushButton(QStringLiteral("取消"), row);
    cancel->setAutoDefault(false);
    accept = new QPushButton(QStringLiteral("确定"), row);
    accept->setDefault(true);
    line->addWidget(remove);
    line->addStretch();
    line->addWidget(cancel);
    line->addWidget(accept);
    connect(remove, &QPushButton::clicked, this, &FilterPopup::takeOff);
    connect(cancel, &QPushButton::clicked, this, &FilterPopup::close);
    connect(accept, &QPushButton::clicked, this, &FilterPopup::apply);
    return row;
}

} // namespace ZB
