#include "terminal/services/BusInstance.h"

#include "trading/LedgerAddress.h"

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>
#include <QUrl>

namespace Terminal {

using Trading::isDatabaseAddress;

namespace {

QString placeOfDatabase(const QUrl &url)
{
    constexpr int usualPort = 5432;
    return QStringLiteral("postgresql://%1:%2%3").arg(url.host()).arg(url.port(usualPort)).arg(url.path());
}

/// SQLite makes a file that is not there where a link to it points.
QString placeOfFile(const QFileInfo &file)
{
    if (file.exists()) {
        return file.canonicalFilePath();
    }
    const QFileInfo target(file.isSymLink() ? file.symLinkTarget() : file.absoluteFilePath());
    const QString folder = target.dir().canonicalPath();
    return folder.isEmpty() ? QDir::cleanPath(target.absoluteFilePath())
                            : QDir(folder).filePath(target.fileName());
}

} // namespace

QString ledgerPlace(const QString &ledger)
{
    return isDatabaseAddress(ledger) ? placeOfDatabase(QUrl(ledger)) : placeOfFile(QFileInfo(ledger));
}

bool isMissingFile(const QString &ledger)
{
    return !ledger.isEmpty() && !isDatabaseAddress(ledger) && !QFileInfo::exists(ledger);
}

bool servesAnother(const Trading::TradePresence &presence, const QString &ledger)
{
    if (ledger.isEmpty() || presence.ledger.isEmpty()) {
        return false;
    }
    const bool isElsewhere = !presence.host.isEmpty() && presence.host != QSysInfo::machineHostName();
    return ledgerPlace(presence.ledger) != ledgerPlace(ledger) || (isElsewhere && !isDatabaseAddress(ledger));
}

QString ledgerName(const QString &ledger)
{
    if (!isDatabaseAddress(ledger)) {
        return QFileInfo(ledger).fileName();
    }
    const QUrl url(ledger);
    return QStringLiteral("%1@%2").arg(url.path().mid(1), url.host());
}

void enterBusInstance(const QString &ledger)
{
    if (!ledger.isEmpty() && busInstance().isEmpty()) {
        qputenv(busInstanceVariable, ledgerPlace(ledger).toUtf8());
    }
}

BusMembership::BusMembership(const QString &ledger, Choice choice)
    : m_before(busInstance()),
      m_isOurs(m_before.isEmpty() || choice == Choice::OfAccount)
{
    if (m_isOurs) {
        qunsetenv(busInstanceVariable);
    }
    enterBusInstance(ledger);
}

BusMembership::~BusMembership()
{
    if (m_isOurs) {
        qunsetenv(busInstanceVariable);
    }
    if (!m_before.isEmpty()) {
        qputenv(busInstanceVariable, m_before.toUtf8());
    }
}

QString busInstance()
{
    return qEnvironmentVariable(busInstanceVariable);
}

} // namespace Terminal
