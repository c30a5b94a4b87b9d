#pragma once

#include "endpoint/BusMessage_p.h"

#include <QDeadlineTimer>

#include <chrono>
#include <optional>

namespace LocalCommunication {

/// A question that was asked and waits for its answer.
class OpenRequest
{
public:
    /// Its time begins to run. No other question of this client has the same `correlation`.
    OpenRequest(QByteArray correlation, std::chrono::nanoseconds timeout);

    const QByteArray &correlation() const { return m_correlation; }

    /// Takes a message that came to this client's reply path. The first one with the right correlation
    /// is the answer; the others, such as late answers to earlier questions, are of no use to anybody.
    void take(const BusMessage &message);

    /// True when the answer is there or can no longer come in time.
    bool isOver() const { return m_answer || m_deadline.hasExpired(); }

    bool isAnswered() const { return m_answer.has_value(); }

    /// Rounded up, so that who waits that long has waited long enough.
    std::chrono::milliseconds remainingTime() const;

    /// Empty while none has come.
    QByteArray answer() const { return m_answer.value_or(QByteArray()); }

private:
    QByteArray m_correlation;
    QDeadlineTimer m_deadline;
    std::optional<QByteArray> m_answer;
};

} // namespace LocalCommunication
