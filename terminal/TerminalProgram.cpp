#include "terminal/TerminalProgram.h"

#include "terminal/chart/view/ChartView.h"
#include "terminal/intake/IntakeDoor.h"
#include "terminal/plugin/OverlayLibrary.h"
#include "terminal/practice/PracticeDoor.h"
#include "terminal/results/ResultsDock.h"
#include "terminal/services/BusInstance.h"
#include "terminal/services/TradeServices.h"
#include "terminal/session/TradingSession.h"
#include "terminal/snapshot/Snapshot.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/trades/ChartTrades.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/WindowSettings.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Terminal {

namespace {

enum ExitCode { Done = 0, Failed = 1 };

constexpr QSize leastSize{640, 400}; ///< of a window; a picture may be smaller

DayPlan planOf(const TerminalOptions &options)
{
    DayPlan plan;
    plan.ledger = options.ledger;
    plan.replaySpeed = options.replaySpeed;
    plan.replayTo = options.replayTo;
    plan.orders = options.orders;
    plan.playsAlone = options.ledger.isEmpty();
    if (!options.snapshotFile.isEmpty()) {
        plan.playsOn = false;
        plan.patience = {}; // a picture has a time-out of its own
    }
    if (!options.practice.isEmpty()) {
        plan.practised = PractisedDay{options.code, options.day.value(), options.practisedUntil};
        plan.playsOn = plan.playsOn && !options.practisedUntil; // who goes on with a day begins when ready
    }
    return plan;
}

} // namespace

TerminalProgram::TerminalProgram(const TerminalOptions &options, const QString &busAddress)
    : m_options(options),
      m_busAddress(busAddress)
{
}

TerminalProgram::~TerminalProgram()
{
    m_snapshot.reset();
    m_door.reset();
    m_window.reset();
    m_session.reset();
}

int TerminalProgram::run()
{
    const QString error = open();
    if (!error.isEmpty()) {
        qCritical("%s", qUtf8Printable(error));
        return Failed;
    }
    if (takesPicture()) {
        startSnapshot();
    } else {
        openDoor();
        showWindow();
    }
    if (!takesPicture() || asksTradeModule()) {
        m_session->begin();
        m_services->start();
    }
    return QApplication::exec();
}

/// Returns why there is nothing to show; else an empty text.
QString TerminalProgram::open()
{
    const auto folder = DataFolder::open(m_options.dataFolder);
    if (!folder) {
        return folder.error();
    }
    openSession(folder.value());
    if (!openChart(folder.value().securities().front().code)) {
        return m_window->loadError();
    }
    if (takesPicture() && isMissingFile(m_options.ledger)) { // the account that is meant is another one
        return tr("There is no ledger %1; \"trademodule --ledger %1 import FILE\" makes one of a statement.")
            .arg(m_options.ledger);
    }
    const QString problem = isReplay() ? m_window->setReplaying(true) : QString();
    if (!problem.isEmpty()) {
        return problem;
    }
    wireServices();
    return openLibrary();
}

void TerminalProgram::openSession(const DataFolder &folder)
{
    const WindowSettings settings;
    if (takesPicture()) {
        m_options.refresh = std::chrono::seconds(1); // some questions are first asked by the refresh
        m_options.showsTrades = m_options.showsTrades && m_options.given.contains(QStringLiteral("trades"));
    } else {
        m_options = settings.over(m_options);
    }
    if (practises() && m_options.code.isEmpty()) {
        m_options.code = folder.securities().front().code;
    }
    m_session = std::make_unique<TradingSession>(folder, planOf(m_options), m_busAddress);
    connect(m_session.get(), &TradingSession::orderRefused, this, &TerminalProgram::tellRefusal);
    connect(m_session.get(), &TradingSession::replayWaits, this, [this] {
        tell(tr("The trading module does not answer. The replay waits for it; Space plays without it."));
    });
    connect(m_session.get(), &TradingSession::replayOutlivedItsDay, this, [this] {
        tell(tr("It is past midnight in Shanghai: the replay's today is over. End the replay and begin it "
                "again."));
    });
    m_window = std::make_unique<MainWindow>(m_session.get(), m_options);
    if (!takesPicture()) {
        settings.restoreLayout(m_window.get(), m_options);
    }
    if (m_options.results) {
        m_window->results()->openList(*m_options.results);
    }
}

