#include "endpoint/LimitedWait_p.h"

#include <mutex>
#include <thread>
#include <utility>

namespace LocalCommunication {

/// What the thread that works shares with who waits for it.
struct LimitedWait::Question
{
    std::mutex mutex;
    LimitedWait *asker = nullptr; ///< who is to hear of it; nobody any more after cancel()
};

LimitedWait::LimitedWait(QObject *parent, std::chrono::milliseconds patience)
    : QObject(parent),
      m_patience(this)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &LimitedWait::giveUp);
}

/// Not by the threads that Qt keeps: the end of the program waits for them.
void LimitedWait::start(Work work)
{
    cancel();
    m_question = std::make_shared<Question>();
    m_question->asker = this;
    m_patience.start();
    std::thread([work = std::move(work), question = m_question] {
        const Then then = work();
        const std::lock_guard<std::mutex> lock(question->mutex);
        if (LimitedWait *const asker = question->asker) {
            QMetaObject::invokeMethod(
                asker,
                [asker, question, then] {
                    if (asker->m_question == question) { // else it was cancelled meanwhile
                        asker->cancel();
                        then();
                    }
                },
                Qt::QueuedConnection);
        }
    }).detach();
}

void LimitedWait::cancel()
{
    m_patience.stop();
    if (m_question) {
        const std::lock_guard<std::mutex> lock(m_question->mutex);
        m_question->asker = nullptr;
    }
    m_question.reset();
}

void LimitedWait::giveUp()
{
    cancel();
    Q_EMIT tooLong();
}

} // namespace LocalCommunication
