#include "terminal/answers/AnswerChecker.h"

#include <QCryptographicHash>

#include <utility>

namespace Terminal {

namespace {

/// A longer one takes more than a millisecond or two.
constexpr int longestAtOnce = 64 * 1024;

/// Of answers that wait; a module may send them faster than they can be looked at.
constexpr qint64 mostBytesWaiting = 64 * 1024 * 1024;

QByteArray digestOf(const QByteArray &payload)
{
    return QCryptographicHash::hash(payload, QCryptographicHash::Sha1);
}

} // namespace

AnswerChecker::AnswerChecker(QObject *parent) : QObject(parent)
{
    m_thread.setMaxThreadCount(1);
}

AnswerChecker::~AnswerChecker()
{
    m_thread.clear();
    m_thread.waitForDone();
}

void AnswerChecker::check(const QByteArray &payload, const Trading::AnsweredChart &chart, Then then)
{
    if (m_underWay == 0 && payload.size() <= longestAtOnce) {
        then(Trading::checkAnswer(payload, chart), digestOf(payload));
    } else if (hasRoomFor(payload.size())) {
        checkAside(payload, chart, then);
    }
}

bool AnswerChecker::hasRoomFor(qint64 bytes)
{
    const bool wasFull = std::exchange(m_isFull, m_underWay > 0 && m_bytesWaiting + bytes > mostBytesWaiting);
    if (m_isFull && !wasFull) {
        qWarning("Answers come faster than they can be held against the table of messages; some are not");
    }
    return !m_isFull;
}

void AnswerChecker::checkAside(const QByteArray &payload, const Trading::AnsweredChart &chart,
                               const Then &then)
{
    ++m_underWay;
    m_bytesWaiting += payload.size();
    m_thread.start([this, payload, chart, then] {
        const Trading::CheckedAnswer answer = Trading::checkAnswer(payload, chart);
        const QByteArray digest = digestOf(payload);
        QMetaObject::invokeMethod(
            this,
            [this, answer, digest, then, bytes = payload.size()] {
                --m_underWay;
                m_bytesWaiting -= bytes;
                then(answer, digest);
            },
            Qt::QueuedConnection);
    });
}

} // namespace Terminal
