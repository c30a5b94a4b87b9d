#include "trademodule/cli/ServiceLog.h"

#include "trademodule/Error.h"
#include "trademodule/ProgramLanguage.h"
#include "trademodule/cli/Console.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <chrono>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h> // descriptors: POSIX, the same on Linux and macOS

namespace TradeModule {

namespace {

constexpr std::chrono::seconds betweenLooks(2);

constexpr mode_t ownersOnly = 0600; // refusals name securities and prices of the account

/// Of lines that libraries write. The program's clock is the exchange's, eight hours ahead of UTC.
constexpr char patternOfLines[] = "%{time yyyy-MM-ddThh:mm:ss.zzz}+08:00 %{appname}: %{message}";

QString timeNow()
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

} // namespace

ServiceLog::ServiceLog(const QString &file)
    : m_path(file.isEmpty() ? QByteArray() : QFile::encodeName(QFileInfo(file).absoluteFilePath()))
{
    if (!isFile()) {
        return;
    }
    m_standardError = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (!open()) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        ::close(m_standardError);
        throw Error(translated("the log %1 cannot be opened: %2").arg(file, reason));
    }
    qSetMessagePattern(QLatin1String(patternOfLines));
    QObject::connect(&m_looking, &QTimer::timeout, [this] { follow(); });
    m_looking.start(betweenLooks);
}

ServiceLog::~ServiceLog()
{
    if (isFile()) {
        dup2(m_standardError, STDERR_FILENO);
        ::close(m_standardError);
        qSetMessagePattern(QStringLiteral("%{if-category}%{category}: %{endif}%{message}"));
    }
}

void ServiceLog::tell(const QString &text)
{
    if (!isFile()) {
        printError(text);
        return;
    }
    follow();
    printLog(timeNow(), text);
}

/// Another file, or none, is where this one was.
bool ServiceLog::isMoved() const
{
    struct stat named
    {
    };
    struct stat opened
    {
    };
    return stat(m_path.constData(), &named) != 0 || fstat(STDERR_FILENO, &opened) != 0 ||
           named.st_ino != opened.st_ino || named.st_dev != opened.st_dev;
}

/// Where it cannot be opened, what was opened before goes on.
bool ServiceLog::open()
{
    const int file = ::open(m_path.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, ownersOnly);
    if (file < 0) {
        return false;
    }
    const bool isDone = dup2(file, STDERR_FILENO) >= 0;
    ::close(file);
    return isDone;
}

void ServiceLog::follow()
{
    if (isMoved()) {
        open();
    }
}

} // namespace TradeModule
