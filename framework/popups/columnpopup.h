#pragma once

#include <QtCore/QStringList>
#include <vector>

#include "frameworkexport.h"
#include "popups/popupframe.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace ZB {

class CheckButton;
class CheckList;

/// What the column box shows.
struct ColumnPopupState
{
    struct Column
    {
        int column = -1; ///< model column
        QString name;
        bool visible = true;
    };
    std::vector<Column> columns; ///< those offered, in the order on the screen
    int frozenColumns = 0;
    bool rowNumbers = true;
    bool statistics = true;
    QStringList columnSets;
    QString columnSet; ///< the one in use
};

/// The box that arranges a table's columns: which are shown, in what order, how many stay in place, and named sets of
/// all that. Everything takes effect at once: it asks by signals, and the table answers with a new state.
class FRAMEWORK_API ColumnPopup : public PopupFrame
{
    Q_OBJECT

public:
    explicit ColumnPopup(QWidget *parent);

    void setState(const ColumnPopupState &state);
    void focusFrozenColumns();

Q_SIGNALS:
    void visibleChanged(int column, bool visible);
    /// The offered columns in their new order.
    void orderChanged(const std::vector<int> &columns);
    void frozenColumnsChanged(int count);
    void rowNumbersChanged(bool shown);
    void statisticsChanged(bool shown);
    void fitRequested();
    void resetRequested();
    void setSaved(const QString &name);
    void setChosen(const QString &name);
    void setDeleted(const QString &name);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    QWidget *buildFrameRow();
    QWidget *buildSetRow();
    QWidget *buildButtonRow();
    void tellVisible(int item);
    void tellOrder();
    void updateSetButtons();

    std::vector<ColumnPopupState::Column> columns; ///< as the table knows them
    QStringList setNames;
    bool filling = false; ///< the state is being put into the fields: nothing is told
    QLineEdit *search = nullptr;
    CheckList *list = nullptr;
    QSpinBox *frozen = nullptr;
    CheckButton *rowNumbers = nullptr;
    CheckButton *statistics = nullptr;
    QComboBox *sets = nullptr;
    QPushButton *save = nullptr;
    QPushButton *remove = nullptr;
};

} // namespace ZB
