#include "endpoint/OpenRequest_p.h"

#include <utility>

namespace LocalCommunication {

OpenRequest::OpenRequest(QByteArray correlation, std::chrono::nanoseconds timeout)
    : m_correlation(std::move(correlation)),
      m_deadline(timeout, Qt::PreciseTimer)
{
}

void OpenRequest::take(const BusMessage &message)
{
    if (!m_answer && message.correlation == m_correlation) {
        m_answer = message.payload;
    }
}

std::chrono::milliseconds OpenRequest::remainingTime() const
{
    return std::chrono::ceil<std::chrono::milliseconds>(m_deadline.remainingTimeAsDuration());
}

} // namespace LocalCommunication
