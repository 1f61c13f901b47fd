#include "popups/markpopup.h"

#include <QtGui/QPainter>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <algorithm>
#include <cmath>

#include "popups/hintfield.h"
#include "popups/popupbuild.h"
#include "zb/cuiresource.h"

namespace ZB {

namespace {

constexpr int significantDigits = 14; ///< 12.3456万 is 123456, which the product is not quite
constexpr double tenThousand = 1e4;
constexpr double hundredMillion = 1e8;
const QChar tenThousandMark(0x4e07);
const QChar hundredMillionMark(0x4ebf);

QIcon swatch(const QString &colorKey)
{
    QPixmap picture(scaled(12), scaled(12));
    QColor color = *CUiResource::instance()->getColor(colorKey);
    color.setAlpha(255);
    picture.fill(color);
    QPainter painter(&picture);
    painter.setPen(*CUiResource::instance()->getColor(QStringLiteral("clr_table_header_text")));
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    painter.end();
    return QIcon(picture);
}

} // namespace

double thresholdOf(const QString &text)
{
    QString number = text.simplified().remove(QLatin1Char(',')).remove(QLatin1Char(' '));
    double unit = 1.0;
    if (number.endsWith(tenThousandMark) || number.endsWith(hundredMillionMark)) {
        unit = number.endsWith(tenThousandMark) ? tenThousand : hundredMillion;
        number.chop(1);
    }
    bool readable = false;
    const double value = number.toDouble(&readable) * unit;
    if (!readable || !std::isfinite(value))
        return 0.0;
    return QString::number(value, 'g', significantDigits).toDouble();
}

QString thresholdText(double threshold)
{
    if (threshold >= hundredMillion)
        return QString::number(threshold / hundredMillion, 'g', 12) + hundredMillionMark;
    if (threshold >= tenThousand)
        return QString::number(threshold / tenThousand, 'g', 12) + tenThousandMark;
    return threshold > 0 ? QString::number(threshold, 'g', 12) : QString();
}

MarkPopup::MarkPopup(const std::vector<Column> &numberColumns, const QVector<CTableRowMark> &marks, QWidget *parent)
    : PopupFrame(parent), columns(numberColumns)
{
    build();
    for (const CTableRowMark &mark : marks)
        addLine(mark);
    if (marks.isEmpty())
        addLine(CTableRowMark());
}

std::vector<std::pair<QString, QString>> MarkPopup::colorChoices()
{
    return {{QStringLiteral("ic_clr_syntax_edit_highlight"), QStringLiteral("高亮色")},
            {QStringLiteral("clr_global_rise"), QStringLiteral("上涨色")},
            {QStringLiteral("clr_global_fall"), QStringLiteral("下跌色")}};
}

void MarkPopup::build()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(scaled(8), scaled(8), scaled(8), scaled(8));
    column->setSpacing(scaled(6));
    column->addWidget(titleLabel(QStringLiteral("大单标记"), scaled(100), this));
    column->addWidget(dimLabel(QStringLiteral("数值达到阈值的行以所选颜色标出"), this));
    lineBox = new QVBoxLayout;
    lineBox->setSpacing(scaled(6));
    column->addLayout(lineBox);
    auto *row = new QWidget(this);
    auto *buttons = tightRow(row);
    auto *add = linkButton(QStringLiteral("添加规则"), row);
    auto *done = new QPushButton(QStringLiteral("关闭"), row);
    done->setAutoDefault(false);
    buttons->addWidget(add);
    buttons->addStretch();
    buttons->addWidget(done);
    column->addWidget(row);
    connect(add, &QPushButton::clicked, this, [this] { addLine(CTableRowMark()); });
    connect(done, &QPushButton::clicked, this, &MarkPopup::close);
}

void MarkPopup::addLine(const CTableRowMark &mark)
{
    Line line;
    line.row = new QWidget(this);
    auto *row = tightRow(line.row);
    line.column = comboBox(line.row);
    for (const Column &each : columns)
        line.column->addItem(each.name, each.column);
    line.column->setFixedWidth(scaled(120));
    line.column->setCurrentIndex(std::max(0, line.column->findData(mark.column)));
    line.threshold = new HintField(QStringLiteral("如 50万"), line.row);
    line.threshold->setText(thresholdText(mark.threshold));
    line.threshold->setFixedWidth(scaled(80));
    line.color = comboBox(line.row);
    for (const auto &[key, name] : colorChoices())
        line.color->addItem(swatch(key), name, key);
    const int known = line.color->findData(mark.colorKey);
    line.color->setCurrentIndex(known >= 0 ? known : int(lines.size()) % line.color->count());
    QPushButton *remove = linkButton(QStringLiteral("删除"), line.row);
    row->addWidget(line.column);
    row->addWidget(new QLabel(QStringLiteral("≥"), line.row));
    row->addWidget(line.threshold);
    row->addWidget(line.color);
    row->addWidget(remove);
    lineBox->addWidget(line.row);
    lines.push_back(line);

    connect(line.column, QOverload<int>::of(&QComboBox::activated), this, &MarkPopup::tell);
    connect(line.color, QOverload<int>::of(&QComboBox::activated), this, &MarkPopup::tell);
    connect(line.threshold, &QLineEdit::textChanged, this, &MarkPopup::tell);
    connect(remove, &QPushButton::clicked, this, [this, owner = line.row] { removeLine(owner); });
    line.row->show();
    line.threshold->setFocus();
    resizeToLines();
}

void MarkPopup::removeLine(QWidget *row)
{
    const auto line = std::find_if(lines.begin(), lines.end(), [row](const Line &each) { return each.row == row; });
    if (line == lines.end())
        return;
    lines.erase(line);
    lineBox->removeWidget(row);
    row->hide();
    row->deleteLater();
    resizeToLines();
    tell();
}

void MarkPopup::tell()
{
    QVector<CTableRowMark> marks;
    for (const Line &line : lines) {
        const double threshold = thresholdOf(line.threshold->text());
        if (threshold > 0 && line.column->currentIndex() >= 0)
            marks.append({line.column->currentData().toInt(), threshold, line.color->currentData().toString()});
    }
    Q_EMIT marksChanged(marks);
}

void MarkPopup::resizeToLines()
{
    if (isVisible())
        adjustSize();
}

} // namespace ZB
