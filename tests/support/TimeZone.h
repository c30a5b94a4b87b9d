#pragma once

#include <QByteArray>

#include <ctime>

/// Sets the clock of the program to another time zone, as the variable TZ names it, while it lives.
class TimeZone
{
public:
    explicit TimeZone(const char *name) { set(name); }
    ~TimeZone()
    {
        m_before.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_before);
        tzset();
    }
    TimeZone(const TimeZone &) = delete;
    TimeZone &operator=(const TimeZone &) = delete;

    void set(const char *name)
    {
        qputenv("TZ", name);
        tzset();
    }

private:
    const QByteArray m_before = qgetenv("TZ");
};

/// They are 26 hours apart: never the same day.
constexpr const char *westernmostZone = "WST12";
constexpr const char *easternmostZone = "EST-14";
