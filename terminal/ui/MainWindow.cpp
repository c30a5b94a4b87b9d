#include "terminal/ui/MainWindow.h"

#include "terminal/chart/view/ChartInput.h"
#include "terminal/chart/view/ChartPlace.h"
#include "terminal/chart/view/ChartTrail.h"
#include "terminal/chart/view/ChartView.h"
#include "terminal/chart/view/ReadoutBar.h"
#include "terminal/live/LiveChart.h"
#include "terminal/results/ResultsDock.h"
#include "terminal/services/BusInstance.h"
#include "terminal/session/TradingSession.h"
#include "terminal/snapshot/Picture.h"
#include "terminal/trade/ElidedLabel.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trade/TradeRecords.h"
#include "terminal/trade/TradeStyle.h"
#include "terminal/trades/ChartTrades.h"
#include "terminal/ui/ChartBar.h"
#include "terminal/ui/FocusFrame.h"
#include "terminal/ui/LowWindow.h"
#include "terminal/ui/OverlayBar.h"
#include "terminal/ui/ReplayBar.h"
#include "terminal/ui/StateStrip.h"
#include "terminal/ui/ToolBarRows.h"
#include "terminal/ui/ViewMenu.h"
#include "terminal/watch/WatchDock.h"
#include "trading/MarketRules.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QShortcut>
#include <QUuid>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <numeric>
#include <utility>

