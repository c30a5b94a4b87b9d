#pragma once

#include "terminal/TerminalOptions.h"
#include "terminal/data/DataFolder.h"

#include <QMainWindow>

class QActionGroup;
class QComboBox;

namespace Terminal {

class ChartView;
class ReadoutBar;

/// The window of the terminal: the tool bar, the read-out line and the chart.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(const DataFolder &folder, const TerminalOptions &options, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Shows another security, period or day; false when its bars could not be loaded, in which case
    /// nothing changes and loadError() says why.
    bool load(const QString &code, ChartPeriod period, std::int32_t day);
    QString loadError() const { return m_loadError; }

    ChartView *chart() const { return m_chart; }

private:
    void setUpToolBar();
    void addSecurityChoice(QToolBar *bar);
    void addPeriodActions(QToolBar *bar);
    void applyTheme();

    DataFolder m_folder;
    TerminalOptions m_options;
    QString m_loadError;
    ChartView *m_chart;
    ReadoutBar *m_readout;
    QComboBox *m_securities;
    QActionGroup *m_periods;
};

} // namespace Terminal
