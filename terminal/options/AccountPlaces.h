#pragma once

#include <QString>

namespace Terminal {

/// Where an account lies that a window shows: the folder of its bars, and its ledger.
struct AccountPlaces
{
    QString dataFolder;
    QString ledger; ///< as --ledger names it; empty: the window has none

    bool operator==(const AccountPlaces &other) const
    {
        return dataFolder == other.dataFolder && ledger == other.ledger;
    }
    bool operator!=(const AccountPlaces &other) const { return !(*this == other); }
};

/// The user's own, in the folder that the system has for data of this program.
AccountPlaces ownPlaces();

/// The account that the sample data come with, and one to practise on with them; their ledgers are beside the
/// user's own.
AccountPlaces examplePlaces(const QString &sampleFolder);
AccountPlaces practicePlaces(const QString &sampleFolder);

/// True when a window can open there: the folder has a list of securities, and the ledger, if it is a file,
/// is there.
bool areUsable(const AccountPlaces &places);

/// Where files go that the user brings into a window which shows `shown`: into the same place, but the
/// sample data and what is played with stay as they are, and the user's own take their place.
AccountPlaces placesForIntake(const AccountPlaces &shown, const QString &sampleFolder);

} // namespace Terminal