/// What is remembered need not be in this data folder: then another chart does, as far as the command line
/// leaves it open.
bool TerminalProgram::openChart(const QString &firstCode)
{
    if (openChartInItsPrices(firstCode)) {
        return true;
    }
    if (m_options.prices == PriceView::Raw || m_options.given.contains(QStringLiteral("adjusted"))) {
        return false;
    }
    const QString whyNotAdjusted = m_window->loadError();
    m_window->setPrices(PriceView::Raw);
    const bool isOpen = openChartInItsPrices(firstCode);
    tell(whyNotAdjusted);
    return isOpen;
}

bool TerminalProgram::openChartInItsPrices(const QString &firstCode)
{
    const QString code = m_options.code.isEmpty() ? firstCode : m_options.code;
    if (m_window->load(code, m_options.period, m_options.day)) {
        return true;
    }
    const bool mayChangePeriod = !m_options.given.contains(QStringLiteral("period")) && !isReplay();
    const bool mayChangeCode = !m_options.given.contains(QStringLiteral("code"));
    return (mayChangePeriod && m_window->load(code, ChartPeriod::Day)) ||
           (mayChangeCode && m_window->load(firstCode, m_options.period, m_options.day)) ||
           (mayChangeCode && mayChangePeriod && m_window->load(firstCode, ChartPeriod::Day));
}

QString TerminalProgram::openLibrary()
{
    const auto library = OverlayLibrary::open(m_options.pluginFile);
    if (library) {
        m_window->setOverlayLibrary(library.value());
    } else if (m_options.given.contains(QStringLiteral("overlays"))) {
        return library.error();
    } else if (!m_options.overlays.isEmpty()) {
        tell(library.error()); // those of the last time are no reason to open no window
    }
    return {};
}

void TerminalProgram::wireServices()
{
    m_services = std::make_unique<TradeServices>(ServicePlan{
        m_busAddress, m_options.startsBroker, m_options.moduleProgram, m_options.ledger, m_options.language});
    for (const auto signal :
         {&TradeServices::warned, &TradeServices::busFailed, &TradeServices::moduleFailed}) {
        connect(m_services.get(), signal, this, &TerminalProgram::tell);
    }
    ServiceStates *const states = m_window->services();
    connect(m_services.get(), &TradeServices::busFailed, states, &ServiceStates::noteBusFailure);
    connect(m_services.get(), &TradeServices::moduleFailed, states, &ServiceStates::noteModuleFailure);
    connect(m_services.get(), &TradeServices::moduleStarted, states, &ServiceStates::noteModuleStart);
    m_services->replaceWhenSilent(m_session->module());
    connect(m_services.get(), &TradeServices::ready, this, [this] {
        if (m_snapshot) {
            m_snapshot->listen(m_busAddress); // the session joins when nothing can be missed
        } else {
            m_window->answers()->start(m_busAddress); // overlays ask some things once: it is to hear them
            m_window->results()->start(m_busAddress);
            m_window->trades()->start(m_busAddress);
            watchWorkingOrders();
        }
    });
    if (!takesPicture()) {
        connect(m_window->answers(), &ScreenAnswers::listening, m_session.get(), &TradingSession::join);
    }
}

void TerminalProgram::openDoor()
{
    if (!m_places) {
        return;
    }
    openPracticeDoor();
    if (practises()) {
        return; // its account is not for statements
    }
    const auto goingIn = [this] {
        return intakePlan(placesForIntake(shownPlaces(), m_places->sampleFolder));
    };
    m_door = std::make_unique<IntakeDoor>(
        m_window.get(), IntakeDoor::Facts{goingIn, [this] { return intakePlan(shownPlaces()); },
                                          [this] { return intakeLook(); }});
    connect(m_door.get(), &IntakeDoor::changed, this, &TerminalProgram::renewFolder);
    connect(m_door.get(), &IntakeDoor::finished, this, &TerminalProgram::showTaken);
    connect(m_door.get(), &IntakeDoor::startPageAsked, this, [this] {
        TerminalOptions next = m_window->shownOptions();
        next.dataFolder.clear();
        goOnWith(next);
    });
    m_door->menu()->addAction(m_practice->action());
    m_window->addMenu(m_door->menu());
}

