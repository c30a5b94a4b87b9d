#include "terminal/intake/FileSheet.h"

#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Terminal {

namespace {

constexpr int margin = 12;

QLabel *lineOf(const QString &text, const char *name)
{
    auto *const label = new QLabel(plainText(text));
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

bool isFigure(const QString &cell)
{
    bool isNumber = false;
    cell.toDouble(&isNumber);
    return isNumber;
}

QTableWidgetItem *itemOf(const QString &cell)
{
    auto *const item = new QTableWidgetItem(plainText(cell));
    item->setToolTip(plainTip(item->text()));
    if (isFigure(cell)) {
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    return item;
}

/// A column that none of the rows fills takes the place of others.
bool isEmptyColumn(const FileReport &report, int column)
{
    return std::all_of(report.rows.begin(), report.rows.end(),
                       [column](const QStringList &cells) { return cells.value(column).isEmpty(); });
}

/// Of words; figures, days and codes count nothing.
int longestWord(const FileReport &report, int column)
{
    int longest = 0;
    for (const QStringList &cells : report.rows) {
        const QString cell = cells.value(column);
        const bool isWord = !cell.isEmpty() && cell[0].isLetter();
        longest = isWord ? std::max(longest, cell.size()) : longest;
    }
    return longest;
}

/// The column of names gives way in a small window, so that no figure is cut.
void letNamesGiveWay(const FileReport &report, QHeaderView *header)
{
    int widest = 0;
    for (int column = 1; column < report.columns.size(); ++column) {
        widest = longestWord(report, column) > longestWord(report, widest) ? column : widest;
    }
    if (longestWord(report, widest) > 0) {
        header->setSectionResizeMode(widest, QHeaderView::Stretch);
    }
}

} // namespace

FileSheet::FileSheet(QWidget *parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("fileSheet"));
    setAccessibleName(tr("The chosen file")); // the keyboard scrolls it
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void FileSheet::showFile(const IntakeFile &file, bool isOpen, bool hidesAmounts)
{
    const QWidget *const focus = QApplication::focusWidget();
    if (focus != nullptr && isAncestorOf(focus)) {
        m_inFocus = focus->objectName();
    }
    auto *const sheet = new QWidget;
    sheet->setObjectName(QStringLiteral("fileSheetPage"));
    m_column = new QVBoxLayout(sheet);
    m_column->setSpacing(4);
    m_column->setContentsMargins(margin, margin, margin, margin);
    m_column->addWidget(lineOf(QFileInfo(file.path).fileName(), "fileName"));
    addKind(file, isOpen);
    const FileReport &report = file.report;
    const auto shown = [hidesAmounts](QStringList lines) {
        std::transform(lines.begin(), lines.end(), lines.begin(),
                       [=](const QString &line) { return withoutFigures(line, hidesAmounts); });
        return lines;
    };
    const bool isBars = file.kind == FileKind::BarTable; // which tell nothing of the account
    if (file.state != IntakeFile::State::LeftOut) {
        addLines(report.refusals, "fileRefusal", QStringLiteral(u"✕"));
        addQuestions(file, isOpen);
        addLines(isBars ? report.facts : shown(report.facts), "fileFact", {});
        addLines(shown(report.warnings), "fileWarning", QStringLiteral("!"));
        addRows(report, hidesAmounts);
    }
    m_column->addStretch(1);
    if (QWidget *const before = takeWidget()) {
        before->deleteLater(); // it may be one of its fields that has told of a change
    }
    setWidget(sheet);
    auto *const field = m_inFocus.isEmpty() ? nullptr : sheet->findChild<QWidget *>(m_inFocus);
    if (field != nullptr && isOpen) { // else it comes back when the file has been looked at
        field->setFocus();
        m_inFocus.clear();
    }
}

void FileSheet::addKind(const IntakeFile &file, bool isOpen)
{
    auto *const kind = new QComboBox;
    kind->setObjectName(QStringLiteral("fileKind"));
    kind->setAccessibleName(tr("What the file is"));
    kind->addItem(tr("Statement of a broker"));
    kind->addItem(tr("Bars of a security"));
    kind->addItem(tr("Leave out"));
    const bool isLeftOut = file.state == IntakeFile::State::LeftOut;
    const int known = file.kind == FileKind::Statement ? 0 : 1;
    if (file.report.isUnknown && !file.isKindSaid && !isLeftOut) {
        kind->insertItem(0, tr("What is this file?"));
        kind->setCurrentIndex(0);
    } else {
        kind->setCurrentIndex(isLeftOut ? 2 : known);
    }
    kind->setEnabled(isOpen);
    connect(kind, QOverload<int>::of(&QComboBox::activated), this, [this, kind](int row) {
        const int choice = row - (kind->count() - 3);
        if (choice >= 0) {
            Q_EMIT kindChosen(choice == 0   ? std::optional(FileKind::Statement)
                              : choice == 1 ? std::optional(FileKind::BarTable)
                                            : std::nullopt);
        }
    });
    auto *const row = new QHBoxLayout;
    row->addWidget(kind);
    row->addWidget(lineOf(file.report.isUnknown ? QString() : file.report.heading, "fileHeading"), 1);
    m_column->addLayout(row);
}

void FileSheet::addLines(const QStringList &lines, const char *name, const QString &mark)
{
    for (const QString &line : lines) {
        m_column->addWidget(lineOf(mark.isEmpty() ? line : mark + QLatin1Char(' ') + line, name));
    }
}

void FileSheet::addQuestions(const IntakeFile &file, bool isOpen)
{
    auto *const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const IntakeQuestion &question : intakeQuestions()) {
        const bool isAsked = question.kind == file.kind && (file.report.asks.contains(question.name) ||
                                                            file.answers.contains(question.name));
        if (isAsked) {
            QWidget *const field = fieldOf(question, file);
            field->setEnabled(isOpen);
            auto *const label = new QLabel(question.label);
            label->setBuddy(field);
            form->addRow(label, field);
        }
    }
    m_column->addLayout(form);
}

QWidget *FileSheet::fieldOf(const IntakeQuestion &question, const IntakeFile &file)
{
    switch (question.form) {
    case IntakeQuestion::Form::Word:
    case IntakeQuestion::Form::Named:
        return wordField(question, file);
    case IntakeQuestion::Form::Choice:
        return choiceField(question, file);
    case IntakeQuestion::Form::Switch:
        return switchField(question, file);
    case IntakeQuestion::Form::Profile:
        return profileField(question, file);
    }
    return nullptr;
}

/// What the file's name has is proposed; it counts when the user says so.
QWidget *FileSheet::wordField(const IntakeQuestion &question, const IntakeFile &file)
{
    auto *const field = new QWidget;
    auto *const row = new QHBoxLayout(field);
    row->setContentsMargins(0, 0, 0, 0);
    const QString given = file.answers.value(question.name);
    auto *const word = new QLineEdit(given.isEmpty() ? answerInName(question.name, file.path) : given);
    word->setObjectName(QStringLiteral("answer-") + question.name);
    word->setPlaceholderText(question.hint);
    word->setAccessibleName(question.label);
    auto *const use = new QPushButton(tr("Use"));
    use->setObjectName(QStringLiteral("use-") + question.name);
    use->setAutoDefault(false);
    const auto answer = [this, word, name = question.name] { Q_EMIT answered(name, word->text().trimmed()); };
    connect(word, &QLineEdit::returnPressed, this, answer);
    connect(use, &QPushButton::clicked, this, answer);
    row->addWidget(word, 1);
    row->addWidget(use);
    field->setFocusProxy(word);
    if (question.form == IntakeQuestion::Form::Named) {
        auto *const all = new QPushButton(tr("All from file names"));
        all->setObjectName(QStringLiteral("allFromNames-") + question.name);
        all->setToolTip(tr("Each file that asks takes what its own name says: security and day."));
        all->setAutoDefault(false);
        connect(all, &QPushButton::clicked, this, [this] { Q_EMIT answeredFromNames(); });
        row->addWidget(all);
    }
    return field;
}

QWidget *FileSheet::choiceField(const IntakeQuestion &question, const IntakeFile &file)
{
    auto *const field = new QWidget;
    auto *const row = new QHBoxLayout(field);
    row->setContentsMargins(0, 0, 0, 0);
    auto *const choice = new QComboBox;
    choice->setObjectName(QStringLiteral("answer-") + question.name);
    choice->setAccessibleName(question.label);
    choice->addItem(tr("Please choose"), QString());
    for (const auto &[answer, title] : question.choices) {
        choice->addItem(title, answer);
    }
    QStringList accounts = question.name == QLatin1String("account") ? file.report.accounts : QStringList();
    const QString given = file.answers.value(question.name);
    if (question.choices.empty() && !given.isEmpty() && !accounts.contains(given)) {
        accounts.append(given);
    }
    for (const QString &account : accounts) {
        choice->addItem(plainText(account), account);
    }
    choice->setCurrentIndex(std::max(0, choice->findData(given)));
    connect(choice, QOverload<int>::of(&QComboBox::activated), this, [this, choice, name = question.name] {
        Q_EMIT answered(name, choice->currentData().toString());
    });
    row->addWidget(choice, 1);
    auto *const all = new QPushButton(tr("For all files"));
    all->setAutoDefault(false);
    all->setToolTip(tr("All files that ask the same get this answer."));
    connect(all, &QPushButton::clicked, this, [this, choice, name = question.name] {
        Q_EMIT answeredForAll(name, choice->currentData().toString());
    });
    row->addWidget(all);
    field->setFocusProxy(choice);
    return field;
}

QWidget *FileSheet::switchField(const IntakeQuestion &question, const IntakeFile &file)
{
    auto *const box = new QCheckBox(question.hint);
    box->setObjectName(QStringLiteral("answer-") + question.name);
    box->setAccessibleName(question.label);
    box->setChecked(!file.answers.value(question.name).isEmpty());
    connect(box, &QCheckBox::toggled, this, [this, name = question.name](bool isOn) {
        Q_EMIT answered(name, isOn ? QStringLiteral("yes") : QString());
    });
    return box;
}

QWidget *FileSheet::profileField(const IntakeQuestion &question, const IntakeFile &file)
{
    constexpr int shownLines = 6;
    auto *const field = new QWidget;
    auto *const column = new QVBoxLayout(field);
    column->setContentsMargins(0, 0, 0, 0);
    const QString given = file.answers.value(question.name);
    auto *const text = new QPlainTextEdit(given.isEmpty() ? file.report.profile : given);
    text->setObjectName(QStringLiteral("answer-") + question.name);
    text->setAccessibleName(question.label);
    text->setTabChangesFocus(true);
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    text->setFixedHeight(text->fontMetrics().lineSpacing() * shownLines + 2 * margin);
    auto *const use = new QPushButton(tr("Use"));
    use->setObjectName(QStringLiteral("use-") + question.name);
    use->setToolTip(question.hint);
    use->setAutoDefault(false);
    connect(use, &QPushButton::clicked, this,
            [this, text, name = question.name] { Q_EMIT answered(name, text->toPlainText()); });
    column->addWidget(text);
    column->addWidget(use, 0, Qt::AlignLeft);
    field->setFocusProxy(text);
    return field;
}

void FileSheet::addRows(const FileReport &report, bool hidesAmounts)
{
    if (report.rows.empty()) {
        return;
    }
    auto *const table = new QTableWidget(static_cast<int>(report.rows.size()), report.columns.size());
    table->setObjectName(QStringLiteral("firstRows"));
    table->setAccessibleName(tr("First rows, as they are understood"));
    table->setHorizontalHeaderLabels(report.columns);
    table->verticalHeader()->hide();
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    for (int row = 0; row < table->rowCount(); ++row) {
        const QStringList &cells = report.rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < cells.size(); ++column) {
            const bool isHidden =
                hidesAmounts && report.amountColumns.contains(column) && !cells.at(column).isEmpty();
            table->setItem(row, column, itemOf(shownAmount(cells.at(column), isHidden)));
        }
    }
    for (int column = 0; column < report.columns.size(); ++column) {
        table->setColumnHidden(column, isEmptyColumn(report, column));
    }
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    letNamesGiveWay(report, table->horizontalHeader());
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the sheet scrolls
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setFixedHeight(table->horizontalHeader()->sizeHint().height() +
                          table->rowCount() * table->verticalHeader()->defaultSectionSize() +
                          table->horizontalScrollBar()->sizeHint().height() + 4);
    m_column->addWidget(lineOf(tr("First rows, as they are understood"), "fileCaption"));
    m_column->addWidget(table);
}

} // namespace Terminal
