#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>

namespace Terminal {

/// A question that is asked again and again, of which at most one is open: whatever asks meanwhile is
/// served by one more question after the answer.
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
    /// Asks at once; the answer to what is open now is not waited for any longer.
    void askAnew();

    /// True when none is open and the last one was answered.
    bool isAnswered() const { return m_isAnswered; }

    /// True, once, for the id of the open question: this is its answer.
    bool close(const QString &id);

Q_SIGNALS:
    /// There was no bus, or no answer in time.
    void unanswered();

private:
    void giveUp();

    Send m_send;
    QTimer m_timeout;
    QString m_openId;
    bool m_asksAgain = false;
    bool m_isAnswered = false;
};

} // namespace Terminal
