#include "terminal/intake/IntakeDialog.h"

#include "terminal/intake/FileSheet.h"
#include "terminal/intake/IntakeQuestion.h"
#include "terminal/services/BusInstance.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/StyleProperty.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>

namespace Terminal {

namespace {

constexpr QSize usualSize(1080, 640);
constexpr QSize frame(40, 60); ///< of the window and what a desktop keeps for itself
constexpr int listWidth = 200;

using State = IntakeFile::State;

int countOf(const std::vector<IntakeFile> &files, State state)
{
    return static_cast<int>(std::count_if(files.begin(), files.end(),
                                          [state](const IntakeFile &file) { return file.state == state; }));
}

} // namespace

QStringList droppedFiles(const QMimeData *dropped)
{
    QStringList files;
    for (const QUrl &url : dropped->urls()) {
        if (url.isLocalFile()) {
            files.append(url.toLocalFile());
        }
    }
    return files;
}

IntakeDialog::IntakeDialog(const IntakePlan &plan, const IntakeLook &look, QWidget *parent)
    : QDialog(parent),
      m_intake(plan),
      m_look(look),
      m_places(new QLabel),
      m_list(new QListWidget),
      m_sheet(new FileSheet),
      m_summary(new QLabel),
      m_progress(new QProgressBar),
      m_more(new QPushButton(tr("Add files..."))),
      m_leaveOut(new QPushButton(tr("Leave out what cannot be read"))),
      m_import(new QPushButton(tr("Import"))),
      m_undo(new QPushButton(tr("Undo"))),
      m_close(new QPushButton(tr("Cancel")))
{
    setStyleSheet(intakeStyleSheet(look.theme));
    setUp();
    wire();
    showAll();
}

void IntakeDialog::setUp()
{
    setWindowTitle(tr("Import statements and bars"));
    setObjectName(QStringLiteral("intakeDialog"));
    setAcceptDrops(true);
    resize(usualSize.boundedTo(QApplication::primaryScreen()->availableSize() - frame));
    m_places->setTextFormat(Qt::PlainText);
    m_places->setWordWrap(true);
    m_places->setObjectName(QStringLiteral("intakePlaces"));
    m_list->setAccessibleName(tr("Files"));
    m_list->setFixedWidth(listWidth);
    m_list->setUniformItemSizes(true); // there may be thousands
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_summary->setWordWrap(true);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setObjectName(QStringLiteral("intakeSummary"));
    m_import->setObjectName(QStringLiteral("importFiles"));
    m_undo->setObjectName(QStringLiteral("undoImport"));
    m_undo->setAutoDefault(false);
    m_close->setObjectName(QStringLiteral("closeIntake"));
    m_import->setDefault(true);
    m_import->setProperty("main", true);
    m_more->setAutoDefault(false);
    m_leaveOut->setObjectName(QStringLiteral("leaveOutUnreadable"));
    m_leaveOut->setAutoDefault(false);
    auto *const files = new QHBoxLayout;
    files->addWidget(m_list);
    files->addWidget(m_sheet, 1);
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_more);
    buttons->addWidget(m_leaveOut);
    buttons->addWidget(m_summary, 1);
    for (QPushButton *const button : {m_undo, m_import, m_close}) {
        buttons->addWidget(button);
    }
    auto *const column = new QVBoxLayout(this);
    column->addWidget(m_places);
    column->addLayout(files, 1);
    column->addWidget(m_progress);
    column->addLayout(buttons);
}

