#include "endpoint/HostLookup_p.h"

#include <QHostAddress>

#include <mutex>
#include <thread>

namespace LocalCommunication {

/// What the thread that waits for the name server shares with who has asked.
struct HostLookup::Question
{
    std::mutex mutex;
    HostLookup *asker = nullptr; ///< who is to hear of it; nobody any more after cancel()
};

HostLookup::HostLookup(QObject *parent, std::chrono::milliseconds patience)
    : QObject(parent),
      m_patience(this)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &HostLookup::giveUp);
}

/// Not by the threads that Qt keeps for this: the end of the program waits for them.
void HostLookup::start(const QString &host, Gives gives)
{
    cancel();
    m_host = host;
    m_gives = gives;
    m_question = std::make_shared<Question>();
    m_question->asker = this;
    m_patience.start();
    std::thread([host, question = m_question] {
        const QHostInfo result = QHostInfo::fromName(host);
        const std::lock_guard<std::mutex> lock(question->mutex);
        if (HostLookup *const asker = question->asker) {
            QMetaObject::invokeMethod(
                asker,
                [asker, question, result] {
                    if (asker->m_question == question) { // else it was cancelled meanwhile
                        asker->handleResult(result);
                    }
                },
                Qt::QueuedConnection);
        }
    }).detach();
}

void HostLookup::cancel()
{
    m_patience.stop();
    if (m_question) {
        const std::lock_guard<std::mutex> lock(m_question->mutex);
        m_question->asker = nullptr;
    }
    m_question.reset();
}

void HostLookup::giveUp()
{
    cancel();
    Q_EMIT failed(QStringLiteral("the name server does not answer"));
}

void HostLookup::handleResult(const QHostInfo &result)
{
    cancel();
    const QList<QHostAddress> addresses = result.addresses();
    if (result.error() != QHostInfo::NoError || addresses.isEmpty()) {
        Q_EMIT failed(result.errorString());
    } else if (m_gives == Gives::Name) {
        Q_EMIT found(m_host);
    } else {
        Q_EMIT found(addresses[m_found++ % addresses.size()].toString());
    }
}

} // namespace LocalCommunication
