#pragma once

#include <QMutex>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <vector>

/// Collects Qt's log, of every thread, while it lives. One at a time.
class LogCapture
{
public:
    enum class Debug { Off, On };

    /// `debug`: whether debug lines of the default category are written at all.
    explicit LogCapture(Debug debug = Debug::On);
    ~LogCapture();
    Q_DISABLE_COPY_MOVE(LogCapture)

    struct Line
    {
        QtMsgType type;
        QString text;
        QString category;
    };

    /// Every line of every level and category, oldest first.
    std::vector<Line> all() const;

    /// The lines of one level in the default category, which terminals show; oldest first.
    std::vector<QString> lines(QtMsgType type) const;

    /// The texts of every level and category, oldest first.
    QStringList lines() const;
    QString text() const { return lines().join(QLatin1Char('\n')); }
    bool has(const QString &part) const { return text().contains(part); }

private:
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static LogCapture *active;
    mutable QMutex m_mutex;
    std::vector<Line> m_lines;
    QtMessageHandler m_previous;
};
