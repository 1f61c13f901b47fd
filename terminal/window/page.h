#pragma once

#include <QtWidgets/QWidget>
#include <vector>

namespace terminal {

class Panel;

/// One page of the window: an arrangement of panels. The window asks the page that is in front only.
class Page : public QWidget
{
    Q_OBJECT

public:
    /// `name` is fit for file names and settings, `title` is what the user reads on the tab.
    Page(const QString &name, const QString &title, QWidget *parent);
    ~Page() override;

    const QString &name() const { return pageName; }
    const QString &title() const { return pageTitle; }

    /// In the order in which F6 goes through them; panels that are hidden are passed over. Never empty.
    virtual std::vector<Panel *> panels() const = 0;

    /// Brings titles and figures up to date. Called a few times a second.
    virtual void refresh();
    /// Shows everything taken so far now, instead of with the next frame.
    virtual void showNow();
    /// Whether nothing of what the page was given is still on its way. To be asked again until it is so.
    virtual bool isSettled() { return true; }
    /// Goes to the next of the page's arrangements, if it has several.
    virtual void toggleLayout() {}
    /// Gives the keyboard to the panel behind the one that has it.
    void focusNextPanel();

    /// From and to the user's configuration.
    virtual void loadState() {}
    virtual void saveState() const {}

private:
    QString pageName;
    QString pageTitle;
};

} // namespace terminal
