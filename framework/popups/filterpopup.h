#pragma once

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
/// contained text. Where there are more texts than it lists, a line at the end stands for the others. Applying a box
/// that was left as it came up changes nothing, whatever the filter. Gathers the texts in slices while it is open; what
/// they are gathered from must outlive it.
///
/// Keys: typing searches; Down goes into the list; Enter applies, in a search to what the search leaves; Escape closes.
class FRAMEWORK_API FilterPopup : public PopupFrame
{
    Q_OBJECT

public:
    /// present: the filter that the column has now. One that the box cannot show as ticks or as one contained text is
    /// told in words, with those texts ticked that pass.
    FilterPopup(int column, const QString &title, const FilterConditions &present,
                std::unique_ptr<DistinctTexts> gatherer, QWidget *parent);
    ~FilterPopup() override;

    int column() const;
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
    static constexpr int fewestLines = 3; ///< of the list, whatever there is to choose from
    static constexpr int mostLines = 10;

    void build(const QString &title);
    bool isPresent(EFilterType type) const;
    bool isUntouched() const;
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
    const FilterConditions present;
    QString presentWords;            ///< in the field for a contained text
    std::vector<bool> offeredChecks; ///< by item, before the user chose
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
