#include "terminal/Appearance.h"
#include "terminal/Environment.h"
#include "terminal/TerminalProgram.h"

#include <QApplication>

#include <cstdio>

namespace {

constexpr int wrongOptions = 2;

QStringList wordsOf(int argc, char *argv[])
{
    QStringList words;
    for (int i = 0; i < argc; ++i) {
        words.append(QString::fromLocal8Bit(argv[i]));
    }
    return words;
}

} // namespace

int main(int argc, char *argv[])
{
    using namespace Terminal;
    useExchangeTime();
    useScreenlessPlatform(wordsOf(argc, argv));
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tradeterminal"));
    QApplication::setApplicationVersion(QStringLiteral(TRADETERMINAL_VERSION));
    setAppearance(&application);

    const auto parsed = parseOptions(QApplication::arguments(), QApplication::applicationDirPath());
    if (!parsed) {
        std::fprintf(stderr, "tradeterminal: %s\n", qUtf8Printable(parsed.error()));
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
    return TerminalProgram(parsed.value().options, QApplication::applicationDirPath()).run();
}