namespace Terminal {

namespace {

/// After the repaint that follows a change: only then is known what overlays have drawn.
constexpr std::chrono::milliseconds statesAfter{50};

constexpr int leastChart = 120; ///< beside all that can be open in a window of 800×500

/// How many marks are in view, those that a glyph stands for counted each.
int countOf(const DrawnMarks *marks)
{
    return marks == nullptr
               ? 0
               : std::accumulate(marks->all().begin(), marks->all().end(), 0,
                                 [](int sum, const DrawnMark &mark) { return sum + mark.count; });
}

WatchDock::Facts watchFactsOf(TradingSession *session)
{
    const auto find = [session](const QString &code) {
        return findSecurity(session->source().securities(), code);
    };
    const auto closeBefore = [session](const QString &code, Trading::TradingDate day) {
        return session->source().closeBefore(code, day);
    };
    return {find, [session](const Security &security) { return session->prices()->of(security); },
            closeBefore};
}

TradeDocks::Prices pricesOf(TradingSession *session)
{
    const auto closeBefore = [session](const ChartData &shown) {
        return session->source().closeBefore(shown.security.code, session->dayOfRules());
    };
    return {closeBefore, [session](const Security &security) { return session->prices()->of(security); },
            [session] { return session->dayOfRules(); }};
}

ChartTrades::Facts factsOf(TradingSession *session)
{
    return {pricesOf(session).closeBefore, [session] { return session->dayOfRules(); },
            [session](const QString &code, Trading::TradingDate day) {
                const auto days = session->source().minuteDays(code);
                return std::binary_search(days.begin(), days.end(), day);
            }};
}

} // namespace

MainWindow::MainWindow(TradingSession *session, const TerminalOptions &options, QWidget *parent)
    : QMainWindow(parent),
      m_session(session),
      m_options(options),
      m_screenId("terminal-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces)),
      m_answers(m_screenId, nullptr),
      m_services(session, options.ledger),
      m_chart(new ChartView),
      m_readout(new ReadoutBar(m_chart)),
      m_practice(new ElidedLabel),
      m_bar(new ChartBar(session->source().securities(), options.hidesAmounts)),
      m_overlayBar(new OverlayBar(options)),
      m_strip(new StateStrip),
      m_prompts(m_chart),
      m_trail(std::make_unique<ChartTrail>(
          m_chart, [this](const QString &code, ChartPeriod period,
                          std::optional<Trading::TradingDate> day) { loadOrTell(code, period, day); })),
      m_trade(std::make_unique<TradeDocks>(this, m_chart, session->desk(), &m_prompts, pricesOf(session))),
      m_trades(std::make_unique<ChartTrades>(this, m_chart, m_trade.get(), m_trail.get(), &m_prompts,
                                             factsOf(session))),
      m_results(std::make_unique<ResultsDock>(this, &m_prompts)),
      m_watch(std::make_unique<WatchDock>(this, watchFactsOf(session)))
{
    m_input = std::make_unique<ChartInput>(m_chart, m_trades->pointer(), nullptr);
    m_trades->setOverlays(nullptr); // until they come; a drag hears Escape before the chart does
    setUpCentre();
    setUpBars();
    setUpView();
    setUpWatch();
    setUpReplay();
    setUpStates();
    wireSession();
    setUpPractice();
    m_trade->setAmountsHidden(options.hidesAmounts);
    m_trades->setAmountsHidden(options.hidesAmounts);
    m_trades->layerAction()->setChecked(options.showsTrades);
    m_results->setAmountsHidden(options.hidesAmounts);
    m_answers.setAmountsHidden(options.hidesAmounts);
    m_trade->askAction()->setChecked(options.asksBeforeSending);
    m_trade->notice()->soundAction()->setChecked(options.soundsWhenDealt);
    m_trade->notice()->desktopAction()->setChecked(options.notifiesWhenDealt);
    applyTheme();
    applyLanguage();
    // Parts that need more are squeezed: a window that grew would leave its screen, or its picture's size.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    resize(options.size);
    new LowWindow(this);
    m_chart->setFocus();
}

MainWindow::~MainWindow()
{
    m_toolBarRows.reset();
    m_live.reset();
    m_watch.reset();
    m_results.reset();
    m_input.reset();
    m_trades.reset();
    m_trade.reset();
    m_trail.reset();
    m_overlays.reset();
}

void MainWindow::setUpCentre()
{
    auto *const centre = new QWidget;
    auto *const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_practice->setObjectName(QStringLiteral("practiceStrip"));
    m_practice->setVisible(!m_options.practice.isEmpty());
    column->addWidget(m_practice);
    column->addWidget(m_readout);
    column->addWidget(m_chart, 1);
    m_chart->setMinimumHeight(leastChart);
    setCentralWidget(centre);
    m_chartFocus = new FocusFrame(m_chart);
}

void MainWindow::setUpBars()
{
    addToolBar(m_bar);
    addToolBar(m_overlayBar);
    m_toolBarRows = std::make_unique<ToolBarRows>(this, std::vector<QToolBar *>{m_bar, m_overlayBar});
    connect(m_bar, &ChartBar::chartAsked, this, &MainWindow::loadOrTell);
    connect(m_overlayBar, &OverlayBar::overlayToggled, this, &MainWindow::toggleOverlay);
    connect(m_bar, &ChartBar::hidingToggled, this, &MainWindow::setAmountsHidden);
}

void MainWindow::setUpView()
{
    ViewMenu *const view = m_overlayBar->view();
    view->addAction(m_trail->action());
    view->addSeparator();
    view->addAction(m_trade->ticketAction());
    view->addAction(m_trade->panelAction());
    view->addAction(m_trades->listAction());
    view->addAction(m_results->action());
    view->addAction(m_trades->layerAction());
    view->addAction(m_watch->action());
    view->addAction(m_watch->watchAction());
    view->addAction(m_trade->askAction());
    view->addAction(m_trade->notice()->soundAction());
    view->addAction(m_trade->notice()->desktopAction());
    connect(view, &ViewMenu::pricesChosen, this, &MainWindow::showPrices);
    connect(view, &ViewMenu::riseColourChosen, this, [this](RiseColour colour) {
        m_options.riseColour = colour;
        applyTheme();
    });
    connect(view, &ViewMenu::themeChosen, this, [this](ThemeKind theme) {
        m_options.theme = theme;
        applyTheme();
    });
    connect(view, &ViewMenu::languageChosen, this, [this](const QString &word) {
        m_options.language = word;
        applyLanguage();
    });
    connect(view, &ViewMenu::exportAsked, this, &MainWindow::exportChart);
}

void MainWindow::setUpWatch()
{
    m_watch->setCodes(m_options.watched);
    connect(m_watch.get(), &WatchDock::chartAsked, this, &MainWindow::jumpToChart);
    connect(m_session->prices(), &LastPrices::changed, m_watch.get(), &WatchDock::showPrices);
    auto *const search = new QShortcut(Qt::CTRL + Qt::Key_L, this);
    connect(search, &QShortcut::activated, this, [this] { m_bar->beginSearch({}); });
    connect(m_bar, &ChartBar::left, this, [this] { m_chart->setFocus(); });
    m_chart->installEventFilter(this);
}

/// What is typed on the chart looks for a security, but for the letters that go from mark to mark.
bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_chart && event->type() == QEvent::KeyPress) {
        const auto *const key = static_cast<QKeyEvent *>(event);
        const QString typed = key->text();
        const bool isLetter = typed.size() == 1 && typed.at(0).isLetterOrNumber();
        const bool isMarks = key->key() == Qt::Key_N || key->key() == Qt::Key_P;
        const bool isPlain = (key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
        if (isLetter && isPlain && !isMarks) {
            m_bar->beginSearch(typed);
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::setUpReplay()
{
    m_live =
        std::make_unique<LiveChart>(m_chart, &m_session->source(), m_session->today(), m_session->replay());
    connect(m_live.get(), &LiveChart::dayBegan, this,
            [this] { loadOrTell(m_chart->data().security.code, ChartPeriod::Minute, {}); });
    auto *const bar = new ReplayBar(m_session->replay(), m_chart);
    bar->setObjectName(QStringLiteral("replayBar"));
    addToolBar(Qt::BottomToolBarArea, bar);
    connect(m_session->replay(), &Replay::stateChanged, this, &MainWindow::showPractisedTrades);
    showPractisedTrades();
    connect(bar, &ReplayBar::restartAsked, this, &MainWindow::restartReplay);
    connect(bar, &ReplayBar::replayAsked, this, [this, bar](bool on) {
        if (on && m_practisesReplays) {
            bar->showState(); // its button is no replay that goes on
            Q_EMIT practiceAsked();
            return;
        }
        const QString problem = setReplaying(on);
        if (!problem.isEmpty()) {
            bar->showState();
            m_prompts.show(problem);
        }
    });
}

void MainWindow::setUpPractice()
{
    if (m_session->practised()) {
        m_trade->setPractice([this] { return m_session->standstill(); });
        connect(m_session->replay(), &Replay::advanced, this, &MainWindow::showHours);
    }
}

void MainWindow::showPractisedTrades()
{
    m_trades->desk()->setPlayedAsToday(m_session->practised() && m_live->showsReplay());
}

void MainWindow::restartReplay()
{
    if (!m_options.practice.isEmpty()) {
        Q_EMIT practiceRestartAsked();
        return;
    }
    const QString problem = m_session->restartReplay();
    if (!problem.isEmpty()) {
        m_prompts.show(problem);
    }
}

void MainWindow::setUpStates()
{
    setStatusBar(m_strip);
    m_statesSoon.setSingleShot(true);
    m_statesSoon.setInterval(statesAfter);
    const auto soon = [this] {
        if (!m_statesSoon.isActive()) { // quotes would put it off for ever
            m_statesSoon.start();
        }
    };
    connect(&m_statesSoon, &QTimer::timeout, this, &MainWindow::showStates);
    connect(m_chart, &ChartView::viewChanged, this, soon);
    connect(m_chart, &ChartView::dataChanged, this, &MainWindow::takeShownChart);
    connect(&m_answers, &ScreenAnswers::foundWrong, this, &MainWindow::tellWrong);
    connect(&m_answers, &ScreenAnswers::pastTradesChanged, this, [this](const QString &code) {
        if (m_overlays) {
            m_overlays->renewPastTrades(code);
        }
    });
    m_patience.setSingleShot(true);
    m_patience.setInterval(OverlayStates::patience);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        showStates();
        if (std::exchange(m_isAskedAgain, false)) {
            m_patience.start();
        }
    });
    connect(&m_answers, &ScreenAnswers::asked, this, [this, soon](const QString &command) {
        m_states.noteAsked(command);
        soon();
        m_isAskedAgain = m_patience.isActive();
        if (!m_isAskedAgain) { // one timer, also in a flood of questions
            m_patience.start();
        }
    });
    connect(&m_answers, &ScreenAnswers::answered, this, [this, soon](const Trading::CheckedAnswer &answer) {
        m_states.noteAnswer(answer);
        soon();
    });
}

void MainWindow::wireSession()
{
    connect(m_session, &TradingSession::overlaysDue, this, &MainWindow::bringOverlays);
    connect(m_session, &TradingSession::heard, this, &MainWindow::takeNews);
    connect(m_session->module(), &ModuleWatch::changed, this, &MainWindow::takeModule);
    connect(m_session->module(), &ModuleWatch::answering, m_trades->desk(), &TradesDesk::askAnew);
    connect(m_session->module(), &ModuleWatch::answering, m_results->desk(), &ResultsDesk::askAgain);
    connect(&m_services, &ServiceStates::changed, this, &MainWindow::showStates);
    connect(&m_hours, &MarketHours::changed, this, &MainWindow::showHours);
    connect(m_session->market(), &MarketWatch::changed, this,
            [this] { m_strip->showMarket(*m_session->market()); });
    connect(m_session->statementActions(), &StatementActions::changed, this, &MainWindow::takeActions);
    connect(m_session->prices(), &LastPrices::changed, m_trade.get(), &TradeDocks::showPrices);
    connect(m_trade.get(), &TradeDocks::chartAsked, this, &MainWindow::jumpToChart);
    connect(m_results.get(), &ResultsDock::placeAsked, this,
            [this](const ResultsPlace &place) { m_trail->jump([this, place] { showPlace(place); }); });
    connect(m_trades.get(), &ChartTrades::chartAsked, this, &MainWindow::loadOrTell);
}

void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_trail->showTexts();
        m_trade->showTexts();
        m_trades->showTexts();
        m_results->showTexts();
        m_watch->showTexts();
        showHours();
        showTitle();
        showStates();
    }
    QMainWindow::changeEvent(event);
}