/// What is practised is in another window; only a replay that the command line asked for is played here.
void TerminalProgram::openPracticeDoor()
{
    const auto open = [this](const QString &name) {
        return startPracticeWindow(m_places->terminalProgram, name, practiceWords());
    };
    m_practice = new PracticeDoor(m_window.get(), {[this] { return practiceOffer(); }, open});
    m_window->setPractisesReplays(!practises());
    connect(m_window.get(), &MainWindow::practiceAsked, m_practice, &PracticeDoor::openDialog);
    connect(m_window.get(), &MainWindow::practiceRestartAsked, this, &TerminalProgram::askToRestartPractice);
}

/// The other window looks as this one does.
QStringList TerminalProgram::practiceWords() const
{
    TerminalOptions shown = m_window->shownOptions();
    const QStringList useful = {QStringLiteral("cost"), QStringLiteral("trades"), QStringLiteral("orders")};
    shown.overlays = shown.overlays.isEmpty() ? useful : shown.overlays;
    QStringList words{
        QStringLiteral("--module"), m_options.moduleProgram,
        QStringLiteral("--plugin"), m_options.pluginFile,
        QStringLiteral("--size"),   QStringLiteral("%1x%2").arg(m_window->width()).arg(m_window->height())};
    const QMap<QString, QString> looks = rememberedWords(shown);
    for (auto look = looks.begin(); look != looks.end(); ++look) {
        const bool isOfPractice =
            look.key() == QLatin1String("code") || look.key() == QLatin1String("period");
        if (!isOfPractice && !look.value().isEmpty()) {
            words << QStringLiteral("--") + look.key() << look.value();
        }
    }
    return shown.hidesAmounts ? words << QStringLiteral("--hide-amounts") : words;
}

/// A practice does not begin with what another one left.
PracticeOffer TerminalProgram::practiceOffer() const
{
    const ChartData &shown = m_window->chart()->data();
    PracticeOffer offer;
    offer.dataFolder = m_options.dataFolder;
    offer.code = shown.security.code;
    offer.securityName = plainText(shown.security.name);
    offer.ledger = practises() ? QString() : m_options.ledger;
    offer.moduleProgram = m_options.moduleProgram;
    offer.language = m_window->shownOptions().language;
    const bool isRecorded = shown.period == ChartPeriod::Minute && !shown.bars.empty() &&
                            dayOf(shown.bars.front()) != Trading::TradingDate::today();
    if (isRecorded) {
        offer.day = dayOf(shown.bars.front());
        offer.price = shown.previousClose.value_or(shown.bars.front().open);
    }
    return offer;
}

void TerminalProgram::askToRestartPractice()
{
    if (!m_options.isPracticeKept) {
        tell(tr("This practice is a ledger that the command line names: begin another with trademodule "
                "practice."));
        return;
    }
    QMessageBox question(
        QMessageBox::Question, tr("Practice"),
        tr("Begin the practice \"%1\" again from nothing? Its orders and trades go.").arg(m_options.practice),
        QMessageBox::NoButton, m_window.get());
    question.setObjectName(QStringLiteral("restartPractice"));
    question.setTextFormat(Qt::PlainText);
    const QPushButton *const restart = question.addButton(tr("Begin again"), QMessageBox::DestructiveRole);
    question.setDefaultButton(question.addButton(tr("Keep"), QMessageBox::RejectRole));
    question.exec();
    if (question.clickedButton() == restart) {
        m_restartsPractice = true;
        goOnWith(m_window->shownOptions());
    }
}

