#include "terminal/trade/OpenQuestion.h"

#include <utility>

namespace Terminal {

OpenQuestion::OpenQuestion(Send send) : m_send(std::move(send))
{
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, &OpenQuestion::giveUp);
}

void OpenQuestion::ask()
{
    if (m_openId.isEmpty()) {
        askAnew();
    } else {
        m_asksAgain = true;
    }
}

void OpenQuestion::askAnew()
{
    m_asksAgain = false;
    m_isAnswered = false;
    m_openId = m_send();
    if (m_openId.isEmpty()) {
        giveUp();
    } else {
        m_timeout.start();
    }
}

bool OpenQuestion::close(const QString &id)
{
    if (m_openId.isEmpty() || id != m_openId) {
        return false;
    }
    m_timeout.stop();
    m_openId.clear();
    m_isAnswered = true;
    if (m_asksAgain) {
        askAnew();
    }
    return true;
}

void OpenQuestion::giveUp()
{
    m_timeout.stop();
    m_openId.clear();
    m_asksAgain = false;
    Q_EMIT unanswered();
}

} // namespace Terminal
