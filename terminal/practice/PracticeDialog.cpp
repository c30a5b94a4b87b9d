#include "terminal/practice/PracticeDialog.h"

#include "terminal/services/BusInstance.h"

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <utility>

namespace Terminal {

namespace {

constexpr double mostYuan = 1e9;
constexpr int mostShares = 1000000000;
constexpr int longestName = 60; // fits in a title

enum Column { NameColumn, SecurityColumn, DayColumn, BegunColumn, ColumnCount };

QDoubleSpinBox *yuanBox(const char *name, double value, int decimals)
{
    auto *const box = new QDoubleSpinBox;
    box->setObjectName(QLatin1String(name));
    box->setDecimals(decimals);
    box->setRange(0, mostYuan);
    box->setGroupSeparatorShown(true);
    box->setValue(value);
    return box;
}

QPushButton *button(const char *name, const QString &text)
{
    auto *const made = new QPushButton(text);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    return made;
}

} // namespace

PracticeDialog::PracticeDialog(PracticeSessions sessions, PracticeOffer offer, QWidget *parent)
    : QDialog(parent),
      m_sessions(std::move(sessions)),
      m_offer(std::move(offer)),
      m_name(new QLineEdit),
      m_copied(new QRadioButton(tr("Cash and holdings of the account %1").arg(ledgerName(m_offer.ledger)))),
      m_ownChoice(new QRadioButton(tr("Others:"))),
      m_cash(yuanBox("practiceCash", 1000000, 2)),
      m_shares(new QSpinBox),
      m_cost(yuanBox("practiceCost", m_offer.price, 3)),
      m_begin(button("beginPractice", tr("Begin"))),
      m_table(new QTableWidget(0, ColumnCount)),
      m_continue(button("continuePractice", tr("Continue"))),
      m_delete(button("deletePractice", tr("Delete..."))),
      m_notice(new QLabel)
{
    setObjectName(QStringLiteral("practiceDialog"));
    setWindowTitle(tr("Practice"));
    resize(720, 560);
    m_notice->setObjectName(QStringLiteral("practiceNotice"));
    m_notice->setWordWrap(true);
    m_notice->setTextFormat(Qt::PlainText);
    auto *const column = new QVBoxLayout(this);
    column->addWidget(makeForm());
    column->addWidget(makeList(), 1);
    column->addWidget(m_notice);
    connect(m_begin, &QPushButton::clicked, this, &PracticeDialog::begin);
    connect(m_continue, &QPushButton::clicked, this, &PracticeDialog::continueChosen);
    connect(m_delete, &QPushButton::clicked, this, &PracticeDialog::removeChosen);
    showSessions();
}

QGroupBox *PracticeDialog::makeForm()
{
    const QString day = m_offer.day ? m_offer.day->dashedText() : QString();
    auto *const group = new QGroupBox(
        m_offer.day ? tr("Practise %1 %2 on %3").arg(m_offer.securityName, m_offer.code, day)
                    : tr("To practise a recorded day, show its chart of minutes: of a day before today"));
    m_name->setObjectName(QStringLiteral("practiceName"));
    m_name->setMaxLength(longestName);
    m_name->setText(m_sessions.freeName(QStringLiteral("%1 %2").arg(m_offer.code, day)));
    m_copied->setVisible(!m_offer.ledger.isEmpty());
    m_copied->setObjectName(QStringLiteral("practiceCopy"));
    m_ownChoice->setObjectName(QStringLiteral("practiceChoose"));
    (m_offer.ledger.isEmpty() ? m_ownChoice : m_copied)->setChecked(true);
    m_shares->setObjectName(QStringLiteral("practiceShares"));
    m_shares->setRange(0, mostShares);
    m_shares->setSingleStep(100);
    m_shares->setGroupSeparatorShown(true);
    auto *const form = new QFormLayout(group);
    form->addRow(tr("Name"), m_name);
    form->addRow(tr("Begins with"), m_copied);
    form->addRow(QString(), m_ownChoice);
    form->addRow(tr("Cash, yuan"), m_cash);
    form->addRow(tr("Shares of %1").arg(m_offer.code), m_shares);
    form->addRow(tr("Their cost price, yuan"), m_cost);
    form->addRow(QString(), m_begin);
    m_begin->setDefault(true);
    for (QRadioButton *const choice : {m_copied, m_ownChoice}) {
        connect(choice, &QRadioButton::toggled, this, &PracticeDialog::showState);
    }
    connect(m_name, &QLineEdit::textChanged, this, &PracticeDialog::showState);
    connect(m_shares, QOverload<int>::of(&QSpinBox::valueChanged), this, &PracticeDialog::showState);
    return group;
}

QWidget *PracticeDialog::makeList()
{
    auto *const group = new QGroupBox(tr("Practices that are kept"));
    m_table->setObjectName(QStringLiteral("practiceList"));
    m_table->setAccessibleName(group->title());
    m_table->setHorizontalHeaderLabels({tr("Name"), tr("Security"), tr("Day"), tr("Begun")});
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setTabKeyNavigation(false);
    m_table->setShowGrid(false);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &PracticeDialog::showState);
    connect(m_table, &QTableWidget::itemActivated, this, &PracticeDialog::continueChosen);
    auto *const close = button("closePractice", tr("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_continue);
    buttons->addWidget(m_delete);
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto *const column = new QVBoxLayout(group);
    column->addWidget(m_table, 1);
    column->addLayout(buttons);
    return group;
}

void PracticeDialog::showNotice(const QString &text)
{
    m_notice->setText(text);
}

void PracticeDialog::showSessions()
{
    m_listed = m_sessions.all();
    m_table->setRowCount(static_cast<int>(m_listed.size()));
    int row = 0;
    for (const PracticeSession &session : m_listed) {
        const QString cells[] = {session.name, session.code, session.day.dashedText(),
                                 session.begunAt.toString(QStringLiteral("yyyy-MM-dd HH:mm"))};
        int column = 0;
        for (const QString &cell : cells) {
            m_table->setItem(row, column++, new QTableWidgetItem(cell));
        }
        ++row;
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    showState();
}

void PracticeDialog::showState()
{
    const bool isFree = m_beginning == nullptr;
    const bool chooses = m_ownChoice->isChecked();
    m_cash->setEnabled(chooses);
    m_shares->setEnabled(chooses);
    m_cost->setEnabled(chooses && m_shares->value() > 0);
    m_begin->setEnabled(isFree && m_offer.day && !m_name->text().trimmed().isEmpty());
    m_continue->setEnabled(isFree && chosenSession() != nullptr);
    m_delete->setEnabled(isFree && chosenSession() != nullptr);
}

/// Null when no row is.
const PracticeSession *PracticeDialog::chosenSession() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : &m_listed[static_cast<size_t>(rows.first().row())];
}

PracticeWish PracticeDialog::wish() const
{
    PracticeWish wish{m_name->text().trimmed(), m_offer.dataFolder, m_offer.code, m_offer.day.value(), {}};
    if (m_copied->isChecked()) {
        wish.copiedLedger = m_offer.ledger;
    } else {
        wish.cash = m_cash->value();
        wish.shares = m_shares->value();
        wish.costPrice = m_cost->value();
    }
    return wish;
}

void PracticeDialog::begin()
{
    m_beginning = std::make_unique<PracticeBeginning>(m_sessions, wish(), nullptr);
    const auto end = [this] {
        m_beginning.release()->deleteLater();
        showSessions();
    };
    connect(m_beginning.get(), &PracticeBeginning::failed, this, [this, end](const QString &problem) {
        end();
        showNotice(problem);
    });
    connect(m_beginning.get(), &PracticeBeginning::begun, this, [this, end](const PracticeSession &session) {
        end();
        Q_EMIT chosen(session);
    });
    showNotice({});
    showState();
    m_beginning->start(m_offer.moduleProgram, m_offer.language);
}

void PracticeDialog::continueChosen()
{
    if (const PracticeSession *const session = chosenSession()) {
        showNotice({});
        Q_EMIT chosen(PracticeSession(*session));
    }
}

void PracticeDialog::removeChosen()
{
    const PracticeSession session = *chosenSession();
    QMessageBox question(QMessageBox::Question, tr("Practice"),
                         tr("Delete the practice \"%1\" with its orders and trades?").arg(session.name),
                         QMessageBox::NoButton, this);
    question.setTextFormat(Qt::PlainText);
    const QPushButton *const remove = question.addButton(tr("Delete"), QMessageBox::DestructiveRole);
    question.setDefaultButton(question.addButton(tr("Keep"), QMessageBox::RejectRole));
    question.exec();
    if (question.clickedButton() == remove) {
        showNotice(m_sessions.remove(session));
        showSessions();
    }
}

} // namespace Terminal
