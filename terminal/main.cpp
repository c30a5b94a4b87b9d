#include "terminal/Appearance.h"
#include "terminal/Environment.h"
#include "terminal/TerminalRuns.h"
#include "terminal/bars/BarsCommand.h"
#include "terminal/ui/InterfaceLanguage.h"
#include "trading/ExchangeTime.h"
#include "trading/HiddenPasswords.h"
#include "trading/MachineLanguage.h"
#include "trading/TerminationSignals.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace {

constexpr int wrongOptions = 2;

constexpr int badMachine = 1;

void complain(const QString &problem)
{
    std::fprintf(stderr, "tradeterminal: %s\n", qUtf8Printable(problem));
}

QStringList wordsOf(int argc, char *argv[])
{
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    return words;
}

/// Commands speak the language of the shell that they are typed into.
QString languageOf(const QStringList &words)
{
    const int option = words.indexOf(QStringLiteral("--lang"));
    return option >= 0 ? words.value(option + 1) : Trading::machineLanguage();
}

int runCommand(const QStringList &words)
{
    Terminal::InterfaceLanguage language;
    language.set(languageOf(words));
    return Terminal::runBarsCommand(words.mid(2), QApplication::applicationDirPath());
}

} // namespace

int main(int argc, char *argv[])
{
    using namespace Terminal;
    const bool hasExchangeTime = Trading::enterExchangeTime();
    useScreenlessPlatformWithoutDisplay();
    useDensityOfScreen();
    // Qt would take --plugin for an option of its own.
    int programNameOnly = 1;
    QApplication application(programNameOnly, argv);
    QApplication::setOrganizationName(QStringLiteral("tradechart"));
    QApplication::setApplicationName(QStringLiteral("tradeterminal"));
    QApplication::setApplicationVersion(QStringLiteral(TRADETERMINAL_VERSION));
    setAppearance(&application);
    // Overlays write what they ask and hear into the log; QT_LOGGING_RULES brings it back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));

    const QStringList words = wordsOf(argc, argv);
    Trading::hidePasswords(argc, argv);
    if (words.value(1) == QLatin1String("bars")) {
        return runCommand(words);
    }
    const auto parsed = parseOptions(words, QApplication::applicationDirPath());
    if (!parsed) {
        complain(parsed.error());
        return wrongOptions;
    }
    switch (parsed.value().end) {
    case OptionsEnd::ShowHelp:
        std::printf("%s", qUtf8Printable(parsed.value().helpText));
        return 0;
    case OptionsEnd::ShowVersion:
        std::printf("tradeterminal %s\n", TRADETERMINAL_VERSION);
        return 0;
    case OptionsEnd::Run:
        break;
    }
    if (!hasExchangeTime) {
        complain(QApplication::translate(
            "main", "this machine does not know the time zone Asia/Shanghai, by which the "
                    "exchange counts its days: install its time-zone data (package tzdata)"));
        return badMachine;
    }
    if (!hasDisplay() && parsed.value().options.snapshotFile.isEmpty()) {
        complain(QApplication::translate("main", "there is no display; --snapshot FILE.png needs none"));
        return badMachine;
    }
    const Trading::TerminationSignals signalsQuit; // so that settings are kept when the session ends
    return TerminalRuns(parsed.value().options, QApplication::applicationDirPath()).run();
}
