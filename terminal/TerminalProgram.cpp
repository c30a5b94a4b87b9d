#include "terminal/TerminalProgram.h"

#include "terminal/services/BusProbe.h"
#include "terminal/services/TradeModuleProcess.h"
#include "terminal/snapshot/Snapshot.h"
#include "terminal/ui/MainWindow.h"

#include <QApplication>

namespace Terminal {

using LocalCommunication::LocalBroker;

namespace {

constexpr int patienceMilliseconds = 2000; ///< that a window waits for a trading module

enum ExitCode { Done = 0, Failed = 1 };

} // namespace

TerminalProgram::TerminalProgram(const TerminalOptions &options, const QString &busAddress)
    : m_options(options),
      m_busAddress(busAddress),
      m_link(nullptr)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &TerminalProgram::startOverlays);
    connect(&m_broker, &LocalBroker::stateChanged, this, &TerminalProgram::tellBrokerState);
    connect(&m_link, &TradeLink::answering, this, &TerminalProgram::handleAnswering);
}

TerminalProgram::~TerminalProgram()
{
    m_snapshot.reset();
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
    startServices();
    if (takesPicture()) {
        startSnapshot();
    } else {
        m_window->show();
        m_patience.start(patienceMilliseconds);
    }
    return QApplication::exec();
}

QString TerminalProgram::openWindow()
{
    const auto folder = DataFolder::open(m_options.dataFolder);
    if (!folder) {
        return folder.error();
    }
    if (m_options.code.isEmpty()) {
        m_options.code = folder.value().securities().front().code;
    }
    if (takesPicture()) {
        m_options.refreshSeconds = 1; // some questions are first asked by the refresh
    }
    m_window = std::make_unique<MainWindow>(folder.value(), m_options);
    m_window->load(m_options.code, m_options.period, m_options.day);
    return m_window->loadError();
}

QString TerminalProgram::openLibrary()
{
    const auto library = OverlayLibrary::open(m_options.pluginFile);
    m_hasLibrary = static_cast<bool>(library);
    m_library = library.value();
    const bool isNeeded = !m_options.overlays.isEmpty();
    return isNeeded ? library.error() : QString();
}

void TerminalProgram::startServices()
{
    const bool isNeeded = m_hasLibrary && (!takesPicture() || !m_options.overlays.isEmpty());
    if (!isNeeded) {
        return;
    }
    if (m_options.startsBroker) {
        m_broker.start(m_busAddress);
    }
    if (!m_options.ledger.isEmpty()) {
        m_module = std::make_unique<TradeModuleProcess>(m_options.moduleProgram, m_options.ledger,
                                                        m_busAddress, nullptr);
        connect(m_module.get(), &TradeModuleProcess::failed, this, &TerminalProgram::tell);
        m_module->start();
    }
    m_link.start(m_busAddress);
}

void TerminalProgram::startSnapshot()
{
    // Laid out as on a screen, before the overlays ask where things are.
    m_window->ensurePolished();
    m_window->grab();
    m_snapshot = std::make_unique<Snapshot>(m_window.get(), m_options, nullptr);
    connect(m_snapshot.get(), &Snapshot::finished, this, &TerminalProgram::endSnapshot, Qt::QueuedConnection);
    if (m_options.overlays.isEmpty()) {
        m_snapshot->finish();
        return;
    }
    m_snapshot->setHindrance(tr("trading module that answers on the bus"));
    connect(m_snapshot.get(), &Snapshot::listening, this, &TerminalProgram::handleAnswering);
    m_snapshot->start(m_busAddress);
}

void TerminalProgram::handleAnswering()
{
    if (m_window->overlays() != nullptr) {
        m_window->overlays()->renew();
    } else if (!takesPicture()) {
        startOverlays();
    } else if (m_link.isAnswering() && m_snapshot->isListening()) {
        m_snapshot->setHindrance({});
        startOverlays();
    }
}

void TerminalProgram::startOverlays()
{
    if (!m_hasLibrary || m_window->overlays() != nullptr) {
        return;
    }
    m_patience.stop();
    m_window->startOverlays(m_library, busGate(m_busAddress));
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

void TerminalProgram::tellBrokerState(LocalBroker::State state)
{
    if (state == LocalBroker::State::Failed) {
        tell(m_broker.problem());
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
