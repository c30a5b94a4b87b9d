#pragma once

#include "terminal/answers/OverlayState.h"
#include "terminal/data/DataFolder.h"
#include "terminal/plugin/OverlayKind.h"
#include "trading/AnswerCheck.h"

#include <QHash>

namespace Terminal {

/// What the overlays of a chart have asked and were answered, by the commands of their questions.
class OverlayStates
{
public:
    /// Forgets what was heard: another chart is shown.
    void setChart(const ChartData &shown);

    void noteAsked(const QString &command);
    void noteAnswer(const Trading::CheckedAnswer &answer);

    OverlayState stateOf(const OverlayKind &kind) const;

private:
    /// The last that was heard to a question.
    struct Heard
    {
        bool isAnswered = false;
        bool isRefusal = false;
        int rows = 0;
        int otherMarkets = 0;
        QStringList faults;
    };

    ChartPeriod m_period = ChartPeriod::Day;
    bool m_isToday = false;
    QHash<QString, Heard> m_heard;
};

} // namespace Terminal
