#pragma once

#include "terminal/aside/AsideWork.h"
#include "trading/AnswerCheck.h"

#include <QObject>

#include <functional>

namespace Terminal {

/// Holds answers against the table of messages, one after the other. To do so with ten thousand rows takes
/// longer than a window may stand still; such an answer is looked at by a thread of its own.
class AnswerChecker : public QObject
{
    Q_OBJECT

public:
    /// What comes of an answer, and a digest of it: two answers with one digest are the same.
    using Then = std::function<void(const Trading::CheckedAnswer &answer, const QByteArray &digest)>;

    explicit AnswerChecker(QObject *parent) : QObject(parent) {}

    /// Calls `then` in this thread, in the order of the calls: at once for a short answer that need not wait
    /// for another one, later otherwise, and never when this object has gone. An answer that comes while
    /// too much waits already is left alone, which is told in the log.
    void check(const QByteArray &payload, const Trading::AnsweredChart &chart, Then then);

private:
    AsideWork m_aside;
    bool m_isFull = false; ///< and that was told
};

} // namespace Terminal
