#include "terminal/intake/JsonChild.h"

#include <QJsonDocument>

#include <chrono>

namespace Terminal {

JsonChild::JsonChild(QObject *parent) : QObject(parent)
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &JsonChild::takeLines);
    connect(&m_process, &QProcess::started, this, [this] { m_hasStarted = true; });
    connect(&m_process, &QProcess::errorOccurred, this, &JsonChild::takeError);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                takeLines();
                Q_EMIT ended(status == QProcess::NormalExit ? code : -1,
                             QString::fromUtf8(m_process.readAllStandardError()).trimmed());
            });
}

JsonChild::~JsonChild()
{
    constexpr std::chrono::milliseconds patience(1500); // a terminal that is told to end has two seconds
    m_process.disconnect(this);
    if (isRunning()) {
        m_process.terminate();
        if (!m_process.waitForFinished(static_cast<int>(patience.count()))) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
}

void JsonChild::start(const QString &program, const QStringList &arguments,
                      const QProcessEnvironment &environment)
{
    m_rest.clear();
    m_hasStarted = false;
    m_process.setProcessEnvironment(environment);
    m_process.start(program, arguments);
}

void JsonChild::say(const QJsonObject &object)
{
    m_process.write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

void JsonChild::stop()
{
    m_process.terminate();
}

void JsonChild::takeLines()
{
    m_rest += m_process.readAllStandardOutput();
    const QByteArray lines = m_rest.left(m_rest.lastIndexOf('\n') + 1);
    m_rest.remove(0, lines.size());
    for (const QByteArray &line : lines.split('\n')) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        if (!object.isEmpty()) {
            Q_EMIT told(object);
        }
    }
}

void JsonChild::takeError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart) {
        Q_EMIT ended(-1, tr("%1 cannot be started: %2").arg(m_process.program(), m_process.errorString()));
    }
}

} // namespace Terminal
