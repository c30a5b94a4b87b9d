#include "terminal/intake/Intake.h"

#include "terminal/intake/BarsReport.h"
#include "terminal/intake/IntakeQuestion.h"
#include "terminal/intake/StatementReport.h"
#include "terminal/services/BusInstance.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QUuid>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Terminal {

namespace {

using State = IntakeFile::State;

/// How long the event loop may be kept from its other work.
constexpr std::chrono::milliseconds longestTurn{20};

/// How long the reader of bars may take to hear that it is cancelled.
constexpr std::chrono::milliseconds patience{150};

/// A report of something that could not even be asked.
FileReport failureReport(const QString &reason)
{
    FileReport report;
    report.refusals = QStringList(reason);
    report.isUnknown = true;
    return report;
}

QJsonObject requestFor(const IntakeFile &file)
{
    QJsonObject request{{QStringLiteral("file"), file.path}};
    for (auto answer = file.answers.begin(); answer != file.answers.end(); ++answer) {
        const bool isSwitch = answer.key() == QLatin1String("replace");
        request[answer.key()] = isSwitch ? QJsonValue(!answer.value().isEmpty()) : QJsonValue(answer.value());
    }
    return request;
}

/// True of what an import has changed, by which it can be taken back.
bool hasChanged(const IntakeFile &file)
{
    return file.kind == FileKind::BarTable || file.report.number > 0;
}

bool isTakenIn(const IntakeFile &file)
{
    return file.state == State::TakenIn && hasChanged(file);
}

bool isStuck(const IntakeFile &file)
{
    return file.state == State::Stuck && hasChanged(file);
}

/// Nothing was done by a module that could not be started or did not understand its command line.
bool hasBegun(const JsonChild &module, int exitCode)
{
    constexpr int misunderstood = 2;
    return module.hasStarted() && exitCode != misunderstood;
}

/// A profile to fill in may be asked of what is no statement at all.
bool isUnreadable(const IntakeFile &file)
{
    return file.state == State::Refused && (file.report.isUnknown || file.report.asks.isEmpty());
}

bool isAsked(const IntakeFile &file)
{
    return file.state != State::LeftOut && file.state != State::TakenBack;
}

} // namespace

Intake::Intake(IntakePlan plan, QObject *parent) : QObject(parent), m_plan(std::move(plan))
{
    m_gathering.setInterval(0);
    connect(&m_gathering, &QTimer::timeout, this, &Intake::gather);
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &Intake::stopLooking);
    connect(&m_module, &JsonChild::told, this, &Intake::takeStatementWord);
    connect(&m_module, &JsonChild::ended, this, &Intake::takeStatementEnd);
    connect(&m_bars, &JsonChild::told, this, &Intake::takeBarsWord);
    connect(&m_bars, &JsonChild::ended, this, &Intake::takeBarsEnd);
}

Intake::~Intake()
{
    m_module.disconnect(this);
    m_bars.disconnect(this);
}

void Intake::enter(Stage stage)
{
    m_stage = stage;
    Q_EMIT changed();
}

void Intake::add(const QStringList &paths)
{
    m_pending += paths;
    enter(Stage::Gathering);
    m_gathering.start();
}

void Intake::addFile(const QString &path, FileKind kind)
{
    const QString place = QFileInfo(path).canonicalFilePath();
    if (m_paths.contains(place)) {
        return;
    }
    m_paths.insert(place);
    m_byPath.insert(path, static_cast<int>(m_files.size()));
    IntakeFile file;
    file.path = path;
    file.kind = kind;
    m_files.push_back(file);
}

