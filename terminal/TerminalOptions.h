#pragma once

#include "terminal/chart/ChartTheme.h"
#include "terminal/data/ChartPeriod.h"
#include "terminal/data/Loaded.h"

#include <QSize>
#include <QStringList>

namespace Terminal {

/// What the terminal was asked for on its command line.
struct TerminalOptions
{
    QString dataFolder;
    QString code; ///< empty: the first security of the data folder
    ChartPeriod period = ChartPeriod::Day;
    int day = 0;          ///< of a minute chart, yyyymmdd; 0: the last recorded one
    QStringList overlays; ///< words of overlayKinds
    QString pluginFile;
    QString moduleProgram;
    QString ledger; ///< empty: no trading module is started
    bool startsBroker = true;
    ThemeKind theme = ThemeKind::Dark;
    RiseColour riseColour = RiseColour::Red;
    QString language = QStringLiteral("zh"); ///< zh or en
    QString snapshotFile;                    ///< empty: a window is opened
    QSize size = {1600, 900};
    int refreshSeconds = 3;  ///< after which overlays ask for their data again
    int timeoutSeconds = 20; ///< that a snapshot waits for the overlays' data
};

enum class OptionsEnd { Run, ShowHelp, ShowVersion };

struct ParsedOptions
{
    TerminalOptions options;
    OptionsEnd end = OptionsEnd::Run;
    QString helpText;
};

/// Reads the command line, its first word being the program. `programFolder` is where the program
/// lies; the plug-in, the trading module and the sample data are looked for relative to it.
/// A failure names the option and what it may be.
Loaded<ParsedOptions> parseOptions(const QStringList &arguments, const QString &programFolder);

} // namespace Terminal
