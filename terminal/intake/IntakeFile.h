#pragma once

#include "terminal/intake/FileReport.h"

#include <QHash>
#include <QString>

namespace Terminal {

enum class FileKind { Statement, BarTable };

/// What a file holds, by its contents: bars where a line names the columns of prices, else a statement, which
/// the trading module knows better. Reads the beginning of the file alone.
FileKind kindOfFile(const QString &path);

/// A file on its way in.
struct IntakeFile
{
    enum class State {
        Waiting, ///< nobody has looked at it yet, or not with the latest answers
        Looking, ///< it is being read
        Ready,   ///< it can be taken in
        Refused, ///< it cannot; the report says why
        LeftOut, ///< the user does not want it
        Writing, ///< it is being taken in
        TakenIn,
        TakenBack,
        Failed,  ///< it could be read, but not be taken in; nothing of it was
        Stuck,   ///< it was taken in, and could not be taken back
        Unknown, ///< nobody could be asked whether it was taken in; the report says where to look
    };

    QString path;
    FileKind kind = FileKind::Statement;
    bool isKindSaid = false;         ///< by the user, and not by the contents
    QHash<QString, QString> answers; ///< by the names of the questions
    State state = State::Waiting;
    FileReport report;
    QString mark; ///< of the statement's last import, by which the ledger knows it
};

/// What the list of files says of a state.
QString stateText(IntakeFile::State state);

} // namespace Terminal