/// Looks into files and folders for a turn of the event loop.
void Intake::gather()
{
    QElapsedTimer turn;
    turn.start();
    while (turn.elapsed() < longestTurn.count()) {
        if (m_listing && m_listing->hasNext()) {
            const QString path = m_listing->next();
            const FileKind kind = kindOfFile(path);
            kind == FileKind::BarTable ? addFile(path, kind) : static_cast<void>(++m_skipped);
        } else if (m_pending.isEmpty()) {
            m_listing.reset();
            m_gathering.stop();
            lookNext();
            return;
        } else if (const QString path = m_pending.takeFirst(); QFileInfo(path).isDir()) {
            m_listing = std::make_unique<QDirIterator>(path, QDir::Files, QDirIterator::Subdirectories);
        } else {
            addFile(path, kindOfFile(path));
        }
    }
    Q_EMIT progressed(tr("Listing files"), static_cast<int>(m_files.size()), 0);
}

int Intake::find(FileKind kind, State state) const
{
    const auto found = std::find_if(m_files.begin(), m_files.end(), [=](const IntakeFile &file) {
        return file.kind == kind && file.state == state;
    });
    return found == m_files.end() ? -1 : static_cast<int>(found - m_files.begin());
}

void Intake::setBars(State from, State to)
{
    for (IntakeFile &file : m_files) {
        if (file.kind == FileKind::BarTable && file.state == from) {
            file.state = to;
        }
    }
}

void Intake::lookNext()
{
    m_isCancelled = false;
    const int statement = find(FileKind::Statement, State::Waiting);
    if (statement >= 0) {
        enter(Stage::Looking);
        runStatement(statement, Errand::Look);
    } else if (find(FileKind::BarTable, State::Waiting) >= 0) {
        planBars();
        enter(Stage::Looking);
    } else {
        enter(Stage::Asking);
    }
}

void Intake::setKind(int file, FileKind kind)
{
    IntakeFile &asked = m_files[static_cast<std::size_t>(file)];
    asked.isKindSaid = true;
    if (asked.kind == kind && asked.state != State::LeftOut) {
        Q_EMIT changed();
        return;
    }
    asked.kind = kind;
    asked.answers.clear();
    asked.state = State::Waiting;
    m_isPlanStale = true;
    lookNext();
}

void Intake::leaveOut(int file)
{
    IntakeFile &asked = m_files[static_cast<std::size_t>(file)];
    asked.state = State::LeftOut;
    m_isPlanStale = m_isPlanStale || asked.kind == FileKind::BarTable;
    Q_EMIT changed();
}

int Intake::unreadableFiles() const
{
    return static_cast<int>(std::count_if(m_files.begin(), m_files.end(), &isUnreadable));
}

void Intake::leaveOutUnreadable()
{
    for (IntakeFile &file : m_files) {
        if (isUnreadable(file)) {
            file.state = State::LeftOut;
            m_isPlanStale = m_isPlanStale || file.kind == FileKind::BarTable;
        }
    }
    Q_EMIT changed();
}

void Intake::answer(int file, const QString &question, const QString &typed)
{
    const QString answer = takenAnswer(question, typed);
    IntakeFile &asked = m_files[static_cast<std::size_t>(file)];
    if (asked.answers.value(question) == answer) {
        return;
    }
    if (answer.isEmpty()) {
        asked.answers.remove(question);
    } else {
        asked.answers[question] = answer;
    }
    asked.state = State::Waiting;
}

void Intake::answerAll(const QString &question, const QString &answerToAll)
{
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        if (isAsked(m_files[i]) && m_files[i].report.asks.contains(question)) {
            answer(static_cast<int>(i), question, answerToAll);
        }
    }
    lookNext();
}

void Intake::answerFromNames()
{
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const QStringList asked = isAsked(m_files[i]) ? m_files[i].report.asks : QStringList();
        for (const QString &question : asked) {
            const QString named = answerInName(question, m_files[i].path);
            if (!named.isEmpty()) {
                answer(static_cast<int>(i), question, named);
            }
        }
    }
    lookNext();
}

void Intake::lookAgain()
{
    lookNext();
}

bool Intake::mayImport() const
{
    const auto isHindrance = [](const IntakeFile &file) {
        return file.state != State::Ready && file.state != State::LeftOut;
    };
    const bool hasReady =
        find(FileKind::BarTable, State::Ready) >= 0 || find(FileKind::Statement, State::Ready) >= 0;
    return m_stage == Stage::Asking && hasReady && std::none_of(m_files.begin(), m_files.end(), isHindrance);
}

