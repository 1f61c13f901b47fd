#pragma once

#include <QtWidgets/QWidget>
#include <vector>

#include "window/windowlook.h"

class QHBoxLayout;
class QLineEdit;

namespace terminal {

class BarButton;
class BarLabel;

/// The bar over a log: which levels it shows, what to look for in it, how it shows lines. All of it is at hand by
/// keyboard too; the tool tips name the keys, which are the panel's.
class LogPanelBar : public QWidget
{
    Q_OBJECT

public:
    explicit LogPanelBar(QWidget *parent = nullptr);
    ~LogPanelBar() override;

    void setLook(const WindowLook &look);
    /// A refhost::LogLevel, or KV::CHpfLogWidget::allLevels.
    void setLevel(int level);
    void setCounts(qint64 warnings, qint64 errors);
    void setWrap(bool wrap);
    /// `newLines`: that have come since the view stopped following.
    void setFollowing(bool following, qint64 newLines);
    QString searchText() const;
    void setSearchText(const QString &text);
    /// "3 / 12" of what is looked for; an empty text looks for nothing.
    void setHits(int number, int count);
    /// Shows the button that sends logs, which is hidden at first.
    void offerSending();
    /// Puts the cursor into the search field, with its text selected.
    void focusSearch();

Q_SIGNALS:
    void levelChosen(int level);
    void searchTextChanged(const QString &text);
    void findRequested(bool forward);
    void wrapChosen();
    void clearChosen();
    void sendChosen();
    void followChosen();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addLevels(QHBoxLayout *layout);
    void addSearch(QHBoxLayout *layout);
    void addActions(QHBoxLayout *layout);
    BarButton *addButton(QHBoxLayout *layout, const QString &text, const QString &tip);

    WindowLook look;
    std::vector<BarButton *> levelButtons; ///< by level
    QLineEdit *searchField;
    BarLabel *hitsLabel;
    BarButton *previousButton;
    BarButton *nextButton;
    BarButton *wrapButton;
    BarButton *followButton;
    BarButton *sendButton;
};

} // namespace terminal