bool MainWindow::mayLeave()
{
    return m_trade->mayLeave();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(mayLeave());
}

void MainWindow::applyLanguage()
{
    m_language.set(m_options.language);
    m_session->desk()->setLanguage(m_options.language);
    m_session->desk()->refresh(); // reasons come in it from now on
    const QLocale::Language language = InterfaceLanguage::localeLanguage(m_options.language);
    m_readout->setLanguage(language);
    m_chart->setLanguage(language);
    QEvent change(
        QEvent::LanguageChange); // now: a picture may be taken before the events of the new texts come
    QApplication::sendEvent(this, &change);
}

void MainWindow::applyTheme()
{
    const ChartTheme theme = makeTheme(m_options.theme, m_options.riseColour);
    // For lists and questions, too, to which a style sheet hands no palette down.
    QApplication::setPalette(widgetPalette(theme));
    QApplication::setPalette(checkBoxPalette(theme), "QCheckBox");
    QApplication::setPalette(checkBoxPalette(theme), "QRadioButton");
    setStyleSheet(windowStyleSheet(theme) + tradeStyleSheet(theme));
    m_trade->setTheme(theme);
    m_trades->setTheme(theme);
    m_results->setTheme(theme);
    m_watch->setTheme(theme);
    m_chart->setTheme(theme);
    m_chartFocus->setColour(theme.accent);
    m_readout->update();
}

