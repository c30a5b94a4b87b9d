#include "terminal/answers/OverlayStates.h"

#include "terminal/answers/AnswerFaultText.h"
#include "terminal/plugin/HostRecords.h"

#include <algorithm>

namespace Terminal {

void OverlayStates::setChart(const ChartData &shown)
{
    m_period = shown.period;
    m_isToday = isTodaysChart(shown);
    m_heard.clear();
}

void OverlayStates::noteAsked(const QString &command)
{
    m_heard[command]; // an answer from before stands until the next one comes
}

void OverlayStates::noteAnswer(const Trading::CheckedAnswer &answer)
{
    m_heard[answer.command] = {true, answer.isRefusal, answer.rows, answer.otherMarkets, faultTexts(answer)};
}

OverlayState OverlayStates::stateOf(const OverlayKind &kind) const
{
    if (kind.isCombined()) {
        return {OverlayState::Drawn}; // it is answered where nobody else hears it
    }
    OverlayState state{OverlayState::Elsewhere};
    const auto raise = [&state](OverlayState::Kind reached) { state.kind = std::max(state.kind, reached); };
    for (const QString &command : kind.commandsOn(m_period, m_isToday)) {
        raise(OverlayState::Waiting);
        const auto heard = m_heard.constFind(command);
        if (heard == m_heard.constEnd()) {
            continue;
        }
        raise(!heard->isAnswered         ? OverlayState::Asked
              : heard->isRefusal         ? OverlayState::Refused
              : !heard->faults.isEmpty() ? OverlayState::Wrong
              : heard->rows > 0          ? OverlayState::Drawn
                                         : OverlayState::Empty);
        state.otherMarkets += heard->otherMarkets;
        state.faults += heard->faults;
    }
    return state;
}

} // namespace Terminal
