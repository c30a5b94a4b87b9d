#include "terminal/TerminalRuns.h"

#include "terminal/TerminalProgram.h"
#include "terminal/intake/StartWindow.h"
#include "terminal/options/TerminalPaths.h"
#include "terminal/services/BusInstance.h"
#include "terminal/ui/WindowSettings.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>

#include <utility>

namespace Terminal {

namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("TerminalRuns", source);
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
    const BusMembership membership(m_options.ledger);
    TerminalProgram program(m_options, m_programFolder);
    program.setPlaces({QCoreApplication::applicationFilePath(), m_sampleFolder,
                       [&membership](const QString &ledger) { return membership.ofOther(ledger); }});
    const int code = program.run();
    if (!program.next()) {
        return code;
    }
    m_options = *program.next();
    m_isAtStart = m_options.dataFolder.isEmpty();
    return std::nullopt;
}

} // namespace Terminal
