#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace Terminal {

/// What is known of a file that is to be taken in: what was understood of it before, or what became of it.
/// All texts are for the user; those of the file are as it has them.
struct FileReport
{
    QString heading;      ///< of bars: "600519.SH 贵州茅台"
    QStringList facts;    ///< counts, days, what will change
    QStringList refusals; ///< why nothing of it can be taken in, with the place in the file and what to do
    QStringList warnings;

    QStringList columns;           ///< of the first rows
    std::vector<QStringList> rows; ///< as they are understood
    QVector<int> amountColumns;    ///< those that tell the account's quantities and money

    QStringList asks;     ///< names of the questions that it leaves open, see intakeQuestions()
    QStringList accounts; ///< that the file has entries of, to choose from
    QString profile;      ///< what its own columns and words could mean, to fill in

    QStringList codes;             ///< securities that it tells of
    QHash<QString, QString> names; ///< of these, where it has them
    bool isUnknown = false;        ///< nothing of it is understood: it may be a file of another kind
    qint64 number = 0;             ///< of the import, by which it is taken back; 0: nothing was changed
};

} // namespace Terminal
