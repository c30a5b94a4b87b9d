#include "terminal/options/AccountPlaces.h"

#include "terminal/data/SecurityList.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace Terminal {

namespace {

QString inOwnFolder(const char *name)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir(folder).filePath(QLatin1String(name));
}

bool isSameFolder(const QString &a, const QString &b)
{
    return !a.isEmpty() && !b.isEmpty() &&
           QFileInfo(a).canonicalFilePath() == QFileInfo(b).canonicalFilePath();
}

} // namespace

AccountPlaces ownPlaces()
{
    return {inOwnFolder("data"), inOwnFolder("account.db")};
}

AccountPlaces examplePlaces(const QString &sampleFolder)
{
    return {sampleFolder, inOwnFolder("example.db")};
}

AccountPlaces practicePlaces(const QString &sampleFolder)
{
    return {sampleFolder, inOwnFolder("practice.db")};
}

bool areUsable(const AccountPlaces &places)
{
    const bool isInDatabase = places.ledger.contains(QLatin1String("://"));
    const bool hasLedger = places.ledger.isEmpty() || isInDatabase || QFileInfo::exists(places.ledger);
    const auto securities =
        readSecurities(QDir(places.dataFolder).filePath(QStringLiteral("securities.csv")));
    return hasLedger && !places.dataFolder.isEmpty() && securities && !securities.value().empty();
}

AccountPlaces placesForIntake(const AccountPlaces &shown, const QString &sampleFolder)
{
    AccountPlaces places = shown;
    if (shown.dataFolder.isEmpty() || isSameFolder(shown.dataFolder, sampleFolder)) {
        places.dataFolder = ownPlaces().dataFolder;
    }
    const bool isPlay = shown.ledger == examplePlaces(sampleFolder).ledger ||
                        shown.ledger == practicePlaces(sampleFolder).ledger;
    if (shown.ledger.isEmpty() || isPlay) {
        places.ledger = ownPlaces().ledger;
    }
    return places;
}

} // namespace Terminal