/// A message may name an amount: it goes, too, when amounts are hidden.
void MainWindow::setAmountsHidden(bool hidden)
{
    m_trade->setAmountsHidden(hidden);
    m_trades->setAmountsHidden(hidden);
    m_results->setAmountsHidden(hidden);
    m_answers.setAmountsHidden(hidden);
    if (m_overlays) {
        m_overlays->setAmountsHidden(hidden);
    }
    if (hidden) {
        m_prompts.clear();
    }
}

/// From a row of a list.
void MainWindow::jumpToChart(const QString &code)
{
    m_trail->jump([this, code] { loadOrTell(code, m_chart->data().period, {}); });
}

void MainWindow::loadOrTell(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day)
{
    if (!load(code, period, day)) {
        m_prompts.show(m_loadError);
        showChoices();
    }
}

/// On a chart of days, or of what is longer: a minute chart shows one day alone.
void MainWindow::showPlace(const ResultsPlace &place)
{
    const ChartData &shown = m_chart->data();
    const QString code = place.code.isEmpty() ? shown.security.code : place.code;
    const ChartPeriod period = shown.period == ChartPeriod::Minute ? ChartPeriod::Day : shown.period;
    if (code != shown.security.code || period != shown.period) {
        loadOrTell(code, period, {});
    }
    if (place.day && m_chart->data().security.code == code) {
        showDay(m_chart, *place.day);
    }
}

