#include "terminal/TerminalProgram.h"

#include "terminal/services/BusProbe.h"
#include "terminal/services/TradeModuleProcess.h"
#include "terminal/snapshot/Snapshot.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/MainWindow.h"
#include "terminal/ui/WindowSettings.h"

#include <QApplication>
#include <QLayout>

namespace Terminal {

using LocalCommunication::LocalBroker;

namespace {

constexpr int patienceMilliseconds = 2000; ///< that a window waits for a trading module

enum ExitCode { Done = 0, Failed = 1 };

} // namespace

TerminalProgram::TerminalProgram(const TerminalOptions &options, const QString &busAddress)
    : m_options(options),
      m_busAddress(busAddress),
      m_link(nullptr),
      m_shared(nullptr)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &TerminalProgram::goOnWithoutModule);
    connect(&m_broker, &LocalBroker::stateChanged, this, &TerminalProgram::handleBrokerState);
    connect(&m_shared, &SharedChannel::heard, this, &TerminalProgram::handleNews);
    connect(&m_link, &TradeLink::answering, this, &TerminalProgram::startWhenHeard);
}

TerminalProgram::~TerminalProgram()
{
    m_snapshot.reset();
    m_feed.reset();
    m_window.reset();
}

int TerminalProgram::run()
{
    QString error = openWindow();
    if (error.isEmpty()) {
        error = openLibrary();
    }
    if (!error.isEmpty()) {
        qCritical("%s", qUtf8Printable(error));
        return Failed;
    }
    if (takesPicture()) {
        startSnapshot();
    } else {
        connect(qApp, &QCoreApplication::aboutToQuit, this, &TerminalProgram::rememberWindow);
        m_window->show();
        m_patience.start(patienceMilliseconds);
    }
    startServices();
    return QApplication::exec();
}

QString TerminalProgram::openWindow()
{
    const auto folder = DataFolder::open(m_options.dataFolder);
    if (!folder) {
        return folder.error();
    }
    if (takesPicture()) {
        m_options.refreshSeconds = 1; // some questions are first asked by the refresh
        m_window = std::make_unique<MainWindow>(folder.value(), m_options);
    } else {
        const WindowSettings settings;
        m_options = settings.over(m_options);
        m_window = std::make_unique<MainWindow>(folder.value(), m_options);
        settings.restoreLayout(m_window.get(), m_options);
    }
    if (openChart(folder.value().securities().front().code)) {
        openReplay();
    }
    return m_window->loadError();
}

/// What is remembered need not be in this data folder: then another chart does, as far as the command line
/// leaves it open.
bool TerminalProgram::openChart(const QString &firstCode)
{
    const QString code = m_options.code.isEmpty() ? firstCode : m_options.code;
    if (m_window->load(code, m_options.period, m_options.day)) {
        return true;
    }
    const bool mayChangePeriod = !m_options.given.contains(QStringLiteral("period")) && !isReplay();
    const bool mayChangeCode = !m_options.given.contains(QStringLiteral("code"));
    return (mayChangePeriod && m_window->load(code, ChartPeriod::Day, 0)) ||
           (mayChangeCode && m_window->load(firstCode, m_options.period, m_options.day)) ||
           (mayChangeCode && mayChangePeriod && m_window->load(firstCode, ChartPeriod::Day, 0));
}

void TerminalProgram::rememberWindow()
{
    WindowSettings().remember(m_window->shownOptions(), *m_window);
}

void TerminalProgram::openReplay()
{
    m_feed =
        std::make_unique<QuoteFeed>(m_window->replay(), m_window->trade()->desk(), m_options.orders, nullptr);
    connect(m_feed.get(), &QuoteFeed::joined, this, &TerminalProgram::startWhenHeard);
    connect(m_feed.get(), &QuoteFeed::taken, this, &TerminalProgram::goOn);
    connect(m_feed.get(), &QuoteFeed::refused, this, &TerminalProgram::tellRefusal);
    if (isReplay()) {
        m_window->setReplaying(true);
        m_window->replay()->setSpeed(m_options.replaySpeed);
    }
}

QString TerminalProgram::openLibrary()
{
    const auto library = OverlayLibrary::open(m_options.pluginFile);
    m_hasLibrary = static_cast<bool>(library);
    m_library = library.value();
    if (m_options.given.contains(QStringLiteral("overlays"))) {
        return library.error();
    }
    if (!m_hasLibrary && !m_options.overlays.isEmpty()) {
        tell(library.error()); // those of the last time are no reason to open no window
    }
    return {};
}

/// A picture of bars alone asks nobody. The orders of a replay are placed without overlays, too, and its
/// panel shows the account.
bool TerminalProgram::asksTradeModule() const
{
    const bool isTraded = isReplay() && !(m_options.orders.empty() && m_options.ledger.isEmpty());
    return isTraded || !m_options.overlays.isEmpty();
}

