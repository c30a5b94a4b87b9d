#pragma once

#include "terminal/data/ChartPeriod.h"

#include <QStringList>

#include <vector>

namespace Terminal {

/// On which charts a question is asked.
enum class AskedOn { EveryChart, DayChart, TodaysChart, PastDaysChart };

/// Which class of the overlay library draws an overlay.
enum class OverlayClass {
    Factory,  ///< one that the factory makes; its answers come on the channel of the chart's screen
    Combined, ///< the combined overlay, which waits for some answers and hears others on the channel of
              ///< everybody
};

/// A question to the trading module whose answer an overlay draws.
struct OverlayQuestion
{
    const char *command;
    AskedOn charts;

    bool isAsked(ChartPeriod period, bool isToday) const;
};

/// A kind of overlay that the overlay library offers.
struct OverlayKind
{
    const char *word; ///< of the command line and the settings
    OverlayClass overlayClass;
    int type;          ///< "type" of its configuration
    const char *title; ///< English source text of its toggle
    /// True when it adds up records of the range it was shown, so that another range needs a new one.
    bool boundToRange;
    /// True when it draws a line whose label is held at the edge while its price is beyond the scale.
    bool isHeldAtEdge;
    std::vector<OverlayQuestion> questions; ///< other than those that are asked while it calculates

    /// The commands of the questions that it asks for such a chart; none when it does not serve the period.
    QStringList commandsOn(ChartPeriod period, bool isToday) const;

    /// True when one of its questions has this command.
    bool asks(const char *command) const;

    bool isCombined() const { return overlayClass == OverlayClass::Combined; }
};

const std::vector<OverlayKind> &overlayKinds();

/// The kind of a word; null when there is none.
const OverlayKind *findOverlayKind(const QString &word);

QStringList overlayWords();

/// The title that the user reads, translated.
QString overlayTitle(const OverlayKind &kind);

} // namespace Terminal
