#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

/// A place where nobody has started the program before: settings, data and sockets of its own.
struct FreshPlace
{
    FreshPlace()
    {
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home.path());
    }

    /// Its words are nobody's.
    void startIn(QProcess *process, const QString &program, const QStringList &words) const
    {
        process->setProcessEnvironment(environment);
        process->setStandardOutputFile(QProcess::nullDevice());
        process->setStandardErrorFile(QProcess::nullDevice());
        process->start(program, words);
    }

    QTemporaryDir runtime;
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

inline double medianOf(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}