void Intake::import()
{
    m_isCancelled = false;
    m_makesLedger = isMissingFile(m_plan.places.ledger);
    if (m_makesLedger) {
        QDir().mkpath(QFileInfo(m_plan.places.ledger).path());
    }
    enter(Stage::Writing);
    importNext();
}

/// Statements come first: bars are compared with their trades.
void Intake::importNext()
{
    const int statement = find(FileKind::Statement, State::Ready);
    const bool isDone = statement < 0 && find(FileKind::BarTable, State::Ready) < 0;
    if (m_isCancelled || isDone) {
        finishWriting();
    } else if (statement >= 0) {
        runStatement(statement, Errand::Import);
    } else if (m_isPlanStale) {
        planBars();
    } else {
        setBars(State::Ready, State::Writing);
        startBars();
        m_bars.say({{QStringLiteral("write"), true}});
    }
    Q_EMIT changed();
}

/// What could not be taken back stays to be seen: looked at anew, it would seem to be there from before.
bool Intake::isAnyLeft() const
{
    return std::any_of(m_files.begin(), m_files.end(), [](const IntakeFile &file) {
        return file.state == State::Stuck || file.state == State::Unknown;
    });
}

/// A module that is ended while it makes a new ledger may leave a file with nothing in it.
void Intake::removeEmptyLedger()
{
    QFile ledger(m_plan.places.ledger);
    if (m_makesLedger && ledger.exists() && ledger.size() == 0) {
        ledger.remove();
    }
}

void Intake::finishWriting()
{
    if (m_isCancelled && std::any_of(m_files.begin(), m_files.end(), &isTakenIn)) {
        undo();
        return;
    }
    if (m_isCancelled && !isAnyLeft()) {
        removeEmptyLedger();
        // Looked at anew: so stands there what is true, whatever the moment was.
        for (IntakeFile &file : m_files) {
            file.state = isAsked(file) || file.state == State::TakenBack ? State::Waiting : file.state;
        }
        lookNext();
        return;
    }
    enter(Stage::Done);
    Q_EMIT written();
}

void Intake::cancel()
{
    switch (m_stage) {
    case Stage::Gathering:
    case Stage::Looking:
    case Stage::Writing:
        m_isCancelled = true;
        if (m_gathering.isActive()) {
            m_gathering.stop();
            enter(Stage::Asking);
        }
        if (m_module.isRunning() && m_errand != Errand::Settle) {
            m_module.stop();
        }
        if (m_bars.isRunning()) {
            m_bars.say({{QStringLiteral("cancel"), true}});
            m_patience.start();
        }
        break;
    case Stage::Asking:
    case Stage::Undoing:
    case Stage::Done:
        break;
    }
}

/// A file of a hundred megabytes keeps the reader from hearing. Nothing is written while it reads.
void Intake::stopLooking()
{
    if (m_isCancelled && find(FileKind::BarTable, State::Looking) >= 0 && m_bars.isRunning()) {
        m_bars.stop();
    }
}

bool Intake::mayUndo() const
{
    return std::any_of(m_files.begin(), m_files.end(),
                       [](const IntakeFile &file) { return isTakenIn(file) || isStuck(file); });
}

void Intake::undo()
{
    for (IntakeFile &file : m_files) { // what was stuck may go now
        file.state = isStuck(file) ? State::TakenIn : file.state;
    }
    enter(Stage::Undoing);
    undoNext();
}

/// The newest first.
void Intake::undoNext()
{
    if (find(FileKind::BarTable, State::TakenIn) >= 0 && !m_bars.isRunning()) {
        takeWrittenBars(State::Stuck, tr("cannot be taken back: the import of bars has ended"));
        return;
    }
    if (find(FileKind::BarTable, State::TakenIn) >= 0) {
        m_bars.say({{QStringLiteral("undo"), true}});
        return;
    }
    for (int i = static_cast<int>(m_files.size()) - 1; i >= 0; --i) {
        if (isTakenIn(m_files[static_cast<std::size_t>(i)])) {
            runStatement(i, Errand::Undo);
            return;
        }
    }
    if (m_isCancelled) {
        finishWriting();
    } else {
        enter(Stage::Done);
        Q_EMIT written();
    }
}

