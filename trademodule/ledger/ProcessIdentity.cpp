#include "trademodule/ledger/ProcessIdentity.h"

#include <QCoreApplication>
#include <QFile>
#include <QSysInfo>

#include <cerrno>
#include <csignal>

#ifdef Q_OS_MACOS
#    include <sys/sysctl.h>
#endif

namespace TradeModule {

namespace {

#ifdef Q_OS_MACOS

/// The second and microsecond at which it began.
QString startOf(qint64 process)
{
    int name[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, static_cast<int>(process)};
    kinfo_proc info{};
    std::size_t size = sizeof info;
    if (::sysctl(name, 4, &info, &size, nullptr, 0) != 0 || size == 0) {
        return {};
    }
    const timeval start = info.kp_proc.p_starttime;
    return QStringLiteral("%1.%2").arg(start.tv_sec).arg(start.tv_usec);
}

#else

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

/// The boot of the machine, and the clock ticks from it to the process's start.
QString startOf(qint64 process)
{
    constexpr int startField = 19; // after the program's name, which may hold anything
    const QByteArray status = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    if (fields.size() <= startField) {
        return {};
    }
    const QByteArray boot = contentOf(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return QString::fromLatin1(boot + '/' + fields[startField]);
}

#endif

} // namespace

ProcessIdentity ProcessIdentity::own()
{
    return of(QCoreApplication::applicationPid());
}

ProcessIdentity ProcessIdentity::of(qint64 number)
{
    return {QSysInfo::machineHostName(), number, startOf(number)};
}

bool ProcessIdentity::isRunningHere() const
{
    return number > 0 && !start.isEmpty() && host == QSysInfo::machineHostName() && startOf(number) == start;
}

/// A process that is stopped hears nothing but this signal.
bool ProcessIdentity::end() const
{
    return isRunningHere() && ::kill(static_cast<pid_t>(number), SIGKILL) == 0;
}

bool isProcessHere(qint64 number)
{
    return ::kill(static_cast<pid_t>(number), 0) == 0 || errno == EPERM;
}

} // namespace TradeModule
