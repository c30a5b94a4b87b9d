#include "terminal/TerminalRuns.h"

#include "endpoint/BusAddress.h"
#include "terminal/TerminalProgram.h"
#include "terminal/intake/StartWindow.h"
#include "terminal/options/TerminalPaths.h"
#include "terminal/practice/PracticeLock.h"
#include "terminal/practice/PracticeSessions.h"
#include "terminal/practice/PractisedLedger.h"
#include "terminal/services/BusInstance.h"
#include "terminal/ui/WindowSettings.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace Terminal {

namespace {

constexpr int practiceSpeed = 20;
constexpr int refused = 1;

QString text(const char *source)
{
    return QCoreApplication::translate("TerminalRuns", source);
}

/// The day as far as it has come; the overlays are those of the last window unless some are named.
TerminalOptions optionsOf(const PracticeSession &session, TerminalOptions options)
{
    options.dataFolder = session.dataFolder;
    options.ledger = session.ledger();
    options.code = session.code;
    options.day = session.day;
    options.period = ChartPeriod::Minute;
    options.replaySpeed = options.replaySpeed > 0 ? options.replaySpeed : practiceSpeed;
    options.given += {QStringLiteral("code"), QStringLiteral("period"), QStringLiteral("replay")};
    return options;
}

QString whyNotReplayedOn(const Loaded<PractisedLedger> &ledger, const TerminalOptions &options)
{
    const QString reason =
        ledger ? text("it practises %1").arg(ledger.value().day.dashedText()) : ledger.error();
    const QString day = options.day ? options.day->text() : QStringLiteral("YYYYMMDD");
    return text("--replay with --ledger needs a ledger that practises the day: %1. Begin one with "
                "\"trademodule --ledger practice.db practice --day %2 --copy LEDGER\", and name practice.db; "
                "the ledger that it copies stays as it is.")
        .arg(reason, day);
}

} // namespace

TerminalRuns::TerminalRuns(TerminalOptions options, QString programFolder)
    : m_options(std::move(options)),
      m_programFolder(std::move(programFolder)),
      m_sampleFolder(sampleDataFolder(m_programFolder))
{
    if (!nameAChart(m_options)) {
        takeRememberedPlaces();
    }
}

/// The account of the last time, when it is still there.
void TerminalRuns::takeRememberedPlaces()
{
    const WindowSettings settings;
    const AccountPlaces places = settings.places();
    m_isAtStart = places.ledger.isEmpty() || !areUsable(places);
    if (!m_isAtStart) {
        m_options.dataFolder = places.dataFolder;
        m_options.ledger = places.ledger;
    } else if (!places.ledger.isEmpty()) {
        m_notice = text("The account of the last time is not there any more: %1, bars in %2")
                       .arg(places.ledger, QDir::toNativeSeparators(places.dataFolder));
    }
}

int TerminalRuns::run()
{
    while (true) {
        if (m_isAtStart && !runStartPage()) {
            return 0;
        }
        if (const auto code = runWindow()) {
            return *code;
        }
    }
}

/// Returns false when it was closed.
bool TerminalRuns::runStartPage()
{
    const TerminalOptions remembered = WindowSettings().over(m_options);
    m_options.language = remembered.language;
    m_options.theme = remembered.theme;
    m_options.riseColour = remembered.riseColour;
    const auto setLanguage = [this](const QString &word) {
        m_language.set(word);
        m_options.language = word;
    };
    StartWindow page(m_options,
                     {QCoreApplication::applicationFilePath(), m_sampleFolder, m_notice, setLanguage});
    bool isChosen = false;
    QObject::connect(&page, &StartWindow::chosen, &page, [&](const TerminalOptions &options) {
        isChosen = true;
        m_options = options;
        QApplication::quit();
    });
    page.show();
    QApplication::exec();
    m_isAtStart = false;
    m_notice.clear();
    return isChosen;
}

/// Returns the exit code, or nothing when another account or the start page comes next.
std::optional<int> TerminalRuns::runWindow()
{
    if (!m_options.practice.isEmpty()) {
        return runPractice();
    }
    const bool replaysOnALedger = m_options.replaySpeed > 0 && !m_options.ledger.isEmpty();
    return replaysOnALedger ? runPractisedLedger() : runAccount(m_options);
}

/// The session is this window's alone until it is left.
std::optional<int> TerminalRuns::runPractice()
{
    const PracticeSessions sessions = PracticeSessions::ofUser();
    const auto session = sessions.find(m_options.practice);
    if (!session) {
        return refusePractice(text("There is no practice \"%1\".").arg(m_options.practice));
    }
    if (!LocalCommunication::BusAddress::ofDirectory(m_programFolder).isEmbedded) {
        return refusePractice(text("A practice needs a bus of its own, but endpoint.ini names one for all "
                                   "accounts."));
    }
    PracticeLock lock(*session);
    if (!lock.acquire()) {
        return refusePractice(lock.problem());
    }
    const QString problem = std::exchange(m_restarts, false) ? sessions.restart(*session) : QString();
    const auto ledger = readPractisedLedger(session->ledger(), m_options.moduleProgram, m_options.language);
    if (!problem.isEmpty() || !ledger) {
        return refusePractice(
            problem.isEmpty()
                ? text("The practice \"%1\" cannot be continued: %2").arg(session->name, ledger.error())
                : problem);
    }
    TerminalOptions options = optionsOf(*session, m_options);
    options.practisedUntil = ledger.value().reached;
    return runAccount(options);
}

/// A replay plays on an account that is for it, or not at all: the market does not go back under any other.
std::optional<int> TerminalRuns::runPractisedLedger()
{
    const auto ledger = readPractisedLedger(m_options.ledger, m_options.moduleProgram, m_options.language);
    const bool isOfDay = ledger && m_options.day.value_or(ledger.value().day) == ledger.value().day;
    if (!isOfDay) {
        return refusePractice(whyNotReplayedOn(ledger, m_options));
    }
    TerminalOptions options = m_options;
    options.practice = QFileInfo(m_options.ledger).fileName();
    options.isPracticeKept = false;
    options.day = ledger.value().day;
    options.practisedUntil = ledger.value().reached;
    return runAccount(options);
}

int TerminalRuns::refusePractice(const QString &problem)
{
    qCritical("%s", qUtf8Printable(problem));
    return refused;
}

std::optional<int> TerminalRuns::runAccount(const TerminalOptions &options)
{
    const auto choice =
        options.practice.isEmpty() ? BusMembership::Choice::OfUser : BusMembership::Choice::OfAccount;
    const BusMembership membership(options.ledger, choice);
    TerminalProgram program(options, m_programFolder);
    program.setPlaces({QCoreApplication::applicationFilePath(), m_sampleFolder,
                       [&membership](const QString &ledger) { return membership.ofOther(ledger); }});
    const int code = program.run();
    if (!program.next()) {
        return code;
    }
    m_options = *program.next();
    m_restarts = program.restartsPractice();
    m_isAtStart = m_options.dataFolder.isEmpty();
    return std::nullopt;
}

} // namespace Terminal