QString Intake::profileFile(const QString &text)
{
    if (!m_scratch) {
        m_scratch = std::make_unique<QTemporaryDir>();
    }
    QFile file(m_scratch->filePath(QStringLiteral("profile.txt")));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text.toUtf8());
    }
    return file.fileName();
}

QStringList Intake::arguments(const IntakeFile &file, Errand errand)
{
    switch (errand) {
    case Errand::Look:
        return importArguments(file) << QStringLiteral("--dry-run");
    case Errand::Import:
        return importArguments(file) << QStringLiteral("--mark") << file.mark;
    case Errand::Undo:
        return moduleWords(m_plan) << QStringLiteral("undo") << QString::number(file.report.number)
                                   << QStringLiteral("--json");
    case Errand::Settle:
        return moduleWords(m_plan) << QStringLiteral("imports") << QStringLiteral("--mark") << file.mark
                                   << QStringLiteral("--json");
    }
    return {};
}

QStringList Intake::importArguments(const IntakeFile &file)
{
    QStringList words = moduleWords(m_plan);
    words << QStringLiteral("import") << file.path << QStringLiteral("--json") << QStringLiteral("--progress")
          << QStringLiteral("json");
    for (const auto &option :
         {QStringLiteral("account"), QStringLiteral("date"), QStringLiteral("securities")}) {
        const QString answer = file.answers.value(option);
        words += answer.isEmpty() ? QStringList() : QStringList({QStringLiteral("--") + option, answer});
    }
    if (file.answers.contains(QStringLiteral("skip-bad"))) {
        words << QStringLiteral("--skip-bad");
    }
    if (file.answers.contains(QStringLiteral("doubt"))) {
        words << QStringLiteral("--") + file.answers.value(QStringLiteral("doubt"));
    }
    if (file.answers.contains(QStringLiteral("profile"))) {
        words << QStringLiteral("--profile") << profileFile(file.answers.value(QStringLiteral("profile")));
    }
    return words;
}

void Intake::runStatement(int file, Errand errand)
{
    IntakeFile &asked = m_files[static_cast<std::size_t>(file)];
    m_current = file;
    m_errand = errand;
    m_answer = {};
    switch (errand) {
    case Errand::Look:
        asked.state = State::Looking;
        break;
    case Errand::Import:
        asked.state = State::Writing;
        asked.mark = QUuid::createUuid().toString(QUuid::WithoutBraces);
        break;
    case Errand::Undo:
    case Errand::Settle:
        break;
    }
    m_module.start(m_plan.moduleProgram, arguments(asked, errand), environmentOf(m_plan));
    Q_EMIT changed();
}

void Intake::takeStatementWord(const QJsonObject &word)
{
    const QJsonObject progress = word[QLatin1String("progress")].toObject();
    if (progress.isEmpty()) {
        m_answer = word;
        return;
    }
    const bool isReading = progress[QLatin1String("step")].toString() == QLatin1String("reading");
    Q_EMIT progressed(isReading ? tr("Reading") : tr("Importing"), progress[QLatin1String("rows")].toInt(),
                      progress[QLatin1String("of")].toInt());
}

void Intake::takeStatementEnd(int exitCode, const QString &lastWords)
{
    IntakeFile &file = m_files[static_cast<std::size_t>(m_current)];
    const bool mayHaveWritten = m_errand == Errand::Import || m_errand == Errand::Undo;
    if (m_answer.isEmpty() && mayHaveWritten && hasBegun(m_module, exitCode)) {
        m_unanswered = m_errand;
        m_lastWords = reasonOfEnd(exitCode, lastWords);
        runStatement(m_current, Errand::Settle);
        return;
    }
    if (m_answer.isEmpty() && !m_isCancelled) {
        m_answer = {{QStringLiteral("refused"),
                     QJsonObject{{QStringLiteral("reason"), reasonOfEnd(exitCode, lastWords)}}}};
    }
    switch (m_errand) {
    case Errand::Look:
        takeLook(&file);
        break;
    case Errand::Import:
        takeImport(&file);
        break;
    case Errand::Undo:
        takeUndo(&file);
        break;
    case Errand::Settle:
        takeSettled(&file, reasonOfEnd(exitCode, lastWords));
        break;
    }
    goOn();
}

