#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <functional>

namespace Terminal {

/// A question that is asked again and again, of which at most one is open: whatever asks meanwhile is
/// served by one more question after the answer. An answer that is late is taken all the same, unless a later
/// question has been answered: a slow module is heard, and nothing old follows something new.
class OpenQuestion : public QObject
{
    Q_OBJECT

public:
    /// Sends the question under a new id, which its answer brings back; returns the id, or an empty one
    /// when it could not be sent.
    using Send = std::function<QString()>;

    explicit OpenQuestion(Send send);

    void setTimeout(std::chrono::milliseconds patience) { m_timeout.setInterval(patience); }

    void ask();
    /// Asks at once; answers to what was asked before are taken no more.
    void askAnew();
    /// Waits for no answer any more: nobody hears the question, and those to earlier ones are not taken.
    void forget();

    /// True when none is open and the last one was answered, and has not been forgotten.
    bool isAnswered() const { return m_isAnswered; }

    /// True, once, for the id of the open question or of one that was given up: this is its answer.
    bool close(const QString &id);

Q_SIGNALS:
    /// There was no bus, or no answer to this or to an earlier one came in time.
    void unanswered();

private:
    void send();
    void giveUp();
    bool takeLate(const QString &id);

    Send m_send;
    QTimer m_timeout;
    QString m_openId;
    QStringList m_givenUp;   ///< ids, oldest first
    bool m_hasHeard = false; ///< a late answer came since the open one was asked
    bool m_asksAgain = false;
    bool m_isAnswered = false;
};

} // namespace Terminal
