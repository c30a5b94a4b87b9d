#include "endpoint/SocketWatch_p.h"

namespace LocalCommunication {

SocketWatch::SocketWatch(int descriptor, QObject *parent)
    : QObject(parent),
      m_reading(descriptor, QSocketNotifier::Read, this)
{
    connect(&m_reading, &QSocketNotifier::activated, this, &SocketWatch::readable);
}

void SocketWatch::setWatchesWriting(bool wanted)
{
    if (wanted && !m_writing) {
        m_writing = new QSocketNotifier(m_reading.socket(), QSocketNotifier::Write, this);
        connect(m_writing, &QSocketNotifier::activated, this, &SocketWatch::writable);
    } else if (m_writing) {
        m_writing->setEnabled(wanted);
    }
}

} // namespace LocalCommunication