QString Intake::reasonOfEnd(int exitCode, const QString &lastWords)
{
    return lastWords.isEmpty() ? tr("the trading module has ended (%1)").arg(exitCode) : lastWords;
}

void Intake::takeLook(IntakeFile *file)
{
    if (m_isCancelled) {
        file->state = State::Waiting;
        return;
    }
    file->report = statementReport(m_answer);
    file->state = file->report.refusals.isEmpty() ? State::Ready : State::Refused;
}

void Intake::takeImport(IntakeFile *file)
{
    if (m_answer.isEmpty()) { // cancelled before it had begun
        file->state = State::Waiting;
        return;
    }
    file->report = statementReport(m_answer);
    file->state = file->report.refusals.isEmpty() || file->report.number > 0 ? State::TakenIn : State::Failed;
    m_isPlanStale = true;
}

void Intake::takeUndo(IntakeFile *file)
{
    const FileReport report = statementReport(m_answer);
    file->state = report.refusals.isEmpty() ? State::TakenBack : State::Stuck;
    file->report.refusals = report.refusals;
}

/// The ledger has said whether it has the import.
void Intake::takeSettled(IntakeFile *file, const QString &reason)
{
    const QJsonValue result = m_answer[QLatin1String("result")];
    if (!result.isObject()) {
        file->state = State::Unknown;
        file->report.refusals = QStringList(tr("Nobody can tell whether it is in the ledger: %1. See the "
                                               "past imports when the ledger answers.")
                                                .arg(reason));
        return;
    }
    file->report.number = static_cast<qint64>(result.toObject()[QLatin1String("import")].toDouble());
    const bool isThere = file->report.number > 0;
    const bool wasUndone = m_unanswered == Errand::Undo;
    m_isPlanStale = true;
    if (isThere) {
        file->state = wasUndone ? State::Stuck : State::TakenIn;
    } else {
        file->state = wasUndone ? State::TakenBack : m_isCancelled ? State::Waiting : State::Failed;
    }
    const bool isTrouble = file->state == State::Stuck || file->state == State::Failed;
    file->report.refusals = isTrouble ? QStringList(m_lastWords) : QStringList();
}

/// A step has ended.
void Intake::goOn()
{
    switch (m_stage) {
    case Stage::Looking:
        m_isCancelled ? enter(Stage::Asking) : lookNext();
        break;
    case Stage::Writing:
        importNext();
        break;
    case Stage::Undoing:
        undoNext();
        break;
    case Stage::Gathering:
    case Stage::Asking:
    case Stage::Done:
        break;
    }
}

void Intake::startBars()
{
    if (m_bars.isRunning()) {
        return;
    }
    m_bars.start(m_plan.terminalProgram,
                 {QStringLiteral("bars"), QStringLiteral("import"), QStringLiteral("--json"),
                  QStringLiteral("--data"), m_plan.places.dataFolder, QStringLiteral("--module"),
                  m_plan.moduleProgram, QStringLiteral("--lang"), m_plan.language},
                 environmentOf(m_plan));
}

/// Bars often have a code alone.
QJsonObject Intake::namesInStatements() const
{
    QJsonObject names;
    for (const IntakeFile &file : m_files) {
        for (auto name = file.report.names.begin(); name != file.report.names.end(); ++name) {
            names[name.key()] = name.value();
        }
    }
    return names;
}

