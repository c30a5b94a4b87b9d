#pragma once

#include "trademodule/check/CheckedBus.h"

#include <QSet>
#include <QVector>

#include <functional>

namespace TradeModule {

/// What a module says, so long after it was asked.
struct Said
{
    QByteArray channel; ///< empty: to the asker
    QByteArray topic;
    QByteArray payload;
    std::chrono::milliseconds after{0};
    QString kind{}; ///< see Mutation.h; empty where it was not looked at
};

/// A bus with a module on it that is a function, and a clock that stands still while nobody waits: a check
/// that waits for three seconds takes none.
class StandInModule : public CheckedBus
{
public:
    using Answer = std::function<QVector<Said>(const QByteArray &question)>;

    /// `presence` is what the broker keeps; empty for nothing. Questions are waited for as long as
    /// `patience`.
    StandInModule(Answer answer, QByteArray presence,
                  std::chrono::milliseconds patience = std::chrono::seconds(3));

    void setListener(const Hear &hear) override { m_hear = hear; }
    void listen(const QByteArray &channel, const QByteArray &topic) override;
    void say(const QByteArray &channel, const QByteArray &topic, const QByteArray &payload) override;
    QByteArray request(const QByteArray &topic, const QByteArray &payload) override;
    bool hearUntil(const std::function<bool()> &condition, std::chrono::milliseconds patience) override;

private:
    using Time = std::chrono::milliseconds;
    struct Due
    {
        Time at;
        HeardMessage message;
    };

    void send(const Said &said);
    bool deliverNext(Time until);

    const Answer m_answer;
    const QByteArray m_presence;
    const Time m_patience;
    Hear m_hear;
    Time m_now{0};
    QSet<QByteArray> m_listened; ///< channel and topic
    QVector<Due> m_due;          ///< what comes first is first
};

} // namespace TradeModule
