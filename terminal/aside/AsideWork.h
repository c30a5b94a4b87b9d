#pragma once

#include <QObject>
#include <QThreadPool>

#include <functional>

namespace Terminal {

/// Has done by a thread of its own what takes longer than a window may stand still, such as to read ten
/// thousand rows: one piece after the other.
class AsideWork : public QObject
{
    Q_OBJECT

public:
    /// Done in the thread of the window, after the work.
    using Then = std::function<void()>;
    /// Done in another thread; it uses nothing that the window's thread changes.
    using Work = std::function<Then()>;

    explicit AsideWork(QObject *parent = nullptr);
    ~AsideWork() override;

    /// Does `work`, which goes over so many bytes, and what it returns, in the order of the calls: at once
    /// where it is little and need not wait for another piece, later otherwise, and never when this object
    /// has gone. False, and nothing is done, while too much waits already.
    bool run(qint64 bytes, const Work &work);

private:
    QThreadPool m_thread;
    int m_underWay = 0;        ///< pieces that wait or are being done
    qint64 m_bytesWaiting = 0; ///< of these
};

} // namespace Terminal
