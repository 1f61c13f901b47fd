#pragma once

#include <QtWidgets/QWidget>

#include "window/windowlook.h"
#include "zb/cuiresourcechangehandler.h"

class QHBoxLayout;

namespace terminal {

class BarLabel;

/// A part of a page: a thin title bar with a caption and what there is to say about the contents, and the contents
/// below it.
class Panel : public QWidget, public ZB::CUiResourceChangeHandler
{
    Q_OBJECT

public:
    explicit Panel(const QString &caption, QWidget *parent = nullptr);
    ~Panel() override;

    QString caption() const;
    /// Stands behind the caption.
    void setSummary(const QString &text);
    QString summary() const;
    /// Puts a widget, such as tabs, in the place of the caption.
    void replaceCaption(QWidget *widget);

    /// Brings title and figures up to date. Called a few times a second.
    virtual void refresh() {}
    /// Shows everything taken so far now, instead of with the next frame.
    virtual void showNow() {}

    void themeChanged() override;

protected:
    /// Fills the place under the title bar; called once, by the constructor of the derived panel.
    void setContents(QWidget *contents);
    /// At the right end of the title bar, behind those that are there; Tab goes on from it into the contents.
    void addTitleWidget(QWidget *widget);
    void paintEvent(QPaintEvent *event) override;

private:
    void applyLook();

    WindowLook look;
    QWidget *titleBar;
    QHBoxLayout *titleLayout;
    BarLabel *captionLabel;
    BarLabel *summaryLabel;
};

} // namespace terminal