void IntakeDialog::wire()
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &IntakeDialog::endPause);
    connect(&m_intake, &Intake::changed, this, &IntakeDialog::takeChange);
    connect(&m_intake, &Intake::progressed, this, &IntakeDialog::showProgress);
    connect(&m_intake, &Intake::written, this, &IntakeDialog::written);
    connect(m_list, &QListWidget::currentRowChanged, this, [this] { showSheet(); });
    connect(m_list, &QListWidget::itemActivated, this, [this] { m_hasChosen = true; });
    connect(m_list, &QListWidget::itemClicked, this, [this] { m_hasChosen = true; });
    connect(m_more, &QPushButton::clicked, this, &IntakeDialog::chooseFiles);
    connect(m_leaveOut, &QPushButton::clicked, &m_intake, &Intake::leaveOutUnreadable);
    connect(m_import, &QPushButton::clicked, this, [this] { m_intake.import(); });
    connect(m_undo, &QPushButton::clicked, this, [this] { m_intake.undo(); });
    connect(m_close, &QPushButton::clicked, this, &IntakeDialog::reject);
    connect(m_sheet, &FileSheet::kindChosen, this, [this](std::optional<FileKind> kind) {
        kind ? m_intake.setKind(chosen(), *kind) : m_intake.leaveOut(chosen());
    });
    connect(m_sheet, &FileSheet::answered, this, [this](const QString &question, const QString &answer) {
        m_intake.answer(chosen(), question, answer);
        m_intake.lookAgain();
    });
    connect(m_sheet, &FileSheet::answeredForAll, this,
            [this](const QString &question, const QString &answer) { m_intake.answerAll(question, answer); });
    connect(m_sheet, &FileSheet::answeredFromNames, &m_intake, &Intake::answerFromNames);
}

int IntakeDialog::chosen() const
{
    return std::max(0, m_list->currentRow());
}

void IntakeDialog::pauseAtNewStage()
{
    const Intake::Stage stage = m_intake.stage();
    const bool waitsForUser = stage == Intake::Stage::Asking || stage == Intake::Stage::Done;
    if (stage != m_shownStage && waitsForUser) {
        m_pause.start(QApplication::doubleClickInterval());
    }
    m_shownStage = stage;
}

void IntakeDialog::endPause()
{
    showAll();
    if (m_intake.stage() == Intake::Stage::Done) {
        m_close->setFocus(); // the button that had it is gone
    }
}

/// A file that needs the user comes before his eyes, unless he has chosen another one.
void IntakeDialog::takeChange()
{
    pauseAtNewStage();
    const auto &files = m_intake.files();
    if (m_intake.stage() == Intake::Stage::Asking && !m_hasChosen) {
        const auto needy = std::find_if(files.begin(), files.end(),
                                        [](const IntakeFile &file) { return file.state == State::Refused; });
        showList();
        if (needy != files.end()) {
            m_list->setCurrentRow(static_cast<int>(needy - files.begin()));
        }
    }
    showAll();
}

void IntakeDialog::showAll()
{
    const AccountPlaces &places = m_intake.plan().places;
    m_places->setText(tr("Into the account %1; bars into %2")
                          .arg(plainText(ledgerName(places.ledger)),
                               plainText(QDir::toNativeSeparators(places.dataFolder))));
    showList();
    showSheet();
    showButtons();
}

void IntakeDialog::showList()
{
    const auto &files = m_intake.files();
    const QSignalBlocker quiet(m_list);
    while (m_list->count() < static_cast<int>(files.size())) {
        m_list->addItem(QString());
    }
    for (int i = 0; i < m_list->count(); ++i) {
        const IntakeFile &file = files[static_cast<std::size_t>(i)];
        m_list->item(i)->setText(
            QStringLiteral("%1\n%2").arg(plainText(QFileInfo(file.path).fileName()), stateText(file.state)));
        const bool isTrouble = file.state == State::Refused || file.state == State::Failed ||
                               file.state == State::Stuck || file.state == State::Unknown;
        m_list->item(i)->setForeground(isTrouble ? m_look.theme.line : m_look.theme.text);
        m_list->item(i)->setToolTip(plainTip(plainText(file.path)));
    }
    if (m_list->currentRow() < 0 && m_list->count() > 0) {
        m_list->setCurrentRow(0);
    }
    m_list->setVisible(m_list->count() > 1);
}

void IntakeDialog::showSheet()
{
    if (m_intake.files().empty()) {
        return;
    }
    m_sheet->showFile(m_intake.files()[static_cast<std::size_t>(chosen())],
                      m_intake.stage() == Intake::Stage::Asking && !m_pause.isActive(), m_look.hidesAmounts);
}

