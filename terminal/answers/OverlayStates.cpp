#include "terminal/answers/OverlayStates.h"

#include "terminal/answers/AnswerFaultText.h"
#include "terminal/plugin/HostRecords.h"

#include <algorithm>

namespace Terminal {

void OverlayStates::setChart(const ChartData &shown)
{
    const bool isOther = m_security != shown.security.id();
    m_security = shown.security.id();
    m_period = shown.period;
    m_isToday = isTodaysChart(shown);
    for (const OverlayKind &kind : overlayKinds()) {
        if (isOther || kind.boundToRange) {
            forget(kind);
        }
    }
}

void OverlayStates::forget(const OverlayKind &kind)
{
    for (const OverlayQuestion &question : kind.questions) {
        m_heard.remove(QLatin1String(question.command));
    }
}

/// An answer from before stands until the next one comes.
void OverlayStates::noteAsked(const QString &command, const QDateTime &now)
{
    auto &from = m_heard[command].unansweredFrom;
    from = from.value_or(now);
}

void OverlayStates::noteAnswer(const Trading::CheckedAnswer &answer)
{
    m_heard[answer.command] = {
        std::nullopt,     true, answer.isRefusal, answer.rows, answer.otherMarkets, faultTexts(answer),
        answer.costMethod};
}

OverlayState::Kind OverlayStates::kindOf(const Heard &heard)
{
    if (!heard.isAnswered) {
        return OverlayState::Asked;
    }
    if (heard.isRefusal) {
        return OverlayState::Refused;
    }
    if (!heard.faults.isEmpty()) {
        return OverlayState::Wrong;
    }
    return heard.rows > 0 ? OverlayState::Drawn : OverlayState::Empty;
}

OverlayState OverlayStates::stateOf(const OverlayKind &kind, const QDateTime &now) const
{
    if (kind.isCombined()) {
        return {OverlayState::Unheard};
    }
    OverlayState state{OverlayState::Elsewhere};
    std::optional<QDateTime> from;
    const auto raise = [&state](OverlayState::Kind reached) { state.kind = std::max(state.kind, reached); };
    for (const QString &command : kind.commandsOn(m_period, m_isToday)) {
        raise(OverlayState::Waiting);
        const auto heard = m_heard.constFind(command);
        if (heard == m_heard.constEnd()) {
            continue;
        }
        raise(kindOf(*heard));
        if (heard->unansweredFrom) {
            from = std::min(from.value_or(*heard->unansweredFrom), *heard->unansweredFrom);
        }
        state.otherMarkets += heard->otherMarkets;
        state.faults += heard->faults;
        state.costMethod += heard->costMethod; // one question alone is about the cost
    }
    if (from && from->msecsTo(now) >= patience.count()) {
        state.unansweredSince = from->time();
    }
    return state;
}

} // namespace Terminal