bool MainWindow::load(const QString &code, ChartPeriod period, std::optional<Trading::TradingDate> day)
{
    const auto loaded = m_session->source().load(code, period, day, m_options.prices);
    m_loadError = loaded.error();
    if (!loaded) {
        return false;
    }
    m_session->prices()->readAnew(code);
    m_chart->setData(loaded.value());
    m_live->setFollowing(!day);
    showChoices();
    showTitle();
    tellRemarks(loaded.value().remarks);
    return true;
}

void MainWindow::tellRemarks(const QStringList &remarks)
{
    for (const QString &remark : remarks) {
        qWarning("%s", qUtf8Printable(remark));
    }
    if (!remarks.isEmpty()) {
        m_prompts.add(remarks);
    }
}

void MainWindow::setPrices(PriceView view)
{
    m_options.prices = view;
    m_overlayBar->view()->showPrices(view);
}

void MainWindow::showPrices(PriceView view)
{
    const PriceView before = m_options.prices;
    setPrices(view);
    if (!renewPrices()) {
        setPrices(before);
        m_prompts.show(m_loadError);
    }
}

/// Of the shown bars, which stay in view. False when they cannot be loaded.
bool MainWindow::renewPrices()
{
    const ChartData &shown = m_chart->data();
    const auto loaded =
        m_session->source().load(shown.security.code, shown.period, shownDay(shown), m_options.prices);
    m_loadError = loaded.error();
    if (!loaded) {
        return false;
    }
    if (loaded.value().bars.size() == shown.bars.size()) {
        m_chart->setPrices(loaded.value());
    } else {
        m_chart->setData(loaded.value()); // its file has grown
    }
    tellRemarks(loaded.value().remarks);
    return true;
}

void MainWindow::takeActions(const QString &code)
{
    if (code == m_chart->data().security.code && !renewPrices()) {
        m_prompts.show(m_loadError);
    }
}

void MainWindow::renewSecurities()
{
    m_bar->setSecurities(m_session->source().securities());
    m_watch->showPrices();
    showChoices();
}

void MainWindow::addMenu(QMenu *menu)
{
    m_overlayBar->addMenu(menu);
}

void MainWindow::showTitle()
{
    const Security &shown = m_chart->data().security;
    const QString account = accountText();
    const QString chart = QStringLiteral("%1 %2").arg(plainText(shown.name), plainText(shown.code));
    m_practice->setText(practiceText());
    setWindowTitle(account.isEmpty() ? chart : QStringLiteral(u"%1 – %2").arg(chart, account));
    m_trade->setAccount(account);
}

QString MainWindow::practiceText() const
{
    const QString day = m_options.day ? m_options.day->dashedText() : QString();
    return tr("PRACTICE: %1. The recorded day %2, with an account of its own: nothing here reaches yours.")
        .arg(plainText(m_options.practice), day);
}

