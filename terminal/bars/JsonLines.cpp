#include "terminal/bars/JsonLines.h"

#include <QJsonDocument>

#include <array>
#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <unistd.h>

namespace Terminal {

/// Without the buffer of the standard library, which hides what is there from poll().
bool JsonLines::readMore()
{
    std::array<char, 65536> piece{};
    ssize_t count = 0;
    do {
        count = ::read(STDIN_FILENO, piece.data(), piece.size());
    } while (count < 0 && errno == EINTR);
    if (count <= 0) {
        m_isAtEnd = true;
        return false;
    }
    m_read.append(piece.data(), static_cast<int>(count));
    return true;
}

std::optional<QJsonObject> JsonLines::next()
{
    while (!m_read.contains('\n')) {
        if (m_isAtEnd || !readMore()) {
            return std::nullopt;
        }
    }
    const int end = m_read.indexOf('\n');
    const QJsonObject object = QJsonDocument::fromJson(m_read.left(end)).object();
    m_read.remove(0, end + 1);
    return object;
}

bool JsonLines::hasNext()
{
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!m_isAtEnd && !m_read.contains('\n') && ::poll(&input, 1, 0) > 0) {
        readMore();
    }
    return m_isAtEnd || m_read.contains('\n');
}

void JsonLines::write(const QJsonObject &object)
{
    const QByteArray line = QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

} // namespace Terminal