void Intake::planBars()
{
    QJsonArray files;
    for (IntakeFile &file : m_files) {
        if (file.kind == FileKind::BarTable && isAsked(file)) {
            file.state = State::Looking;
            files.append(requestFor(file));
        }
    }
    m_isPlanStale = false;
    startBars();
    m_bars.say({{QStringLiteral("plan"), files}, {QStringLiteral("names"), namesInStatements()}});
}

void Intake::takePlannedFile(const QJsonObject &planned)
{
    const int place = m_byPath.value(planned[QLatin1String("file")].toString(), -1);
    if (place >= 0 && m_files[static_cast<std::size_t>(place)].state == State::Looking) {
        IntakeFile &file = m_files[static_cast<std::size_t>(place)];
        file.report = barsReport(planned);
        file.state = file.report.refusals.isEmpty() ? State::Ready : State::Refused;
    }
}

void Intake::takePlannedBars()
{
    const bool isWriting = m_stage == Stage::Writing;
    if (isWriting && find(FileKind::BarTable, State::Refused) >= 0) {
        setBars(State::Ready, State::Failed); // what is written is all of it or nothing
        setBars(State::Refused, State::Failed);
    }
    goOn();
}

void Intake::takeWrittenBars(State state, const QString &problem)
{
    for (IntakeFile &file : m_files) {
        const bool isMeant = file.state == State::Writing || file.state == State::Looking ||
                             (m_stage == Stage::Undoing && file.state == State::TakenIn);
        if (file.kind == FileKind::BarTable && isMeant) {
            file.state = state;
            file.report.refusals = problem.isEmpty() ? QStringList() : QStringList(problem);
        }
    }
    goOn();
}

void Intake::takeBarsWord(const QJsonObject &word)
{
    const QJsonObject progress = word[QLatin1String("progress")].toObject();
    if (!progress.isEmpty()) {
        const QString step = progress[QLatin1String("step")].toString();
        Q_EMIT progressed(step == QLatin1String("reading")  ? tr("Reading bars")
                          : step == QLatin1String("trades") ? tr("Reading the account's trades")
                                                            : tr("Writing bars"),
                          progress[QLatin1String("files")].toInt(), progress[QLatin1String("of")].toInt());
    } else if (word.contains(QLatin1String("planned"))) {
        takePlannedBars();
    } else if (word.contains(QLatin1String("plan"))) {
        takePlannedFile(word[QLatin1String("plan")].toObject());
    } else if (word.contains(QLatin1String("written"))) {
        takeWrittenBars(State::TakenIn);
    } else if (word.contains(QLatin1String("undone"))) {
        takeWrittenBars(State::TakenBack);
    } else if (word.contains(QLatin1String("failed"))) {
        takeWrittenBars(m_stage == Stage::Undoing ? State::Stuck : State::Failed,
                        word[QLatin1String("failed")].toString());
    } else if (find(FileKind::BarTable, State::Writing) >= 0 ||
               find(FileKind::BarTable, State::Looking) >= 0) {
        // Cancelled; what had just ended by itself needed no cancelling.
        setBars(State::Writing, State::Waiting);
        setBars(State::Looking, State::Waiting);
        goOn();
    }
}

void Intake::takeBarsEnd(int exitCode, const QString &lastWords)
{
    const QString reason =
        lastWords.isEmpty() ? tr("the import of bars has ended (%1)").arg(exitCode) : lastWords;
    for (IntakeFile &file : m_files) {
        if (file.kind == FileKind::BarTable && file.state == State::Writing) {
            file.report.refusals =
                QStringList(tr("Nobody can tell which of the bars are written: %1. See the folder %2.")
                                .arg(reason, m_plan.places.dataFolder));
            file.state = State::Unknown;
        } else if (file.kind == FileKind::BarTable && file.state == State::Looking && m_isCancelled) {
            file.state = State::Waiting;
        } else if (file.kind == FileKind::BarTable && file.state == State::Looking) {
            file.report = failureReport(reason);
            file.state = m_stage == Stage::Writing ? State::Failed : State::Refused;
        }
    }
    goOn();
}

} // namespace Terminal
