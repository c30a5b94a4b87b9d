#pragma once

#include "terminal/answers/OverlayState.h"
#include "terminal/data/DataFolder.h"
#include "terminal/plugin/OverlayKind.h"
#include "trading/AnswerCheck.h"

#include <QDateTime>
#include <QHash>

#include <chrono>
#include <optional>

namespace Terminal {

/// What the overlays of a chart have asked and were answered, by the commands of their questions.
class OverlayStates
{
public:
    /// How long a question may wait for its answer.
    static constexpr std::chrono::milliseconds patience = std::chrono::seconds(3);

    /// Another chart is shown. What overlays ask anew for it is forgotten; what they do not, as the cost of
    /// the same security, stands.
    void setChart(const ChartData &shown);

    void noteAsked(const QString &command, const QDateTime &now = QDateTime::currentDateTime());
    void noteAnswer(const Trading::CheckedAnswer &answer);

    OverlayState stateOf(const OverlayKind &kind, const QDateTime &now = QDateTime::currentDateTime()) const;

private:
    /// The last that was heard to a question.
    struct Heard
    {
        std::optional<QDateTime> unansweredFrom; ///< when it was asked first since the last answer
        bool isAnswered = false;
        bool isRefusal = false;
        int rows = 0;
        int otherMarkets = 0;
        QStringList faults;
        QString costMethod;
    };

    static OverlayState::Kind kindOf(const Heard &heard);
    void forget(const OverlayKind &kind);

    Trading::SecurityId m_security;
    ChartPeriod m_period = ChartPeriod::Day;
    bool m_isToday = false;
    QHash<QString, Heard> m_heard;
};

} // namespace Terminal
