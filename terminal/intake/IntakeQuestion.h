#pragma once

#include "terminal/intake/IntakeFile.h"

#include <QString>

#include <vector>

namespace Terminal {

/// Something that a file does not say by itself, and what the user may answer. The command line has an
/// option of the same name for it.
struct IntakeQuestion
{
    enum class Form {
        Word,    ///< a line of text
        Named,   ///< likewise; the name of the file may tell it
        Choice,  ///< one of `choices`, or of the report's accounts
        Switch,  ///< yes or no
        Profile, ///< a text of many lines, which begins as the report's profile
    };

    FileKind kind;
    QString name;
    Form form;
    QString label;
    QString hint;                                     ///< an example, or what it means
    std::vector<std::pair<QString, QString>> choices; ///< answer and what the user reads
};

/// All questions, in the order in which they are shown; the texts are in the language of the moment.
std::vector<IntakeQuestion> intakeQuestions();

/// A reason that speaks of options of the command line, such as "--code", with the labels of the questions in
/// their places.
QString inWordsOfTheWindow(const QString &reason, FileKind kind);

/// An answer as it is handed on: a day may be typed in any form that files of bars may have, as 2026-03-27.
QString takenAnswer(const QString &question, const QString &typed);

/// What the name of the file answers, as a proposal; empty where it does not.
QString answerInName(const QString &question, const QString &path);

} // namespace Terminal
