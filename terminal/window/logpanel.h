#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <array>
#include <boost/shared_ptr.hpp>

#include "window/panel.h"

namespace KV {
class CHpfLogWidget;
class CModelTextCache;
} // namespace KV

namespace terminal {

class BarLabel;
class LogPanelBar;

/// A panel with a log: its lines, the bar to filter and to search them, and what there is to say about them.
class LogPanel : public Panel
{
    Q_OBJECT

public:
    /// `key` names the log in the user's configuration and in the event of its clearing.
    LogPanel(const QString &caption, int widgetId, const QString &key, QWidget *parent = nullptr);
    ~LogPanel() override;

    KV::CHpfLogWidget &log() const { return *logWidget; }
    /// Takes lines in, separated by line feeds; they show within a tenth of a second.
    void add(const QString &text, int level);
    /// Stands in the title in front of the number of lines.
    void setOrigin(const QString &text);
    /// Stands below the log, or in its place while it is empty; an empty text for nothing to say.
    void setNotice(const QString &text, bool isProblem = false);
    /// Puts a button into the bar that sends logs.
    void offerSending();
    /// Lines taken in since the start or the last clearing.
    qint64 lineCount() const;

    /// Whether all that was taken in so far has reached the list that is shown. To be asked again until it is so.
    virtual bool isSettled();

    void refresh() override;
    void showNow() override;
    void loadState();
    void saveState() const;

    void themeChanged() override;

Q_SIGNALS:
    void sendChosen();

private:
    void addShortcuts();
    void connectBar();
    void chooseLevel(int level);
    void search(const QString &text);
    void findNext(bool forward);
    void endSearch();
    void toggleWrap();
    void takeClearing();
    void showState();
    void showHits();
    void showNotice();
    qint64 wantedLines() const;
    QString wrapPath() const;

    const QString key;
    LogPanelBar *bar;
    KV::CHpfLogWidget *logWidget;
    BarLabel *emptyLabel;
    QWidget *strip;
    BarLabel *noticeLabel;
    QString origin;
    QString notice;
    bool hasProblem = false;
    std::array<qint64, 3> taken{}; ///< lines since the last clearing, by level
    qint64 seen = 0;               ///< of wantedLines(), when the view followed last
    qint64 counted = 0;            ///< of lineCount(), when the hits were counted
    QElapsedTimer sinceCounting;
    boost::shared_ptr<KV::CModelTextCache> probe; ///< a list whose only line is queued behind all others
};

} // namespace terminal
