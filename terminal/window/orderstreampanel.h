#pragma once

#include <QtCore/QTimer>

#include "window/tablepanel.h"

class QButtonGroup;
class QLineEdit;

namespace terminal {

class PagedStreamTable;

/// Every order of the market, with what became of it, page by page: the newest at the end. In its title the orders can
/// be narrowed down to a status and to codes that contain a text.
class OrderStreamPanel : public TablePanel
{
    Q_OBJECT

public:
    explicit OrderStreamPanel(QWidget *parent = nullptr);
    ~OrderStreamPanel() override;

    PagedStreamTable &stream() const { return *streamTable; }
    void take(const FeedPump::Records &records) override;
    int shownCount() const override;
    int allCount() const override;
    void refresh() override;
    void showNow() override;

    void themeChanged() override;

private:
    void addStatuses();
    void addSearch();
    void applySearch();
    void showFilter();
    void sayWhyEmpty();
    void applyLook();

    PagedStreamTable *streamTable;
    QButtonGroup *statuses; ///< by status mode
    QLineEdit *search;
    QTimer searchDelay; ///< while somebody types
};

} // namespace terminal
