#pragma once

#include "terminal/intake/IntakeFile.h"
#include "terminal/intake/IntakeQuestion.h"

#include <QScrollArea>

#include <optional>

class QFormLayout;
class QVBoxLayout;

namespace Terminal {

/// One file of an intake, as the user sees it before and after it is taken in: what it was recognised as,
/// counts, what is wrong and what to do about it, what it asks, and its first rows. All of it scrolls.
class FileSheet : public QScrollArea
{
    Q_OBJECT

public:
    explicit FileSheet(QWidget *parent = nullptr);

    /// `isOpen`: the user may still change what is asked. Keeps the keyboard in the field that has it.
    void showFile(const IntakeFile &file, bool isOpen, bool hidesAmounts);

Q_SIGNALS:
    /// The user says what the file is; nothing: it is left out.
    void kindChosen(std::optional<FileKind> kind);
    void answered(const QString &question, const QString &answer);
    /// The same for all files that ask it.
    void answeredForAll(const QString &question, const QString &answer);
    /// Each file's own name answers what it can.
    void answeredFromNames();

private:
    void addKind(const IntakeFile &file, bool isOpen);
    void addLines(const QStringList &lines, const char *name, const QString &mark);
    void addQuestions(const IntakeFile &file, bool isOpen);
    QWidget *fieldOf(const IntakeQuestion &question, const IntakeFile &file);
    QWidget *wordField(const IntakeQuestion &question, const IntakeFile &file);
    QWidget *choiceField(const IntakeQuestion &question, const IntakeFile &file);
    QWidget *switchField(const IntakeQuestion &question, const IntakeFile &file);
    QWidget *profileField(const IntakeQuestion &question, const IntakeFile &file);
    void addRows(const FileReport &report, bool hidesAmounts);

    QVBoxLayout *m_column = nullptr;
    QString m_inFocus; ///< name of the field that had the keyboard
};

} // namespace Terminal
