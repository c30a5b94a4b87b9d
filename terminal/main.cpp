#include "terminal/Appearance.h"
#include "terminal/Environment.h"
#include "terminal/TerminalRuns.h"
#include "terminal/bars/BarsCommand.h"
#include "terminal/ui/InterfaceLanguage.h"
#include "trading/ExchangeTime.h"
#include "trading/HiddenPasswords.h"
#include "trading/MachineLanguage.h"
#include "trading/PrintableText.h"
#include "trading/TerminationSignals.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace {

constexpr int wrongOptions = 2;

constexpr int badMachine = 1;

void complain(const QString &problem)
{
    std::fprintf(stderr, "tradeterminal: %s\n", qUtf8Printable(Trading::printableLines(problem)));
}

QStringList wordsOf(int argc, char *argv[])
{
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    return words;
}

/// The language of what is said before the options are understood: theirs, of several the last, else that of
/// the shell.
QString languageOf(const QStringList &words)
{
    const QString option = QStringLiteral("--lang");
    QString language = Trading::machineLanguage();
    for (int i = 1; i < words.size(); ++i) {
        if (words.at(i) == option) {
            language = words.value(i + 1);
        } else if (words.at(i).startsWith(option + QLatin1Char('='))) {
            language = words.at(i).mid(option.size() + 1);
        }
    }
    return language;
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
    InterfaceLanguage language;
    language.set(languageOf(words));
    if (words.value(1) == QLatin1String("bars")) {
        return runBarsCommand(words.mid(2), QApplication::applicationDirPath());
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