void TerminalProgram::startServices()
{
    if (takesPicture() && !asksTradeModule()) {
        return;
    }
    if (m_options.startsBroker) {
        m_broker.start(m_busAddress);
    } else {
        joinBus();
    }
}

/// Comes after the broker: whoever knocks before there is a door says so in the log.
void TerminalProgram::joinBus()
{
    if (m_isJoining) {
        return;
    }
    m_isJoining = true;
    if (!m_options.ledger.isEmpty()) {
        m_module = std::make_unique<TradeModuleProcess>(m_options.moduleProgram, m_options.ledger,
                                                        m_busAddress, m_options.language, nullptr);
        connect(m_module.get(), &TradeModuleProcess::failed, this, &TerminalProgram::tell);
        m_module->start();
    }
    m_link.start(m_busAddress);
    m_window->trade()->start(m_busAddress);
    m_shared.start(m_busAddress);
    if (m_snapshot) {
        m_snapshot->listen(m_busAddress);
    }
}

void TerminalProgram::startSnapshot()
{
    // A picture has the size that was asked for; a window that is on no screen can be given no limits.
    m_window->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    // Laid out as on a screen, before the overlays ask where things are.
    m_window->ensurePolished();
    m_window->grab();
    m_snapshot = std::make_unique<Snapshot>(m_window.get(), m_options, nullptr);
    connect(m_snapshot.get(), &Snapshot::finished, this, &TerminalProgram::endSnapshot, Qt::QueuedConnection);
    if (!asksTradeModule()) {
        playAtOnce();
        m_snapshot->finish();
        return;
    }
    m_snapshot->setHindrance(tr("trading module that answers on the bus"));
    connect(m_snapshot.get(), &Snapshot::listening, this, &TerminalProgram::startWhenHeard);
    m_snapshot->start();
}

/// A trading module that was started for this terminal is waited for: it is to take the replay's orders.
void TerminalProgram::goOnWithoutModule()
{
    if (isReplay() && !m_options.ledger.isEmpty()) {
        startOverlays();
    } else {
        playAtOnce();
        goOn();
    }
}

void TerminalProgram::startWhenHeard()
{
    const bool isHeard =
        m_link.isAnswering() && m_feed->isJoined() && (!m_snapshot || m_snapshot->isListening());
    if (m_isHeard || !isHeard) {
        return;
    }
    m_isHeard = true;
    if (isReplay() && !m_isGoing) {
        playAtOnce();
        m_feed->askWhetherTaken();
    } else {
        goOn();
    }
}

/// The day begins again, for those who did not hear of its first bar.
void TerminalProgram::playAtOnce()
{
    m_window->replay()->restart();
    m_window->replay()->playTo(m_options.replayTo);
}

void TerminalProgram::goOn()
{
    // The last quotes may have dealt orders, and what was asked before the trading module came is lost.
    m_window->trade()->desk()->askAnew();
    if (m_window->overlays() != nullptr) {
        m_window->overlays()->renew();
    } else {
        startOverlays();
    }
    if (isReplay() && !m_isGoing && !takesPicture()) {
        m_window->replay()->play();
    }
    m_isGoing = true;
    if (m_snapshot) {
        m_snapshot->takeWhenComplete();
    }
}

/// A picture without an order of its scene would be another one.
void TerminalProgram::tellRefusal(const QString &reason)
{
    const QString text = tr("An order of the replay was not taken: %1").arg(reason);
    takesPicture() ? endSnapshot(text) : tell(text);
}

void TerminalProgram::handleNews(const SharedNews &news)
{
    if (m_window->overlays() == nullptr) {
        return;
    }
    if (news.kind == SharedNews::Spoilt) {
        m_window->overlays()->renewCombined(news.code);
    } else {
        m_window->overlays()->showHeard(news.code);
    }
}

void TerminalProgram::startOverlays()
{
    if (!m_hasLibrary || m_window->overlays() != nullptr) {
        return;
    }
    m_patience.stop();
    m_window->startOverlays(m_library, {busGate(m_busAddress), m_link.answerGate()});
    if (m_snapshot) {
        connect(m_window->overlays(), &OverlayHost::updateAsked, m_snapshot.get(), &Snapshot::noteUpdate);
    }
}

void TerminalProgram::endSnapshot(const QString &error)
{
    if (!error.isEmpty()) {
        qCritical("%s", qUtf8Printable(error));
    }
    QApplication::exit(error.isEmpty() ? Done : Failed);
}

void TerminalProgram::handleBrokerState(LocalBroker::State state)
{
    if (state == LocalBroker::State::Failed) {
        tell(m_broker.problem());
    }
    if (state != LocalBroker::State::Starting && state != LocalBroker::State::Stopped) {
        joinBus(); // also a broker that failed is tried again
    }
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
