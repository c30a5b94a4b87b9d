#pragma once

#include "trademodule/check/CheckSettings.h"
#include "trademodule/check/CheckedBus.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>

namespace TradeModule {

/// All that is said between a check and a module. Each question has a screen of its own, so that every
/// message on it is an answer to that question, whatever stands in it.
class Conversation
{
public:
    /// The bus must outlive it.
    Conversation(CheckedBus *bus, const CheckSettings &settings);

    /// A new screen, whose answers are heard from now on. Channels may have any bytes: `ending` is part of
    /// its name.
    QByteArray newScreen(const QByteArray &ending = {});

    /// Puts a message where questions go.
    void ask(const QByteArray &question);

    /// The first answer on a screen; empty when there is none in time.
    QByteArray answerOn(const QByteArray &screen);

    /// Waits until so many answers are there; false when they are not in time.
    bool waitForAnswers(const QByteArray &screen, int count, std::chrono::milliseconds patience);

    /// All that came on a screen so far.
    QByteArrayList answersOn(const QByteArray &screen) const { return m_answers.value(screen); }

    /// Asks for an answer to the asker. Empty when there is none in time.
    QByteArray request(const QByteArray &question);

    /// What was told to everybody, or a screen, so far.
    const QByteArrayList &notifications() const { return m_notifications; }
    /// What modules said of themselves so far, the word kept by the broker first.
    const QByteArrayList &presences() const { return m_presences; }

    /// Lets messages come for so long.
    void pause(std::chrono::milliseconds time);

    /// Lets messages come until the condition holds; false when it does not in time.
    bool waitUntil(const std::function<bool()> &condition);

private:
    void hear(const HeardMessage &message);

    CheckedBus *const m_bus;
    const std::chrono::milliseconds m_patience;
    const QByteArray m_mark;
    int m_screens = 0;
    QHash<QByteArray, QByteArrayList> m_answers; ///< by screen
    QByteArrayList m_notifications;
    QByteArrayList m_presences;
};

} // namespace TradeModule
