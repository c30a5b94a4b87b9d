#pragma once

#include "terminal/services/ChildProcess.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace Terminal {

/// A program that answers in objects of JSON, one a line of its standard output. It ends with this object.
class JsonChild : public QObject
{
    Q_OBJECT

public:
    explicit JsonChild(QObject *parent);
    ~JsonChild() override;

    /// Requires that none runs.
    void start(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment);
    /// False of a last start() that has started nothing.
    bool hasStarted() const { return m_hasStarted; }
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    /// Writes an object, a line, to its standard input.
    void say(const QJsonObject &object);

    /// Ends it; ended() is heard when it is gone.
    void stop();

Q_SIGNALS:
    void told(const QJsonObject &object);

    /// It is gone, or could not be started. `lastWords` is what it wrote to standard error.
    void ended(int exitCode, const QString &lastWords);

private:
    void takeLines();
    void takeError(QProcess::ProcessError error);

    ChildProcess m_process;
    QByteArray m_rest; // of a line that has not come whole
    bool m_hasStarted = false;
};

} // namespace Terminal
