#include "terminal/intake/PastImports.h"

#include "terminal/intake/StatementReport.h"
#include "terminal/services/BusInstance.h"
#include "terminal/trade/OrderQuestion.h"
#include "terminal/trade/PlainText.h"

#include <QDateTime>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Terminal {

namespace {

/// A column of the list: the key in the module's words, and what stands above it.
struct ImportColumn
{
    const char *key;
    const char *title;
};

constexpr ImportColumn importColumns[] = {
    {"import", QT_TRANSLATE_NOOP("PastImports", "No.")},
    {"imported at", QT_TRANSLATE_NOOP("PastImports", "Imported at")},
    {"file", QT_TRANSLATE_NOOP("PastImports", "File")},
    {"added", QT_TRANSLATE_NOOP("PastImports", "Added")},
    {"there before", QT_TRANSLATE_NOOP("PastImports", "There before")},
    {"money", QT_TRANSLATE_NOOP("PastImports", "Money")},
    {"from", QT_TRANSLATE_NOOP("PastImports", "From")},
    {"to", QT_TRANSLATE_NOOP("PastImports", "To")},
    {"account", QT_TRANSLATE_NOOP("PastImports", "Account")},
};

/// Times are the exchange's, as everywhere in the window.
QString shownCell(const QJsonObject &import, const char *key)
{
    const QString cell = import[QLatin1String(key)].toString();
    const QDateTime time = QDateTime::fromString(cell, Qt::ISODate);
    return qstrcmp(key, "imported at") == 0 && time.isValid()
               ? time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"))
               : cell;
}

constexpr int numberColumn = 0;
constexpr int fileColumn = 2; ///< gives way in a small window, so that the days beside it are seen
constexpr int narrowestColumn = 60;

} // namespace

PastImports::PastImports(const IntakePlan &plan, const IntakeLook &look, QWidget *parent)
    : QDialog(parent),
      m_plan(plan),
      m_table(new QTableWidget(0, std::size(importColumns))),
      m_notice(new QLabel),
      m_undo(new QPushButton(tr("Take back...")))
{
    setWindowTitle(tr("Past imports into %1").arg(plainText(ledgerName(plan.places.ledger))));
    setObjectName(QStringLiteral("pastImports"));
    setStyleSheet(intakeStyleSheet(look.theme));
    resize(760, 360);
    QStringList titles;
    for (const ImportColumn &column : importColumns) {
        titles.append(tr(column.title));
    }
    m_table->setHorizontalHeaderLabels(titles);
    m_table->setAccessibleName(tr("Past imports"));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->setTextElideMode(Qt::ElideMiddle);
    m_table->setWordWrap(false); // a long name is cut in its middle; the tip has all of it
    m_table->horizontalHeader()->setMinimumSectionSize(narrowestColumn);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(fileColumn, QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::PlainText);
    m_undo->setObjectName(QStringLiteral("undoPastImport"));
    m_undo->setAutoDefault(false);
    auto *const close = new QPushButton(tr("Close"));
    close->setDefault(true);
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_notice, 1);
    buttons->addWidget(m_undo);
    buttons->addWidget(close);
    auto *const column = new QVBoxLayout(this);
    column->addWidget(m_table, 1);
    column->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_undo, &QPushButton::clicked, this, &PastImports::askToUndo);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &PastImports::showButtons);
    connect(&m_module, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &PastImports::takeEnd);
    connect(&m_module, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            m_notice->setText(tr("%1 cannot be started: %2").arg(m_module.program(), m_module.errorString()));
        }
    });
    run({QStringLiteral("imports")});
}

PastImports::~PastImports()
{
    m_module.disconnect(this);
}

void PastImports::done(int result)
{
    if (!m_isUndoing || m_module.state() == QProcess::NotRunning) {
        QDialog::done(result);
    }
}

void PastImports::run(const QStringList &command)
{
    const QStringList words = moduleWords(m_plan);
    m_isUndoing = command.first() == QLatin1String("undo");
    m_module.setProcessEnvironment(environmentOf(m_plan));
    m_module.start(m_plan.moduleProgram, words + command + QStringList(QStringLiteral("--json")));
    showButtons();
}

void PastImports::takeEnd(int exitCode)
{
    const QByteArray out = m_module.readAllStandardOutput();
    const QString lastWords = QString::fromUtf8(m_module.readAllStandardError()).trimmed();
    if (m_isUndoing) {
        const FileReport report =
            statementReport(QJsonDocument::fromJson(out.trimmed().split('\n').last()).object());
        if (report.refusals.isEmpty()) { // also where it ended without a word: the list will show it
            Q_EMIT written();
        }
        m_notice->setText(exitCode == 0               ? tr("Taken back.")
                          : report.refusals.isEmpty() ? lastWords
                                                      : report.refusals.join(QLatin1Char('\n')));
        run({QStringLiteral("imports")});
        return;
    }
    if (exitCode == 0) {
        showImports(out);
    } else {
        m_notice->setText(lastWords);
    }
    showButtons();
}

void PastImports::showImports(const QByteArray &json)
{
    const QJsonArray imports = QJsonDocument::fromJson(json).array();
    m_table->setRowCount(imports.size());
    for (int row = 0; row < imports.size(); ++row) {
        for (int column = 0; column < m_table->columnCount(); ++column) {
            const QString cell = shownCell(imports.at(row).toObject(), importColumns[column].key);
            auto *const item =
                new QTableWidgetItem(plainText(column == fileColumn ? QFileInfo(cell).fileName() : cell));
            item->setToolTip(plainTip(plainText(cell)));
            m_table->setItem(row, column, item);
        }
    }
    if (imports.isEmpty()) {
        m_notice->setText(tr("The ledger has no imports."));
    } else {
        m_table->selectRow(imports.size() - 1);
    }
}

QString PastImports::cell(int row, int column) const
{
    return m_table->item(row, column)->text();
}

void PastImports::askToUndo()
{
    const int row = m_table->currentRow();
    OrderQuestion question({tr("Take an import back"),
                            tr("Take back import %1?\n%2\nAll its entries leave the ledger.")
                                .arg(cell(row, numberColumn), m_table->item(row, fileColumn)->toolTip()),
                            tr("Take it back"), tr("Keep it")},
                           this);
    if (question.isConfirmed()) {
        run({QStringLiteral("undo"), cell(row, numberColumn)});
    }
}

void PastImports::showButtons()
{
    m_undo->setEnabled(m_module.state() == QProcess::NotRunning && m_table->currentRow() >= 0 &&
                       m_table->rowCount() > 0);
}

} // namespace Terminal
