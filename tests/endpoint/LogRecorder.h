#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QString>
#include <QStringList>

/// Catches what is written to the log while it lives.
class LogRecorder
{
public:
    LogRecorder()
    {
        current() = this;
        m_previous = qInstallMessageHandler(&LogRecorder::handle);
    }
    ~LogRecorder()
    {
        qInstallMessageHandler(m_previous);
        current() = nullptr;
    }
    Q_DISABLE_COPY_MOVE(LogRecorder)

    QStringList lines() const
    {
        const QMutexLocker guard(&m_mutex);
        return m_lines;
    }
    QString text() const { return lines().join(QLatin1Char('\n')); }
    bool has(const QString &part) const { return text().contains(part); }

private:
    static void handle(QtMsgType, const QMessageLogContext &, const QString &line)
    {
        const QMutexLocker guard(&current()->m_mutex);
        current()->m_lines.append(line);
    }
    static LogRecorder *&current()
    {
        static LogRecorder *recorder = nullptr;
        return recorder;
    }

    mutable QMutex m_mutex;
    QStringList m_lines;
    QtMessageHandler m_previous = nullptr;
};