void MainWindow::takeModule()
{
    const auto presence = m_session->module()->presence();
    m_trade->setReadOnly(m_session->module()->state() == ModuleWatch::State::ReadOnly);
    m_trade->setOtherAccount(presence && servesAnother(*presence, m_options.ledger));
    showTitle();
}

/// The ledger as a user knows it: the window's own, which our trading module serves and deals on paper, or
/// else the one that another program's module names, whose deals may be real.
QString MainWindow::accountText() const
{
    if (!m_options.practice.isEmpty()) {
        return tr("Practice: %1").arg(plainText(m_options.practice));
    }
    if (!m_options.ledger.isEmpty()) {
        return tr("%1 (paper)").arg(ledgerName(m_options.ledger));
    }
    const auto presence = m_session->module()->presence();
    return presence && !presence->ledger.isEmpty() ? ledgerName(presence->ledger) : QString();
}

void MainWindow::showChoices()
{
    const ChartData &shown = m_chart->data();
    m_bar->showChart(shown, m_session->source().minuteDays(shown.security.code));
    m_watch->setShownCode(shown.security.code);
}

TerminalOptions MainWindow::shownOptions() const
{
    TerminalOptions options = m_options;
    options.code = m_chart->data().security.code;
    options.period = m_chart->data().period;
    options.hidesAmounts = m_bar->hidesAmounts();
    options.asksBeforeSending = m_trade->askAction()->isChecked();
    options.soundsWhenDealt = m_trade->notice()->soundAction()->isChecked();
    options.notifiesWhenDealt = m_trade->notice()->desktopAction()->isChecked();
    options.showsTrades = m_trades->layerAction()->isChecked();
    options.overlays = m_overlayBar->chosenOverlays();
    options.watched = m_watch->codes();
    return options;
}

QString MainWindow::setReplaying(bool on)
{
    const ChartData shown = m_chart->data();
    const bool showedReplay = m_live->showsReplay();
    if (!on) {
        const QString problem = m_session->endReplay();
        if (!problem.isEmpty()) {
            return problem;
        }
    } else {
        const QString problem = m_session->openReplay(shown);
        if (!problem.isEmpty()) {
            return problem;
        }
        m_trade->setShown(true); // a replay is there to be traded on
    }
    if (on || showedReplay) {
        loadOrTell(shown.security.code, ChartPeriod::Minute,
                   on ? std::nullopt : m_session->replay()->recordedDate());
    }
    return {};
}

void MainWindow::bringOverlays()
{
    if (m_overlays) {
        m_overlays->renew();
    } else if (m_library) {
        startOverlays(*m_library, m_session->gates());
    }
}

void MainWindow::startOverlays(const OverlayLibrary &library, const BusGates &gates)
{
    m_overlays =
        std::make_unique<OverlayHost>(m_chart, &m_prompts, library, gates, m_screenId, m_options.refresh);
    connect(m_overlays.get(), &OverlayHost::updateAsked, this, &MainWindow::overlayUpdateAsked);
    connect(m_overlays.get(), &OverlayHost::lost, this, &MainWindow::tellUnknown);
    m_overlays->setAmountsHidden(m_bar->hidesAmounts());
    m_trade->setOverlays(m_overlays.get());
    m_input = std::make_unique<ChartInput>(m_chart, m_trades->pointer(), nullptr);
    m_trades->setOverlays(m_overlays.get());
    m_overlayBar->enableOverlays();
    for (const OverlayKind &kind : overlayKinds()) {
        toggleOverlay(kind, m_overlayBar->isOverlayChosen(kind));
    }
}

void MainWindow::runOverlayUpdates()
{
    if (m_overlays) {
        m_overlays->runUpdates();
        m_chart->paintAside();
    }
    showStates();
}

void MainWindow::takeShownChart()
{
    m_answers.setSecurity(m_chart->data().security.id());
    m_session->statementActions()->show(m_chart->data().security.id());
    m_states.setChart(m_chart->data());
    showPractisedTrades();
}

