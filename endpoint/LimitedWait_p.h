#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace LocalCommunication {

/// Has something done that may wait for ever, such as to ask a name server, by a thread of its own. Nobody
/// waits for that thread, neither the event loop nor the end of the program; and what comes of it is waited
/// for only so long.
class LimitedWait : public QObject
{
    Q_OBJECT

public:
    /// Done in the thread that started it, after the work.
    using Then = std::function<void()>;
    using Work = std::function<Then()>;

    LimitedWait(QObject *parent, std::chrono::milliseconds patience);
    ~LimitedWait() override { cancel(); }

    /// Calls `work` in another thread and what it returns in this one, unless cancel() or tooLong() comes
    /// first. What went before is cancelled.
    void start(Work work);
    void cancel();

Q_SIGNALS:
    void tooLong();

private:
    struct Question;

    void giveUp();

    QTimer m_patience;
    std::shared_ptr<Question> m_question; ///< while its answer is waited for
};

} // namespace LocalCommunication
