#pragma once

#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QTimer>
#include <memory>
#include <vector>

#include "frameworkexport.h"
#include "popups/distincttexts.h"
#include "popups/popupframe.h"
#include "zb/efiltertype.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace ZB {

class CheckList;

/// The filter box of a column: its different texts with how often each occurs, a search in them, and a condition by
/// contained text. Where there are more texts than it lists, a line at the end stands for the others. Gathers the texts
/// in slices while it is open; what they are gathered from must outlive it.
///
/// Keys: typing searches; Down goes into the list; Enter applies, in a search to what the search leaves; Escape closes.
class FRAMEWORK_API FilterPopup : public PopupFrame
{
    Q_OBJECT

public:
    using ColumnFilter = QPair<EFilterType, QSet<QString>>;

    /// present: the filter that the column has now.
    FilterPopup(int column, const QString &title, const ColumnFilter &present, std::unique_ptr<DistinctTexts> gatherer,
                QWidget *parent);
    ~FilterPopup() override;

    int column() const;
    /// Whether the column is filtered; at first it is when the present filter has texts. One without any lets nothing
    /// pass.
    void setFiltered(bool filtered);
    /// Whether texts show how often they occur; they do at first.
    void setCountsShown(bool shown);
    bool isGathered() const;
    /// Once gathered: the texts in reading order.
    QStringList texts() const;
    /// Replaces the offered texts; counts stay with those that have been gathered.
    void setTexts(const QStringList &texts);

    void abandon() override;

Q_SIGNALS:
    /// All texts are there: who wants to change what is offered does so now.
    void gathered();
    /// An empty set takes the filter off. The popup closes by itself.
    void chosen(int type, const QSet<QString> &values);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build(const QString &title);
    QWidget *buildChoiceRow();
    QWidget *buildButtonRow();
    void gatherOn();
    QStringList withFiltered(QStringList texts) const;
    std::vector<int> countsOf(const QStringList &texts) const;
    void updateState();
    void apply();
    void takeOff();
    void finish(int type, const QSet<QString> &values);
    QSet<QString> checkedTexts() const;
    bool isRestChecked() const;

    static constexpr int restItem = -1; ///< CheckItem::id of the line for the values that are not listed; the last one
    const int filterColumn;
    const ColumnFilter present;
    bool filtered;
    bool countsShown = true;
    bool offered = false; ///< somebody has set the texts since they were gathered
    std::unique_ptr<DistinctTexts> gatherer;
    std::vector<QString> textOfItem; ///< by CheckItem::id
    QTimer step;
    QLineEdit *search = nullptr;
    CheckList *list = nullptr;
    QLineEdit *contains = nullptr;
    QLabel *state = nullptr;
    QPushButton *accept = nullptr;
    QPushButton *remove = nullptr;
    std::vector<QPushButton *> choiceButtons;
};

} // namespace ZB
