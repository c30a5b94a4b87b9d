#pragma once

#include <QString>
#include <QStringList>
#include <QTime>

#include <optional>

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
        Unheard,   ///< it asks and is answered where nobody else hears it
    };
    Kind kind = Waiting;
    int otherMarkets = 0; ///< rows that it leaves out, being of another market
    QStringList faults{}; ///< what the user was told of its last answers
    QString costMethod{}; ///< how its cost is reckoned, the module's word; empty where it has not said
    /// When the oldest of its questions was asked that has waited too long for an answer; nothing while none
    /// has.
    std::optional<QTime> unansweredSince{};

    bool isTrouble() const { return kind == Refused || kind == Wrong || unansweredSince; }
};

/// What an overlay has drawn last.
struct DrawnOverlay
{
    int marks = 0;        ///< how many of its marks are in view
    QStringList labels{}; ///< what its lines are labelled with

    bool isEmpty() const { return marks == 0 && labels.isEmpty(); }
};

/// In a few words, for the user. `hindrance` tells why nobody answers; empty where somebody does. What is
/// drawn tells more than a question that was not heard.
QString overlayStateText(const OverlayState &state, const DrawnOverlay &drawn, const QString &hindrance);

} // namespace Terminal
