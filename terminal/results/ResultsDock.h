#pragma once

#include "terminal/chart/theme/ChartTheme.h"
#include "terminal/results/ResultsDesk.h"
#include "terminal/results/ResultsPanel.h"

#include <QDockWidget>
#include <QObject>

class QAction;
class QMainWindow;

namespace Terminal {

class TradeDock;
class UserPrompts;

/// The list of results beside the orders and positions: hidden at first, and asked for while it is shown.
class ResultsDock : public QObject
{
    Q_OBJECT

public:
    /// `window` and `prompts` must outlive this object.
    ResultsDock(QMainWindow *window, UserPrompts *prompts);
    ~ResultsDock() override;

    /// Joins the bus instance of `address`. To be called once.
    void start(const QString &address);

    void setTheme(const ChartTheme &theme);
    void setAmountsHidden(bool hidden);
    void showTexts();

    /// Shows the list, with the keyboard in it.
    void open();
    /// The same of this list.
    void openList(ResultGroup group);

    QAction *action() const;
    ResultsPanel *panel() const { return m_panel; }
    ResultsDesk *desk() { return &m_desk; }

    /// Writes the list that is shown into a file.
    void exportTo(const QString &path);

Q_SIGNALS:
    /// The user wants to see this on the chart.
    void placeAsked(const ResultsPlace &place);

private:
    void wireDesk();
    void wirePanel();
    void askForFile();
    void tellMethod(const DeskOutcome &outcome);

    QMainWindow *m_window;
    UserPrompts *m_prompts;
    QString m_address;
    ResultsPanel *m_panel;
    ResultsDesk m_desk;
    TradeDock *m_dock;
    bool m_hidesAmounts = false;
};

} // namespace Terminal
