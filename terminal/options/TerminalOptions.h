#pragma once

#include "terminal/chart/theme/ChartTheme.h"
#include "terminal/data/ChartPeriod.h"
#include "terminal/data/Loaded.h"
#include "terminal/data/PriceView.h"
#include "terminal/replay/PlannedOrder.h"
#include "trading/ClockTime.h"
#include "trading/ResultColumns.h"
#include "trading/TradingDate.h"

#include <QMap>
#include <QSize>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace Terminal {

/// What the terminal was asked for on its command line, or remembers of the last time.
struct TerminalOptions
{
    QString dataFolder;
    QString code; ///< empty: the first security of the data folder
    ChartPeriod period = ChartPeriod::Day;
    std::optional<Trading::TradingDate> day; ///< of a minute chart; nothing: the last recorded one
    PriceView prices = PriceView::Raw;       ///< of charts, of whatever period
    QStringList overlays;                    ///< words of overlayKinds
    QString pluginFile;
    QString moduleProgram;
    QString ledger;   ///< empty: no trading module is started
    QString practice; ///< what is practised, as its user calls it; empty: nothing
    /// A practice is a session that is kept, which says data, ledger, security and day. False: it is the
    /// ledger that the command line names.
    bool isPracticeKept = true;
    /// How far the practised day was dealt before; nothing: it begins.
    std::optional<Trading::ClockTime> practisedUntil;
    bool startsBroker = true;
    ThemeKind theme = ThemeKind::Dark;
    RiseColour riseColour = RiseColour::Red;
    QString language = QStringLiteral("zh");     ///< zh or en
    std::optional<Trading::ResultGroup> results; ///< the list of results that is opened; nothing: none
    bool showsTrades = true;                     ///< trades and working orders, on charts of every period
    bool hidesAmounts = false;                   ///< of the account, in labels and lists
    bool asksBeforeSending = true;               ///< before an order is sent
    QStringList watched;                         ///< codes on the watch list
    bool soundsWhenDealt = false;                ///< an order
    bool notifiesWhenDealt = false;              ///< on the desktop
    QString snapshotFile;                        ///< empty: a window is opened
    QSize size = {1600, 900};
    std::chrono::seconds refresh{3};  ///< after which overlays ask for their data again
    std::chrono::seconds timeout{20}; ///< that a snapshot waits for the overlays' data
    int replaySpeed = 0;              ///< 1–600: the recorded day is played as today; 0: it is not
    /// The replayed day is played at once up to this; nothing: it is played from its beginning.
    std::optional<Trading::ClockTime> replayTo;
    OrderPlan orders;  ///< placed while the day is played
    QStringList given; ///< names of the options that the command line has
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

/// True when the command line names something to be seen: data, an account, a chart or a picture. Else the
/// terminal shows what it did the last time, or its start page.
bool nameAChart(const TerminalOptions &options);

/// Sets one option, of those that have a value, by its name and the text of its value. Returns an empty text,
/// or what the value must be; then the options are as they were.
QString takeOption(const QString &name, const QString &value, TerminalOptions *options);

/// What a window remembers of its options from one run to the next: their names, and texts that takeOption()
/// reads.
QMap<QString, QString> rememberedWords(const TerminalOptions &options);

} // namespace Terminal
