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
    /// It has a number by which a module knows it again: sent twice, it happens once.
    bool isNumbered = false;
    /// True while the module that is there knows the number of a numbered one.
    std::function<bool()> mayRepeat = [] { return false; };
    std::function<void()> tellRepeat = [] {};
    std::function<void(const DeskOutcome &)> tell = [](const DeskOutcome &) {};
};

/// Wishes that wait for their answer. Each is told of one outcome from the event loop, and of a second one
/// when the answer comes after it was told that none did. That is told of a numbered wish after several tries
/// only: who follows a module that stands still takes some ten seconds to come. From then on nothing is asked
/// again: the user, who was sent to look, may have sent another order in its place.
class OpenWishes : public QObject
{
    Q_OBJECT

public:
    /// Hands a question to the bus; false when there is none.
    using Send = std::function<bool(const QByteArray &question)>;

    explicit OpenWishes(Send send) : m_send(std::move(send)) {}

    /// The answer to a numbered wish is waited for so many times in all before it is told that none came.
    static constexpr int mostTries = 10;

    /// How long the answer to each try is waited for.
    void setTimeout(std::chrono::milliseconds patience) { m_timeout = patience; }

    void add(const Wish &wish);

    /// A module may be there that was not: what is numbered and still waited for is sent to it at once.
    void askAgain();

    /// The module knows the wish and has not ended it: it is asked about again as long as that goes on, and
    /// nobody is told.
    void keepOpen(const QString &id);
    /// True for a wish that is kept so.
    bool isKept(const QString &id) const { return m_open.value(id).isKept; }
    /// Asks at once about those: something has changed.
    void askAboutKept();

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
        bool isKept = false; ///< the module said that it knows it
        bool isLate = false; ///< it was told that no answer came
    };

    void waitFor(const QString &id);
    void endTry(const QString &id);
    void repeat(const Open &open);

    Send m_send;
    std::chrono::milliseconds m_timeout{0};
    QHash<QString, Open> m_open;
};

} // namespace Terminal
