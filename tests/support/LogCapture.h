#pragma once

#include <QString>
#include <QtGlobal>

#include <vector>

/// Collects Qt's log while it lives, with debug lines on or off.
class LogCapture
{
public:
    enum class Debug { Off, On };

    explicit LogCapture(Debug debug = Debug::On);
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    struct Line
    {
        QtMsgType type;
        QString text;
        QString category;
    };

    /// The lines of one level in the default category, which terminals show; oldest first.
    std::vector<QString> lines(QtMsgType type) const;

    /// Every line of every level and category: to see that nothing is said.
    const std::vector<Line> &all() const { return m_lines; }

private:
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static LogCapture *s_active;
    std::vector<Line> m_lines;
    QtMessageHandler m_previous;
};
