#include "terminal/Appearance.h"
#include "terminal/Environment.h"
#include "terminal/TerminalProgram.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace {

constexpr int wrongOptions = 2;

constexpr int noDisplay = 1;

void complain(const QString &problem)
{
    std::fprintf(stderr, "tradeterminal: %s\n", qUtf8Printable(problem));
}

} // namespace

int main(int argc, char *argv[])
{
    using namespace Terminal;
    useExchangeTime();
    useScreenlessPlatformWithoutDisplay();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tradeterminal"));
    QApplication::setApplicationVersion(QStringLiteral(TRADETERMINAL_VERSION));
    setAppearance(&application);
    // Overlays write what they ask and hear into the log; QT_LOGGING_RULES brings it back.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));

    const auto parsed = parseOptions(QApplication::arguments(), QApplication::applicationDirPath());
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
    if (!hasDisplay() && parsed.value().options.snapshotFile.isEmpty()) {
        complain(QApplication::translate("main", "there is no display; --snapshot FILE.png needs none"));
        return noDisplay;
    }
    return TerminalProgram(parsed.value().options, QApplication::applicationDirPath()).run();
}
