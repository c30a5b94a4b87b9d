#include "terminal/ui/MainWindow.h"

#include "terminal/chart/ChartInput.h"
#include "terminal/chart/ChartView.h"
#include "terminal/chart/ReadoutBar.h"

#include <QActionGroup>
#include <QComboBox>
#include <QToolBar>
#include <QVBoxLayout>

namespace Terminal {

MainWindow::MainWindow(const DataFolder &folder, const TerminalOptions &options, QWidget *parent)
    : QMainWindow(parent),
      m_folder(folder),
      m_options(options),
      m_chart(new ChartView),
      m_readout(new ReadoutBar(m_chart)),
      m_securities(new QComboBox),
      m_periods(new QActionGroup(this))
{
    auto *const centre = new QWidget;
    auto *const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_readout);
    column->addWidget(m_chart, 1);
    setCentralWidget(centre);
    setUpToolBar();
    new ChartInput(m_chart, nullptr, this);
    applyTheme();
    resize(options.size);
}

MainWindow::~MainWindow() = default;

void MainWindow::setUpToolBar()
{
    auto *const bar = addToolBar(tr("Chart"));
    bar->setMovable(false);
    addSecurityChoice(bar);
    bar->addSeparator();
    addPeriodActions(bar);
}

void MainWindow::addSecurityChoice(QToolBar *bar)
{
    for (const Security &security : m_folder.securities()) {
        m_securities->addItem(security.code + QStringLiteral("  ") + security.name, security.code);
    }
    bar->addWidget(m_securities);
    connect(m_securities, QOverload<int>::of(&QComboBox::activated), this,
            [this] { load(m_securities->currentData().toString(), m_chart->data().period, 0); });
}

void MainWindow::addPeriodActions(QToolBar *bar)
{
    for (const ChartPeriod period : chartPeriods) {
        QAction *const action = m_periods->addAction(periodTitle(period));
        action->setCheckable(true);
        action->setData(static_cast<int>(period));
        bar->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, period] { load(m_chart->data().security.code, period, 0); });
    }
}

void MainWindow::applyTheme()
{
    const ChartTheme theme = makeTheme(m_options.theme, m_options.riseColour);
    setPalette(widgetPalette(theme));
    setStyleSheet(windowStyleSheet(theme));
    m_chart->setTheme(theme);
    m_readout->update();
}

bool MainWindow::load(const QString &code, ChartPeriod period, std::int32_t day)
{
    const auto loaded = m_folder.load(code, period, day);
    m_loadError = loaded.error();
    if (!loaded) {
        return false;
    }
    m_chart->setData(loaded.value());
    m_securities->setCurrentIndex(m_securities->findData(code));
    for (QAction *const action : m_periods->actions()) {
        action->setChecked(action->data().toInt() == static_cast<int>(period));
    }
    setWindowTitle(loaded.value().security.name + QLatin1Char(' ') + code);
    return true;
}

} // namespace Terminal
