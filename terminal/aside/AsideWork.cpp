#include "terminal/aside/AsideWork.h"

#include <utility>

namespace Terminal {

namespace {

/// To read more takes longer than a millisecond or two.
constexpr qint64 mostAtOnce = 64 * 1024;

/// Of pieces that wait; they may come faster than they can be done.
constexpr qint64 mostWaiting = 64 * 1024 * 1024;

} // namespace

AsideWork::AsideWork(QObject *parent) : QObject(parent)
{
    m_thread.setMaxThreadCount(1);
}

AsideWork::~AsideWork()
{
    m_thread.clear();
    m_thread.waitForDone();
}

bool AsideWork::run(qint64 bytes, const Work &work)
{
    if (m_underWay == 0 && bytes <= mostAtOnce) {
        work()();
        return true;
    }
    if (m_underWay > 0 && m_bytesWaiting + bytes > mostWaiting) {
        return false;
    }
    ++m_underWay;
    m_bytesWaiting += bytes;
    m_thread.start([this, bytes, work] {
        QMetaObject::invokeMethod(
            this,
            [this, bytes, then = work()] {
                --m_underWay;
                m_bytesWaiting -= bytes;
                then();
            },
            Qt::QueuedConnection);
    });
    return true;
}

} // namespace Terminal