void IntakeDialog::showButtons()
{
    const Intake::Stage stage = m_intake.stage();
    const bool isDone = stage == Intake::Stage::Done;
    const bool isAsking = stage == Intake::Stage::Asking;
    m_more->setVisible(isAsking);
    m_leaveOut->setVisible(isAsking && m_intake.unreadableFiles() > 1);
    m_leaveOut->setEnabled(!m_pause.isActive());
    m_import->setVisible(!isDone);
    m_import->setEnabled(m_intake.mayImport() && !m_pause.isActive());
    m_undo->setVisible(isDone && m_intake.mayUndo());
    m_undo->setEnabled(!m_pause.isActive());
    m_close->setEnabled(stage != Intake::Stage::Undoing && !m_pause.isActive());
    m_close->setText(!isDone ? tr("Cancel") : hasChanged() ? tr("Show the chart") : tr("Close"));
    m_close->setDefault(isDone);
    setStyleProperty(m_close, "main", isDone ? QStringLiteral("true") : QString());
    m_summary->setText(summary());
    m_progress->setVisible(!isDone && !isAsking);
    if (isAsking || isDone) {
        m_progress->reset();
    }
}

QString IntakeDialog::summary() const
{
    const auto &files = m_intake.files();
    const int needy = countOf(files, State::Refused);
    const int skipped = m_intake.skippedFiles();
    QStringList parts;
    switch (m_intake.stage()) {
    case Intake::Stage::Gathering:
    case Intake::Stage::Looking:
        return tr("Nothing is written yet.");
    case Intake::Stage::Asking:
        if (files.empty()) {
            parts.append(tr("No bars were found."));
        }
        parts.append(needy > 0 ? tr("Files that need you: %1. Answer, or leave them out.").arg(needy)
                               : tr("Nothing is written yet."));
        if (skipped > 0) {
            parts.append(tr("Files of the folder that are no bars: %1.").arg(skipped));
        }
        return parts.join(QLatin1Char(' '));
    case Intake::Stage::Writing:
        return tr("Importing; to cancel leaves everything as it was.");
    case Intake::Stage::Undoing:
        return tr("Taking back...");
    case Intake::Stage::Done:
        break;
    }
    const int takenIn = countOf(files, State::TakenIn);
    const int left = countOf(files, State::Stuck) + countOf(files, State::Unknown);
    if (left > 0) {
        return tr("Not taken back, or not known: %1, see there why. Undo tries again.").arg(left);
    }
    const int failed = countOf(files, State::Failed);
    if (failed > 0) {
        return tr("Files imported: %1; not imported: %2, see there why.").arg(takenIn).arg(failed);
    }
    return takenIn > 0 ? tr("Files imported: %1.").arg(takenIn) : tr("Taken back; nothing is left of it.");
}

void IntakeDialog::showProgress(const QString &step, int done, int of)
{
    m_progress->setRange(0, of);
    m_progress->setValue(std::min(done, of));
    m_progress->setFormat(of > 0 ? tr("%1: %2 of %3").arg(step).arg(done).arg(of) : step);
}

void IntakeDialog::chooseFiles()
{
    const QStringList files = QFileDialog::getOpenFileNames(this, tr("Statements and bars"));
    if (!files.isEmpty()) {
        add(files);
    }
}

QStringList IntakeDialog::takenCodes() const
{
    QStringList codes;
    for (const FileKind kind : {FileKind::BarTable, FileKind::Statement}) {
        for (const IntakeFile &file : m_intake.files()) {
            if (file.kind == kind && file.state == State::TakenIn) {
                codes += file.report.codes;
            }
        }
    }
    codes.removeDuplicates();
    return codes;
}

/// While something is written, the first time ends that; what was written until then is taken back.
void IntakeDialog::reject()
{
    switch (m_intake.stage()) {
    case Intake::Stage::Writing:
        m_intake.cancel();
        return;
    case Intake::Stage::Undoing:
        return;
    case Intake::Stage::Done:
        accept();
        return;
    case Intake::Stage::Gathering:
    case Intake::Stage::Looking:
    case Intake::Stage::Asking:
        m_intake.cancel();
        QDialog::reject();
        return;
    }
}

void IntakeDialog::dragEnterEvent(QDragEnterEvent *event)
{
    if (m_intake.stage() == Intake::Stage::Asking && !droppedFiles(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void IntakeDialog::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    add(droppedFiles(event->mimeData()));
}

} // namespace Terminal
