#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace Terminal {

/// Objects of JSON, one a line, from standard input, and such objects to standard output.
class JsonLines
{
public:
    /// Waits for the next object; nothing at the end. What is no object counts as an empty one.
    std::optional<QJsonObject> next();

    /// True when an object, or the end, is there to be taken.
    bool hasNext();

    static void write(const QJsonObject &object);

private:
    bool readMore();

    QByteArray m_read;
    bool m_isAtEnd = false;
};

} // namespace Terminal
