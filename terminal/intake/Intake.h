#pragma once

#include "terminal/intake/IntakeFile.h"
#include "terminal/intake/IntakePlan.h"
#include "terminal/intake/JsonChild.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

class QDirIterator;
class QTemporaryDir;

namespace Terminal {

/// Statements and bars on their way in. Each file is looked at by the program that can take it in, a child of
/// this one, and nothing is written before import().
///
/// Use: add() files; changed() tells of each step; answer what they ask; import(), perhaps cancel() or, when
/// it is done, undo().
class Intake : public QObject
{
    Q_OBJECT

public:
    enum class Stage {
        Gathering, ///< folders are being listed
        Looking,   ///< files are being read
        Asking,    ///< it is for the user to answer, or to say import
        Writing,
        Undoing,
        Done, ///< of each file stands there what became of it
    };

    explicit Intake(IntakePlan plan, QObject *parent = nullptr);
    ~Intake() override;

    /// Files and folders of them; of a folder what looks like bars. Files that are there already are not
    /// added.
    void add(const QStringList &paths);

    const std::vector<IntakeFile> &files() const { return m_files; }
    /// How many files of folders were passed over since they are no bars.
    int skippedFiles() const { return m_skipped; }
    /// How many cannot be taken in, whatever is answered.
    int unreadableFiles() const;
    const IntakePlan &plan() const { return m_plan; }
    Stage stage() const { return m_stage; }

    /// What the file is, as the user says; it is looked at anew. Like the others below: in stage Asking only.
    void setKind(int file, FileKind kind);
    void leaveOut(int file);
    void leaveOutUnreadable();
    /// Answers a question; empty: it is open again. It is looked at with lookAgain().
    void answer(int file, const QString &question, const QString &answer);
    void lookAgain();
    /// Answers it for all files that ask it, and looks at them again.
    void answerAll(const QString &question, const QString &answer);
    /// Answers all that files ask and their own names tell, and looks at them again.
    void answerFromNames();

    /// True when all files that are not left out can be taken in, and there is one.
    bool mayImport() const;
    void import();

    /// Ends what is going on. What this import() has written is taken back, also what was written at the very
    /// end: the ledger is asked. Comes back to stage Asking, or to Done where something could not be taken
    /// back.
    void cancel();

    /// True when something was written that can be taken back.
    bool mayUndo() const;
    void undo();

Q_SIGNALS:
    /// Files or stage are others now.
    void changed();

    /// How far it is, `of` being 0 while that is not known; `step` is for the user.
    void progressed(const QString &step, int done, int of);

    /// Something was taken in, or back; all of it has been written.
    void written();

private:
    /// What the trading module is asked to do with a statement.
    enum class Errand {
        Look,
        Import,
        Undo,
        Settle, ///< to say whether an import or its undoing was done, whose module ended without a word
    };

    void gather();
    void addFile(const QString &path, FileKind kind);
    void enter(Stage stage);
    void lookNext();
    void importNext();
    void undoNext();
    void finishWriting();
    void removeEmptyLedger();
    bool isAnyLeft() const;
    void runStatement(int file, Errand errand);
    void planBars();
    void startBars();
    QJsonObject namesInStatements() const;
    QStringList arguments(const IntakeFile &file, Errand errand);
    QStringList importArguments(const IntakeFile &file);
    QString profileFile(const QString &text);
    void takeStatementWord(const QJsonObject &word);
    void takeStatementEnd(int exitCode, const QString &lastWords);
    void takeLook(IntakeFile *file);
    void takeImport(IntakeFile *file);
    void takeUndo(IntakeFile *file);
    void takeSettled(IntakeFile *file, const QString &reason);
    static QString reasonOfEnd(int exitCode, const QString &lastWords);
    void takeBarsWord(const QJsonObject &word);
    void takeBarsEnd(int exitCode, const QString &lastWords);
    void takePlannedFile(const QJsonObject &planned);
    void takePlannedBars();
    void takeWrittenBars(IntakeFile::State state, const QString &problem = {});
    void goOn();
    void stopLooking();
    int find(FileKind kind, IntakeFile::State state) const;
    void setBars(IntakeFile::State from, IntakeFile::State to);

    IntakePlan m_plan;
    Stage m_stage = Stage::Asking;
    std::vector<IntakeFile> m_files;
    QSet<QString> m_paths;        ///< of the files
    QHash<QString, int> m_byPath; ///< places of the files in the list, by their paths as they were given
    QStringList m_pending;        ///< files and folders that nobody has looked into yet
    std::unique_ptr<QDirIterator> m_listing;
    QTimer m_gathering;
    QTimer m_patience; ///< with a child that has not heard yet that it is cancelled
    int m_skipped = 0;
    std::unique_ptr<QTemporaryDir> m_scratch; ///< for what children read from files
    JsonChild m_module{nullptr};
    JsonChild m_bars{nullptr};
    int m_current = -1; ///< the statement that the module works on
    Errand m_errand = Errand::Look;
    Errand m_unanswered = Errand::Import; ///< which errand is settled
    QString m_lastWords;                  ///< of the module that ended without an answer
    QJsonObject m_answer;                 ///< its last word
    bool m_isCancelled = false;
    bool m_makesLedger = false; ///< there was none before import()
    /// What was planned of bars is not what is to be written any more: files were left out, or there are new
    /// trades to compare them with.
    bool m_isPlanStale = false;
};

} // namespace Terminal
