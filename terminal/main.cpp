#include "terminal/TerminalOptions.h"
#include "terminal/snapshot/Snapshot.h"
#include "terminal/ui/MainWindow.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    qputenv("TZ", "Asia/Shanghai");
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    const auto parsed = Terminal::parseOptions(QApplication::arguments(), QApplication::applicationDirPath());
    if (!parsed) {
        qCritical("%s", qPrintable(parsed.error()));
        return 2;
    }
    const auto &options = parsed.value().options;
    const auto folder = Terminal::DataFolder::open(options.dataFolder);
    if (!folder) {
        qCritical("%s", qPrintable(folder.error()));
        return 2;
    }
    Terminal::MainWindow window(folder.value(), options);
    window.load(options.code, options.period, options.day);
    window.show();
    if (!options.snapshotFile.isEmpty()) {
        qCritical("%s", qPrintable(Terminal::writePicture(&window, options.snapshotFile)));
        return 0;
    }
    return QApplication::exec();
}