void MainWindow::showStates()
{
    const ModuleState module = m_services.module();
    for (const OverlayKind &kind : overlayKinds()) {
        if (m_overlays && m_overlays->isShown(kind)) {
            showState(kind, hindranceText(module));
        } else {
            m_strip->hideOverlay(kind);
            m_overlayBar->describeOverlay(kind, {});
        }
    }
    m_strip->showMarket(*m_session->market());
    m_strip->showBus(m_services.bus());
    m_strip->showModule(module);
}

namespace {

/// The overlay's label names no method, and every trading module's is labelled alike: it stands beside it.
QString withMethod(const QString &text, const OverlayState &state, const DrawnOverlay &drawn)
{
    const bool isNamed = state.kind == OverlayState::Drawn && !drawn.labels.isEmpty();
    return isNamed && !state.costMethod.isEmpty() && !state.unansweredSince
               ? QStringLiteral("%1 (%2)").arg(text, plainText(costMethodText(state.costMethod)))
               : text;
}

} // namespace

/// Those of a practice go by the minute that was played last, not by the clock.
void MainWindow::showPractisedHours()
{
    const Trading::TradingDate day = m_session->practised()->day;
    const auto time = m_session->reached().value_or(Trading::ClockTime::ofMinute(0).value());
    const QString state = MarketHours::text(Trading::MarketRules::stateOnTradingDay(day, time));
    m_strip->showHours(tr("Practised day: %1").arg(state), m_hours.hoursOn(day));
}

void MainWindow::showHours()
{
    if (m_session->practised()) {
        showPractisedHours();
        return;
    }
    QStringList details{m_hours.hoursOn(Trading::TradingDate::today())};
    if (!m_hours.knowsHolidays()) {
        details.append(tr("The holidays of this year are not known: it may be one."));
    }
    details.removeAll(QString());
    m_strip->showHours(MarketHours::text(m_hours.state()), details.join(QLatin1Char('\n')));
}

void MainWindow::showState(const OverlayKind &kind, const QString &hindrance)
{
    const OverlayState state = m_states.stateOf(kind);
    const DrawnOverlay drawn{countOf(m_overlays->drawnMarks(kind)), m_overlays->drawnLabels(kind)};
    const QString text = withMethod(overlayStateText(state, drawn, hindrance), state, drawn);
    m_strip->showOverlay(kind, text, state.faults, state.isTrouble());
    m_overlayBar->describeOverlay(kind, QStringList(text) + state.faults);
}

/// Answers to several overlays come at once: none takes another's faults away.
void MainWindow::tellWrong(const QStringList &faults)
{
    m_prompts.add(faults);
}

void MainWindow::takeNews(const SharedNews &news)
{
    if (!m_overlays) {
        return;
    }
    if (news.kind == SharedNews::Spoilt) {
        m_overlays->renewCombined(news.code);
    } else {
        m_overlays->showHeard(news.code);
    }
}

void MainWindow::toggleOverlay(const OverlayKind &kind, bool shown)
{
    if (m_overlays && !m_overlays->setShown(kind, shown)) {
        tellUnknown(kind);
    }
    m_statesSoon.start();
}

void MainWindow::tellUnknown(const OverlayKind &kind)
{
    m_overlayBar->setOverlayChosen(kind, false);
    m_prompts.show(tr("The overlay library does not know the overlay \"%1\".").arg(overlayTitle(kind)));
}

/// The chart is there to be shown to others: ticket, account and what became of an order stay out of it.
void MainWindow::exportChart()
{
    const QString proposal =
        QStringLiteral("%1-%2.png").arg(m_chart->data().security.code, periodWord(m_chart->data().period));
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Export chart"), proposal, tr("PNG pictures (*.png)"));
    if (path.isEmpty()) {
        return;
    }
    m_prompts.clear();
    const QString error = writePicture(centralWidget(), path);
    m_prompts.show(error.isEmpty() ? tr("Written to %1").arg(path) : error);
}

} // namespace Terminal
