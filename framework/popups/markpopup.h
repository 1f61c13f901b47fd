#pragma once

#include <QtCore/QVector>
#include <vector>

#include "frameworkexport.h"
#include "popups/popupframe.h"
#include "zb/ctablerowmark.h"

class QComboBox;
class QLineEdit;
class QVBoxLayout;

namespace ZB {

/// The box with the rules that mark large rows: one line per rule. Every change that makes sense takes effect at once.
class FRAMEWORK_API MarkPopup : public PopupFrame
{
    Q_OBJECT

public:
    /// A number column by its model column.
    struct Column
    {
        int column = -1;
        QString name;
    };

    MarkPopup(const std::vector<Column> &columns, const QVector<CTableRowMark> &marks, QWidget *parent);

    /// Resource keys that a mark may have, with their names, in the order in which new rules get them.
    static std::vector<std::pair<QString, QString>> colorChoices();

Q_SIGNALS:
    void marksChanged(const QVector<CTableRowMark> &marks);

private:
    struct Line
    {
        QWidget *row = nullptr;
        QComboBox *column = nullptr;
        QLineEdit *threshold = nullptr;
        QComboBox *color = nullptr;
    };

    void build();
    void addLine(const CTableRowMark &mark);
    void removeLine(QWidget *row);
    void tell();
    void resizeToLines();

    const std::vector<Column> columns;
    std::vector<Line> lines;
    QVBoxLayout *lineBox = nullptr;
};

/// A threshold as a user types it: "500000", "500,000", "50万" or "0.5亿"; not above 0 when it is none.
FRAMEWORK_API double thresholdOf(const QString &text);
/// The same number as short as it reads well.
FRAMEWORK_API QString thresholdText(double threshold);

} // namespace ZB
