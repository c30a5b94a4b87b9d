#pragma once

#include <QString>

#include <utility>

namespace Terminal {

/// What was read, or why it could not be: exactly one of both.
template <typename Value>
class Loaded
{
public:
    // NOLINTNEXTLINE(google-explicit-constructor): a value is a result
    Loaded(Value value) : m_value(std::move(value)) {}
    static Loaded failure(const QString &reason)
    {
        Loaded loaded{Value{}};
        loaded.m_error = reason;
        return loaded;
    }

    explicit operator bool() const { return m_error.isEmpty(); }
    const Value &value() const { return m_value; }
    /// A sentence for the user that names the file and, where there is one, the line.
    const QString &error() const { return m_error; }

private:
    Value m_value;
    QString m_error;
};

} // namespace Terminal