IntakeLook TerminalProgram::intakeLook() const
{
    const TerminalOptions shown = m_window->shownOptions();
    return {makeTheme(shown.theme, shown.riseColour), shown.hidesAmounts};
}

/// Charts are told on the bus of the account that the files go to.
IntakePlan TerminalProgram::intakePlan(const AccountPlaces &places) const
{
    IntakePlan plan;
    plan.terminalProgram = m_places->terminalProgram;
    plan.moduleProgram = m_options.moduleProgram;
    plan.busAddress = m_busAddress;
    plan.busInstance = places.ledger == m_options.ledger ? QString() : m_places->busInstanceOf(places.ledger);
    plan.language = m_window->shownOptions().language;
    plan.places = places;
    return plan;
}

void TerminalProgram::renewFolder(const AccountPlaces &places)
{
    const auto folder = DataFolder::open(m_options.dataFolder);
    if (places.dataFolder == m_options.dataFolder && folder && !folder.value().securities().empty()) {
        m_session->takeFolder(folder.value());
        m_window->renewSecurities();
    }
}

/// In this window, or in one on the account that the files went to.
void TerminalProgram::showTaken(const AccountPlaces &places, const QStringList &codes)
{
    const auto folder = DataFolder::open(places.dataFolder);
    const Securities known = folder.value().securities();
    const auto code = std::find_if(codes.begin(), codes.end(), [&known](const QString &candidate) {
        return findSecurity(known, candidate) != nullptr;
    });
    const bool hasChart = code != codes.end();
    if (places == shownPlaces()) {
        hasChart ? static_cast<void>(m_window->load(*code, ChartPeriod::Day))
                 : tell(tr("There are no bars of these securities yet: drop files of them here, too."));
        return;
    }
    TerminalOptions next = m_window->shownOptions();
    next.dataFolder = known.empty() ? QString() : places.dataFolder;
    next.ledger = places.ledger;
    next.code = hasChart ? *code : QString();
    next.period = ChartPeriod::Day;
    next.replaySpeed = 0;
    next.given = QStringList{QStringLiteral("code"), QStringLiteral("period")};
    goOnWith(next);
}

void TerminalProgram::goOnWith(const TerminalOptions &next)
{
    if (!m_window->mayLeave()) {
        return;
    }
    m_next = next;
    QApplication::quit();
}

/// A picture of bars alone asks nobody. The orders of a replay are placed without overlays, too, and its
/// panel shows the account.
bool TerminalProgram::asksTradeModule() const
{
    const bool isTraded = isReplay() && !(m_options.orders.empty() && m_options.ledger.isEmpty());
    return isTraded || m_options.results || m_options.showsTrades || !m_options.overlays.isEmpty();
}

void TerminalProgram::showWindow()
{
    connect(qApp, &QCoreApplication::aboutToQuit, this, &TerminalProgram::rememberWindow);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &TerminalProgram::noteOrdersLeft);
    const bool isNewAccount = isMissingFile(m_options.ledger); // until the trading module makes it
    m_window->setMinimumSize(leastSize);
    m_window->show();
    tellOfCalendar();
    if (isNewAccount) {
        tell(tr("There is no ledger %1 yet: a new account is made there.").arg(m_options.ledger));
    }
}

/// Holidays that its user wrote down and that count for nothing.
void TerminalProgram::tellOfCalendar()
{
    if (const auto &fault = m_window->hours().calendarFault()) {
        tell(MarketHours::text(*fault));
    }
}

/// Whatever the window shows: who leaves is asked about them.
void TerminalProgram::watchWorkingOrders()
{
    connect(m_session->desk(), &OrderDesk::placed, this,
            [this](const OrderRequest & /*order*/, const DeskOutcome &outcome) {
                if (outcome.kind == DeskOutcome::Kind::Accepted && !m_knowsWorkingOrders) {
                    m_placed.insert(outcome.text);
                }
            });
    connect(m_session->desk(), &OrderDesk::workingOrdersChanged, this, &TerminalProgram::tellWorkingOrders);
    m_session->desk()->watch();
}

