#pragma once

#include "terminal/trade/DeskOutcome.h"

#include <QByteArray>
#include <QHash>
#include <QObject>

#include <chrono>
#include <functional>
#include <utility>

namespace Terminal {

/// A wish to place or to cancel an order, as it travels.
struct Wish
{
    QString id; ///< its answer brings it back
    QByteArray question;
    /// True while the same question may be sent again without anything happening twice.
    std::function<bool()> mayRepeat = [] { return false; };
    std::function<void()> tellRepeat = [] {};
    std::function<void(const DeskOutcome &)> tell = [](const DeskOutcome &) {};
};

/// Wishes that wait for their answer. Each is told of one outcome from the event loop, and of a second one
/// when the answer comes after it was told that none did.
class OpenWishes : public QObject
{
    Q_OBJECT

public:
    /// Hands a question to the bus; false when there is none.
    using Send = std::function<bool(const QByteArray &question)>;

    explicit OpenWishes(Send send) : m_send(std::move(send)) {}

    /// A wish that may be repeated is sent so often in all before it is told that no answer came.
    static constexpr int mostTries = 3;

    /// How long the answer to each try is waited for.
    void setTimeout(std::chrono::milliseconds patience) { m_timeout = patience; }

    void add(const Wish &wish);

    /// True, once, for the id of a wish: this is its answer.
    bool close(const QString &id, const DeskOutcome &outcome);

Q_SIGNALS:
    /// A wish was told that no answer came.
    void unanswered();

private:
    struct Open
    {
        Wish wish;
        int tries = 1;
        bool isLate = false; ///< it was told that no answer came
    };

    void waitFor(const QString &id);
    void endTry(const QString &id);

    Send m_send;
    std::chrono::milliseconds m_timeout{0};
    QHash<QString, Open> m_open;
};

} // namespace Terminal
