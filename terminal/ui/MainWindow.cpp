#include "terminal/ui/MainWindow.h"

#include "terminal/chart/view/ChartInput.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/chart/view/ReadoutBar.h"
#include "terminal/replay/ReplayedChart.h"
#include "terminal/snapshot/Picture.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trade/TradeStyle.h"
#include "terminal/ui/ReplayBar.h"
#include "tradechartobject/common/TradeVocabulary.h"

#include <QActionGroup>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <QUuid>
#include <QVBoxLayout>

namespace Terminal {

namespace {

/// The close by which today's price limits go.
TradeDocks::CloseBefore closeBeforeToday(const ChartSource &source)
{
    return [&source](const ChartData &shown) {
        return source.closeBefore(shown.security.code, static_cast<std::int32_t>(TradeChart::currentDate()));
    };
}

} // namespace

MainWindow::MainWindow(const DataFolder &folder, const TerminalOptions &options, QWidget *parent)
    : QMainWindow(parent),
      m_replay(nullptr),
      m_source(folder, &m_replay),
      m_options(options),
      m_screenId("terminal-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces)),
      m_chart(new ChartView),
      m_readout(new ReadoutBar(m_chart)),
      m_prompts(m_chart),
      m_toolBar(new QToolBar),
      m_securities(new QComboBox),
      m_days(new QComboBox),
      m_periods(new QActionGroup(this)),
      m_input(std::make_unique<ChartInput>(m_chart, nullptr, nullptr)),
      m_trade(std::make_unique<TradeDocks>(this, m_chart, &m_prompts, closeBeforeToday(m_source)))
{
    auto *const centre = new QWidget;
    auto *const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_readout);
    column->addWidget(m_chart, 1);
    setCentralWidget(centre);
    setUpToolBar();
    setUpReplay();
    applyTheme();
    applyLanguage();
    resize(options.size);
    m_chart->setFocus();
}

MainWindow::~MainWindow()
{
    m_trade.reset();
    m_input.reset();
    m_overlays.reset();
}

void MainWindow::setUpToolBar()
{
    m_toolBar->setObjectName(QStringLiteral("chartBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    addToolBar(m_toolBar);
    addSecurityChoice();
    m_toolBar->addSeparator();
    addPeriodActions();
    addDayChoice();
    m_toolBar->addSeparator();
    addOverlayActions();
    auto *const gap = new QWidget;
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_toolBar->addWidget(gap);
    addLookActions();
    addTradeActions();
}

void MainWindow::setUpReplay()
{
    m_replayedChart = new ReplayedChart(m_chart, &m_replay, this);
    auto *const bar = new ReplayBar(&m_replay, m_chart);
    bar->setObjectName(QStringLiteral("replayBar"));
    addToolBar(Qt::BottomToolBarArea, bar);
    connect(bar, &ReplayBar::replayAsked, this, &MainWindow::setReplaying);
}

void MainWindow::addSecurityChoice()
{
    for (const Security &security : m_source.securities()) {
        m_securities->addItem(security.code + QStringLiteral("  ") + security.name, security.code);
    }
    m_toolBar->addWidget(m_securities);
    connect(m_securities, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        loadOrTell(m_securities->itemData(row).toString(), m_chart->data().period, 0);
    });
}

void MainWindow::addPeriodActions()
{
    for (const ChartPeriod period : chartPeriods) {
        QAction *const action = m_periods->addAction(QString());
        action->setCheckable(true);
        action->setData(static_cast<int>(period));
        m_toolBar->addAction(action);
        connect(action, &QAction::triggered, this,
                [this, period] { loadOrTell(m_chart->data().security.code, period, 0); });
    }
}

void MainWindow::addDayChoice()
{
    m_days->setObjectName(QStringLiteral("shortChoice"));
    m_daysAction = m_toolBar->addWidget(m_days);
    connect(m_days, QOverload<int>::of(&QComboBox::activated), this, [this](int row) {
        loadOrTell(m_chart->data().security.code, ChartPeriod::Minute, m_days->itemData(row).toInt());
    });
}

void MainWindow::addOverlayActions()
{
    for (const OverlayKind &kind : overlayKinds()) {
        QAction *const action = addToggle(m_toolBar, m_options.overlays.contains(QLatin1String(kind.word)));
        action->setEnabled(false);
        m_overlayActions.push_back(action);
        connect(action, &QAction::toggled, this, [this, &kind](bool shown) { toggleOverlay(kind, shown); });
    }
}

void MainWindow::addTradeActions()
{
    m_viewMenu->addSeparator();
    m_viewMenu->addAction(m_trade->ticketAction());
    m_viewMenu->addAction(m_trade->panelAction());
    m_trade->setAmountsHidden(m_options.hidesAmounts);
}

QAction *MainWindow::addToggle(QWidget *place, bool checked)
{
    auto *const action = new QAction(this);
    action->setCheckable(true);
    action->setChecked(checked);
    place->addAction(action);
    return action;
}

/// A button that opens what is not chosen often: how the chart looks, and its export.
void MainWindow::addViewMenu()
{
    auto *const button = new QToolButton;
    m_viewMenu = new QMenu(button);
    button->setMenu(m_viewMenu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setDefaultAction(m_viewMenu->menuAction());
    m_toolBar->addWidget(button);
}

void MainWindow::addLookActions()
{
    m_amountsAction = addToggle(m_toolBar, m_options.hidesAmounts);
    connect(m_amountsAction, &QAction::toggled, this, [this](bool hidden) {
        m_trade->setAmountsHidden(hidden);
        if (m_overlays) {
            m_overlays->setAmountsHidden(hidden);
        }
    });
    addViewMenu();
    m_riseAction = addToggle(m_viewMenu, m_options.riseColour == RiseColour::Green);
    connect(m_riseAction, &QAction::toggled, this, [this](bool green) {
        m_options.riseColour = green ? RiseColour::Green : RiseColour::Red;
        applyTheme();
    });
    m_darkAction = addToggle(m_viewMenu, m_options.theme == ThemeKind::Dark);
    connect(m_darkAction, &QAction::toggled, this, [this](bool dark) {
        m_options.theme = dark ? ThemeKind::Dark : ThemeKind::Light;
        applyTheme();
    });
    m_languageAction = m_viewMenu->addAction(QString());
    connect(m_languageAction, &QAction::triggered, this, [this] {
        m_options.language =
            m_options.language == QLatin1String("zh") ? QStringLiteral("en") : QStringLiteral("zh");
        applyLanguage();
    });
    m_exportAction = m_viewMenu->addAction(QString());
    m_exportAction->setShortcut(QKeySequence::Save);
    connect(m_exportAction, &QAction::triggered, this, &MainWindow::exportChart);
}

void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    QMainWindow::changeEvent(event);
}

void MainWindow::showTexts()
{
    for (QAction *const action : m_periods->actions()) {
        action->setText(periodTitle(static_cast<ChartPeriod>(action->data().toInt())));
    }
    for (size_t i = 0; i < m_overlayActions.size(); ++i) {
        m_overlayActions[i]->setText(overlayTitle(overlayKinds()[i]));
    }
    m_securities->setAccessibleName(tr("Security"));
    m_days->setAccessibleName(tr("Day"));
    m_amountsAction->setText(tr("Hide amounts"));
    m_viewMenu->setTitle(tr("View"));
    m_riseAction->setText(tr("Green rises"));
    m_darkAction->setText(tr("Dark"));
    m_languageAction->setText(m_options.language == QLatin1String("zh") ? QStringLiteral("English")
                                                                        : QStringLiteral(u"中文"));
    m_exportAction->setText(tr("Export chart"));
    m_toolBar->setWindowTitle(tr("Chart"));
    m_trade->showTexts();
}

void MainWindow::applyLanguage()
{
    m_language.set(m_options.language);
    const QLocale::Language language = ProgramLanguage::localeLanguage(m_options.language);
    m_readout->setLanguage(language);
    m_chart->setLanguage(language);
    showTexts();
}

void MainWindow::applyTheme()
{
    const ChartTheme theme = makeTheme(m_options.theme, m_options.riseColour);
    // For lists and questions, too, to which a style sheet hands no palette down.
    QApplication::setPalette(widgetPalette(theme));
    setStyleSheet(windowStyleSheet(theme) + tradeStyleSheet(theme));
    m_trade->setTheme(theme);
    m_chart->setTheme(theme);
    m_readout->update();
}

void MainWindow::loadOrTell(const QString &code, ChartPeriod period, std::int32_t day)
{
    if (!load(code, period, day)) {
        m_prompts.show(m_loadError);
        showChoices();
    }
}

bool MainWindow::load(const QString &code, ChartPeriod period, std::int32_t day)
{
    const auto loaded = m_source.load(code, period, day);
    m_loadError = loaded.error();
    if (!loaded) {
        return false;
    }
    m_chart->setData(loaded.value());
    showChoices();
    setWindowTitle(QStringLiteral("%1 %2").arg(loaded.value().security.name, code));
    return true;
}

void MainWindow::showChoices()
{
    const ChartData &shown = m_chart->data();
    m_securities->setCurrentIndex(m_securities->findData(shown.security.code));
    for (QAction *const action : m_periods->actions()) {
        action->setChecked(action->data().toInt() == static_cast<int>(shown.period));
    }
    m_days->clear();
    for (const std::int32_t day : m_source.minuteDays(shown.security.code)) {
        m_days->addItem(Trading::TradingDate::ofNumber(day).value().dashedText(), day);
    }
    m_daysAction->setVisible(shown.period == ChartPeriod::Minute);
    if (!shown.bars.empty()) {
        m_days->setCurrentIndex(m_days->findData(shown.bars.back().date));
    }
}

TerminalOptions MainWindow::shownOptions() const
{
    TerminalOptions options = m_options;
    options.code = m_chart->data().security.code;
    options.period = m_chart->data().period;
    options.hidesAmounts = m_amountsAction->isChecked();
    options.overlays.clear();
    for (size_t i = 0; i < m_overlayActions.size(); ++i) {
        if (m_overlayActions[i]->isChecked()) {
            options.overlays.append(QLatin1String(overlayKinds()[i].word));
        }
    }
    return options;
}

void MainWindow::setReplaying(bool on)
{
    const ChartData shown = m_chart->data();
    const bool showedReplay = m_replayedChart->isShown();
    if (on) {
        m_replay.open(shown, static_cast<std::int32_t>(TradeChart::currentDate()));
    } else {
        m_replay.close();
    }
    if (on) {
        m_trade->setShown(true); // a replay is there to be traded on
    }
    if (on || showedReplay) {
        loadOrTell(shown.security.code, ChartPeriod::Minute, on ? 0 : m_replay.recordedDate());
    }
}

void MainWindow::startOverlays(const OverlayLibrary &library, const BusGates &gates)
{
    m_overlays = std::make_unique<OverlayHost>(m_chart, &m_prompts, library, gates, m_screenId,
                                               std::chrono::seconds(m_options.refreshSeconds));
    m_overlays->setAmountsHidden(m_amountsAction->isChecked());
    m_input = std::make_unique<ChartInput>(m_chart, m_overlays->pointer(), nullptr);
    m_trade->setOverlays(m_overlays.get());
    for (size_t i = 0; i < m_overlayActions.size(); ++i) {
        m_overlayActions[i]->setEnabled(true);
        toggleOverlay(overlayKinds()[i], m_overlayActions[i]->isChecked());
    }
}

void MainWindow::toggleOverlay(const OverlayKind &kind, bool shown)
{
    if (!m_overlays || m_overlays->setShown(kind, shown)) {
        return;
    }
    const auto number = static_cast<size_t>(&kind - overlayKinds().data());
    m_overlayActions[number]->setChecked(false);
    m_prompts.show(tr("The overlay library does not know the overlay \"%1\".").arg(overlayTitle(kind)));
}

/// The chart is there to be shown to others: ticket and account stay out of it.
void MainWindow::exportChart()
{
    const QString proposal =
        QStringLiteral("%1-%2.png").arg(m_chart->data().security.code, periodWord(m_chart->data().period));
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export chart"), proposal, tr("PNG pictures (*.png)"));
    if (path.isEmpty()) {
        return;
    }
    const QString error = writePicture(centralWidget(), path);
    m_prompts.show(error.isEmpty() ? tr("Written to %1").arg(path) : error);
}

} // namespace Terminal
