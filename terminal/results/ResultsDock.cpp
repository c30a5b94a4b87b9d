#include "terminal/results/ResultsDock.h"

#include "terminal/plugin/UserPrompts.h"
#include "terminal/results/ResultsExport.h"
#include "terminal/results/ResultsView.h"
#include "terminal/trade/PlainText.h"
#include "terminal/trade/ShownAmount.h"
#include "terminal/trade/TradeDock.h"

#include <QAction>
#include <QFileDialog>
#include <QMainWindow>
#include <QShortcut>

namespace Terminal {

namespace {

constexpr auto openKey = Qt::Key_F4;

} // namespace

ResultsDock::ResultsDock(QMainWindow *window, UserPrompts *prompts)
    : m_window(window),
      m_prompts(prompts),
      m_panel(new ResultsPanel),
      m_desk([this] { return m_panel->model()->wanted(); }),
      m_dock(new TradeDock("resultsDock", m_panel, window, Qt::BottomDockWidgetArea))
{
    if (auto *const orders = window->findChild<QDockWidget *>(QStringLiteral("ordersDock"))) {
        window->tabifyDockWidget(orders, m_dock);
    }
    auto *const shortcut = new QShortcut(openKey, window);
    shortcut->setAutoRepeat(false);
    connect(shortcut, &QShortcut::activated, this, &ResultsDock::open);
    connect(m_dock, &QDockWidget::visibilityChanged, this,
            [this](bool isVisible) { m_desk.watch(isVisible); });
    wireDesk();
    wirePanel();
    showTexts();
}

ResultsDock::~ResultsDock()
{
    m_dock->disconnect(this); // it outlives this object, and hides while the window goes
}

void ResultsDock::wireDesk()
{
    connect(&m_desk, &ResultsDesk::came, this, [this](const ResultsPart &part) {
        m_panel->setRefusal({});
        m_panel->model()->take(part);
    });
    connect(&m_desk, &ResultsDesk::refused, m_panel, &ResultsPanel::setRefusal);
    connect(&m_desk, &ResultsDesk::answeringChanged, m_panel, &ResultsPanel::setAnswering);
    connect(&m_desk, &ResultsDesk::costMethodAnswered, this, &ResultsDock::tellMethod);
}

void ResultsDock::wirePanel()
{
    connect(m_panel->model(), &ResultsModel::rowsWanted, &m_desk, &ResultsDesk::ask);
    connect(m_panel, &ResultsPanel::wishChanged, &m_desk, &ResultsDesk::askAnew);
    connect(m_panel, &ResultsPanel::placeAsked, this, &ResultsDock::placeAsked);
    connect(m_panel, &ResultsPanel::costMethodChosen, &m_desk, &ResultsDesk::setCostMethod);
    connect(m_panel, &ResultsPanel::exportAsked, this, &ResultsDock::askForFile);
}

void ResultsDock::start(const QString &address)
{
    m_address = address;
    m_desk.start(address);
}

void ResultsDock::setTheme(const ChartTheme &theme)
{
    m_panel->setTheme(theme);
    m_dock->setTheme(theme);
}

void ResultsDock::setAmountsHidden(bool hidden)
{
    m_hidesAmounts = hidden;
    m_panel->setAmountsHidden(hidden);
}

void ResultsDock::showTexts()
{
    m_dock->setWindowTitle(tr("Results"));
    action()->setText(QStringLiteral("%1 (%2)").arg(
        tr("Results"), QKeySequence(openKey).toString(QKeySequence::NativeText)));
}

QAction *ResultsDock::action() const
{
    return m_dock->toggleViewAction();
}

void ResultsDock::open()
{
    m_dock->show();
    m_dock->raise();
    m_panel->view()->focusRows();
    m_desk.watch(true); // a window that is on no screen tells of no visibility
}

void ResultsDock::openList(ResultGroup group)
{
    m_panel->showList(group);
    open();
}

void ResultsDock::tellMethod(const DeskOutcome &outcome)
{
    switch (outcome.kind) {
    case DeskOutcome::Kind::Accepted:
        m_desk.ask();
        return;
    case DeskOutcome::Kind::Refused:
        m_prompts->show(tr("Costs stay reckoned as they were: %1")
                            .arg(plainText(withoutFigures(outcome.text, m_hidesAmounts))));
        return;
    case DeskOutcome::Kind::NotSent:
    case DeskOutcome::Kind::NoAnswer:
        m_prompts->show(tr("The trading module did not say whether it reckons costs otherwise now."));
        return;
    }
}

void ResultsDock::askForFile()
{
    const QString proposal =
        QStringLiteral("results-%1.csv").arg(Trading::wordOf(m_panel->model()->wish().group));
    const QString path =
        QFileDialog::getSaveFileName(m_window, tr("Export results"), proposal, tr("CSV files (*.csv)"));
    if (!path.isEmpty()) {
        exportTo(path);
    }
}

void ResultsDock::exportTo(const QString &path)
{
    auto *const work = new ResultsExport(m_panel->model()->wish(), path, this);
    connect(work, &ResultsExport::finished, this, [this, work, path](const QString &error) {
        work->deleteLater();
        m_prompts->show(error.isEmpty() ? tr("Written to %1").arg(path)
                                        : tr("%1 was not written: %2").arg(path, plainText(error)));
    });
    work->start(m_address);
}

} // namespace Terminal
