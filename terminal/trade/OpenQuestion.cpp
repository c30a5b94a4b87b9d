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
        send();
    } else {
        m_asksAgain = true;
    }
}

void OpenQuestion::askAnew()
{
    forget();
    send();
}

void OpenQuestion::forget()
{
    m_timeout.stop();
    m_openId.clear();
    m_givenUp.clear();
    m_asksAgain = false;
    m_isAnswered = false;
}

void OpenQuestion::send()
{
    m_asksAgain = false;
    m_isAnswered = false;
    m_hasHeard = false;
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
        return takeLate(id);
    }
    m_timeout.stop();
    m_openId.clear();
    m_givenUp.clear();
    m_isAnswered = true;
    if (m_asksAgain) {
        send();
    }
    return true;
}

/// What was asked before it counts as answered, too.
bool OpenQuestion::takeLate(const QString &id)
{
    const int place = m_givenUp.indexOf(id);
    if (place < 0) {
        return false;
    }
    m_givenUp.erase(m_givenUp.begin(), m_givenUp.begin() + place + 1);
    m_hasHeard = true;
    m_isAnswered = m_openId.isEmpty() && m_givenUp.isEmpty();
    return true;
}

void OpenQuestion::giveUp()
{
    constexpr int mostGivenUp = 20;
    m_timeout.stop();
    if (!m_openId.isEmpty()) {
        m_givenUp.append(m_openId);
        if (m_givenUp.size() > mostGivenUp) {
            m_givenUp.removeFirst();
        }
    }
    m_openId.clear();
    m_asksAgain = false;
    if (!m_hasHeard) {
        Q_EMIT unanswered();
    }
}

} // namespace Terminal