/// Once: those of a former run, which may have ended without a question.
void TerminalProgram::tellWorkingOrders()
{
    const auto &working = m_session->desk()->workingOrders();
    if (!working || std::exchange(m_knowsWorkingOrders, true)) {
        return;
    }
    const auto count = std::count_if(working->begin(), working->end(), [this](const OrderRecord &order) {
        return !m_placed.contains(order.number);
    });
    if (count > 0) {
        m_window->trade()->listWorkingOrders();
        tell(tr("Orders of before that may still be dealt: %1 (F3 lists them)").arg(count));
    }
}

/// Nobody can be asked when the program is told to end: they stay what they are.
void TerminalProgram::noteOrdersLeft() const
{
    const OrderRecords working = m_session->desk()->workingOrders().value_or(OrderRecords());
    if (!working.empty()) {
        qWarning(
            "%s",
            qUtf8Printable(
                tr("Orders that may still be dealt, which leaving does not cancel: %1").arg(working.size())));
    }
}

/// A practice's chart is not the one to come back to.
void TerminalProgram::rememberWindow()
{
    if (practises()) {
        return;
    }
    WindowSettings().remember(m_window->shownOptions(), *m_window);
}

void TerminalProgram::startSnapshot()
{
    // Laid out as on a screen, before the overlays ask where things are.
    m_window->ensurePolished();
    m_window->grab();
    m_snapshot =
        std::make_unique<Snapshot>(Scene{m_window.get(), m_window->answers(), m_window->chart()->data(),
                                         m_options.overlays, m_session->desk(), m_session->statementActions(),
                                         m_options.results ? m_window->results()->desk() : nullptr,
                                         m_options.showsTrades ? m_window->trades()->desk() : nullptr},
                                   m_options.snapshotFile, m_options.timeout);
    wireSnapshot();
    if (asksTradeModule()) {
        m_snapshot->setHindrance(tr("trading module that answers on the bus"));
        m_snapshot->start();
    } else {
        m_session->playAtOnce();
        m_snapshot->finish();
    }
}

void TerminalProgram::wireSnapshot()
{
    Snapshot *const snapshot = m_snapshot.get();
    connect(snapshot, &Snapshot::finished, this, &TerminalProgram::endSnapshot, Qt::QueuedConnection);
    connect(snapshot, &Snapshot::listening, m_session.get(), &TradingSession::join);
    connect(snapshot, &Snapshot::listening, m_window->results(),
            [this] { m_window->results()->start(m_busAddress); });
    connect(snapshot, &Snapshot::listening, m_window->trades(),
            [this] { m_window->trades()->start(m_busAddress); });
    connect(snapshot, &Snapshot::aboutToTake, m_window.get(), &MainWindow::runOverlayUpdates);
    connect(snapshot, &Snapshot::aboutToTake, m_session->prices(), &LastPrices::readNow);
    connect(m_window.get(), &MainWindow::overlayUpdateAsked, snapshot, &Snapshot::noteUpdate);
    connect(m_session.get(), &TradingSession::stageChanged, snapshot,
            [snapshot](TradingSession::Stage stage) {
                if (stage == TradingSession::Stage::Trading) {
                    snapshot->takeWhenComplete();
                }
            });
}

void TerminalProgram::endSnapshot(const QString &error)
{
    if (!error.isEmpty()) {
        qCritical("%s", qUtf8Printable(error));
    }
    QApplication::exit(error.isEmpty() ? Done : Failed);
}

/// A picture without an order of its scene would be another one.
void TerminalProgram::tellRefusal(const QString &reason)
{
    const bool hidesAmounts = !takesPicture() && m_window->shownOptions().hidesAmounts;
    const QString text =
        tr("An order of the replay was not taken: %1").arg(plainText(withoutFigures(reason, hidesAmounts)));
    takesPicture() ? endSnapshot(text) : tell(text);
}

void TerminalProgram::tell(const QString &message)
{
    qWarning("%s", qUtf8Printable(message));
    m_window->prompts()->show(message);
    if (m_snapshot) {
        m_snapshot->setHindrance(message);
    }
}

} // namespace Terminal
