#include "terminal/answers/AnswerChecker.h"

#include <QCryptographicHash>

#include <utility>

namespace Terminal {

namespace {

QByteArray digestOf(const QByteArray &payload)
{
    return QCryptographicHash::hash(payload, QCryptographicHash::Sha1);
}

} // namespace

void AnswerChecker::check(const QByteArray &payload, const Trading::AnsweredChart &chart, Then then)
{
    const bool wasFull = m_isFull;
    m_isFull = !m_aside.run(payload.size(), [payload, chart, then = std::move(then)] {
        const Trading::CheckedAnswer answer = Trading::checkAnswer(payload, chart);
        return [answer, digest = digestOf(payload), then] { then(answer, digest); };
    });
    if (m_isFull && !wasFull) {
        qWarning("Answers come faster than they can be held against the table of messages; some are not");
    }
}

} // namespace Terminal
