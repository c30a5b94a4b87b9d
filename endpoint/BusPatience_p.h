#pragma once

#include "endpoint/Patience_p.h"

#include <QByteArray>
#include <QtGlobal>

#include <map>

namespace LocalCommunication {

/// The patience of the clients of a thread on one bus: one for each topic path that they ask, for somebody
/// else may answer there. It numbers their questions, so that an answer is known by its number alone.
class BusPatience
{
public:
    using Time = Patience::Time;
    using Duration = Patience::Duration;

    BusPatience() = default;

    /// Higher than that of every question before, also of an earlier patience.
    quint64 nextQuestion(Time now);

    /// That question has gone out to `path`; see Patience, also for the others.
    Duration ask(const QByteArray &path, quint64 question, Time now, Duration timeout, bool isCrowded);
    void hear(quint64 question, Time now);
    void stopWaiting(Time now, bool isCrowded);
    void endTurn();
    void beginAnew(Time now);

private:
    Q_DISABLE_COPY(BusPatience)

    std::map<QByteArray, Patience> m_patiences; // by path, of which a program asks few
    Patience *m_asked = nullptr;                // for the question asked last
    quint64 m_last = 0;                         // question
};

} // namespace LocalCommunication
