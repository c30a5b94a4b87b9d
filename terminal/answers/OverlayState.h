#pragma once

#include <QString>
#include <QStringList>

namespace Terminal {

/// How things stand with an overlay on the chart.
struct OverlayState
{
    enum Kind {
        Elsewhere, ///< it has nothing to show on such a chart
        Waiting,   ///< it has not asked yet
        Asked,     ///< it has asked, and no answer came
        Empty,     ///< it was answered that there is nothing
        Drawn,     ///< it has something to draw
        Refused,   ///< the trading module could not answer
        Wrong,     ///< an answer is not what it must be
    };
    Kind kind = Waiting;
    int otherMarkets = 0; ///< rows that it leaves out, being of another market
    QStringList faults{}; ///< what the user was told of its last answers

    bool isTrouble() const { return kind == Refused || kind == Wrong; }
};

/// In a few words, for the user. `marks` is how many marks of it are in view, `labels` what its lines are
/// labelled with.
QString overlayStateText(const OverlayState &state, int marks, const QStringList &labels);

} // namespace Terminal
