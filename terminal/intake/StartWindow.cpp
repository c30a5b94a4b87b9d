#include "terminal/intake/StartWindow.h"

#include "terminal/data/DataFolder.h"
#include "terminal/practice/PracticeDoor.h"
#include "terminal/trade/TradeStyle.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <utility>

namespace Terminal {

namespace {

/// The day of the sample data on which its account holds the security and its price goes both ways.
const auto replayedCode = QStringLiteral("600536");
const auto replayedDay = Trading::TradingDate::of(2023, 7, 11);

QLabel *wrapped(const char *name)
{
    auto *const label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

/// What a first look at an account is for.
QStringList mainOverlays()
{
    return {QStringLiteral("cost"), QStringLiteral("trades"), QStringLiteral("orders")};
}

} // namespace

StartWindow::StartWindow(TerminalOptions options, Facts facts)
    : m_options(std::move(options)),
      m_facts(std::move(facts)),
      m_title(wrapped("startTitle")),
      m_notice(wrapped("startNotice")),
      m_progress(new QProgressBar),
      m_language(new QPushButton),
      m_openOwn(new QPushButton)
{
    setObjectName(QStringLiteral("startWindow"));
    const ChartTheme theme = makeTheme(m_options.theme, m_options.riseColour);
    QApplication::setPalette(widgetPalette(theme));
    setStyleSheet(windowStyleSheet(theme) + tradeStyleSheet(theme) + intakeStyleSheet(theme));
    const auto plan = [this] { return planFor(ownPlaces()); };
    m_door = std::make_unique<IntakeDoor>(
        this, IntakeDoor::Facts{plan, plan, [this, theme] {
                                    return IntakeLook{theme, m_options.hidesAmounts};
                                }});
    connect(m_door.get(), &IntakeDoor::finished, this,
            [this](const AccountPlaces &, const QStringList &codes) { openOwn(codes); });
    connect(m_door.get(), &IntakeDoor::changed, this, &StartWindow::showTexts);
    setUp();
    m_notice->setText(m_facts.notice);
    m_facts.setLanguage(m_options.language);
    showTexts();
    resize(960, 540);
}

StartWindow::~StartWindow() = default;

void StartWindow::setUp()
{
    auto *const page = new QWidget;
    auto *const column = new QVBoxLayout(page);
    column->setContentsMargins(24, 20, 24, 20);
    column->setSpacing(14);
    auto *const head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_language);
    auto *const ways = new QHBoxLayout;
    ways->setSpacing(14);
    m_own = addWay(ways);
    m_example = addWay(ways);
    m_replay = addWay(ways);
    m_own.go->parentWidget()->layout()->addWidget(m_openOwn);
    m_own.go->setProperty("main", true);
    column->addLayout(head);
    column->addStretch(1);
    column->addLayout(ways);
    column->addWidget(m_notice);
    column->addWidget(m_progress);
    column->addStretch(2);
    m_progress->hide();
    auto *const scrolled = new QScrollArea;
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setFocusPolicy(Qt::NoFocus);
    scrolled->setWidget(page);
    setCentralWidget(scrolled);
    connect(m_own.go, &QPushButton::clicked, m_door.get(), &IntakeDoor::chooseFiles);
    connect(m_openOwn, &QPushButton::clicked, this, [this] { openOwn({}); });
    connect(m_example.go, &QPushButton::clicked, this, [this] { openSample(false); });
    connect(m_replay.go, &QPushButton::clicked, this, [this] { openSample(true); });
    connect(m_language, &QPushButton::clicked, this, [this] {
        m_options.language =
            m_options.language == QLatin1String("zh") ? QStringLiteral("en") : QStringLiteral("zh");
        m_facts.setLanguage(m_options.language);
    });
}

StartWindow::Way StartWindow::addWay(QHBoxLayout *row)
{
    auto *const card = new QFrame;
    card->setObjectName(QStringLiteral("startWay"));
    auto *const column = new QVBoxLayout(card);
    column->setContentsMargins(16, 16, 16, 16);
    const Way way{wrapped("wayTitle"), wrapped("wayText"), new QPushButton};
    column->addWidget(way.title);
    column->addWidget(way.text, 1, Qt::AlignTop);
    column->addWidget(way.go);
    card->setMinimumHeight(240);
    row->addWidget(card, 1);
    return way;
}

void StartWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        showTexts();
    }
    QMainWindow::changeEvent(event);
}

void StartWindow::showTexts()
{
    setWindowTitle(tr("Chart terminal"));
    m_title->setText(tr("Your trades on the chart"));
    m_own.title->setText(tr("My statement and bars"));
    m_own.text->setText(
        tr("Drop your broker's statement (交割单, 成交记录) and files of bars anywhere on this window, or "
           "choose them. You see first what was understood; nothing is written before you say so."));
    m_own.go->setText(tr("Choose files..."));
    m_openOwn->setText(tr("Open my account"));
    m_openOwn->setVisible(areUsable(ownPlaces()));
    m_example.title->setText(tr("The example"));
    m_example.text->setText(
        tr("An account with some years of trades in three securities: its cost line, its buys and sells."));
    m_example.go->setText(tr("Open the example"));
    m_replay.title->setText(tr("Practice"));
    m_replay.text->setText(
        tr("A recorded day is played as if it were today, twenty times as fast, with an account of its own. "
           "Place orders, see them dealt; go on later, or look at your trades again."));
    m_replay.go->setText(tr("Practise a day..."));
    for (QPushButton *const sample : {m_example.go, m_replay.go}) {
        sample->setEnabled(!m_facts.sampleFolder.isEmpty() && !m_sample);
        sample->setToolTip(m_facts.sampleFolder.isEmpty() ? tr("The sample data are not installed.")
                                                          : QString());
    }
    // Each language by its own name, for those who read no other.
    m_language->setText(m_options.language == QLatin1String("zh") ? QStringLiteral("English")
                                                                  : QStringLiteral(u"中文"));
}

IntakePlan StartWindow::planFor(const AccountPlaces &places) const
{
    IntakePlan plan;
    plan.terminalProgram = m_facts.terminalProgram;
    plan.moduleProgram = m_options.moduleProgram;
    plan.language = m_options.language;
    plan.places = places;
    return plan;
}

/// The chart is there once there are bars; a statement alone waits for them.
void StartWindow::openOwn(const QStringList &codes)
{
    const AccountPlaces own = ownPlaces();
    const auto folder = DataFolder::open(own.dataFolder);
    if (!folder || folder.value().securities().empty()) {
        m_notice->setText(
            codes.isEmpty()
                ? tr("Bars are missing: drop files of them here, too.")
                : tr("Your statement is in. Bars are missing: drop files of them here, too, of %1.")
                      .arg(codes.join(QStringLiteral(", "))));
        return;
    }
    TerminalOptions options = m_options;
    for (const QString &code : codes) {
        if (findSecurity(folder.value().securities(), code) != nullptr) {
            options.code = code;
            options.given += {QStringLiteral("code"), QStringLiteral("period")};
            break;
        }
    }
    choose(own, options);
}

void StartWindow::openSample(bool practises)
{
    const AccountPlaces places = examplePlaces(m_facts.sampleFolder);
    if (!QFileInfo::exists(places.ledger)) {
        fillSample(practises);
        return;
    }
    if (practises) {
        openPractice();
        return;
    }
    TerminalOptions options = m_options;
    options.code = replayedCode;
    options.given += {QStringLiteral("code"), QStringLiteral("period")};
    choose(places, options);
}

/// The session is begun or continued in the place of this page.
void StartWindow::openPractice()
{
    const AccountPlaces places = examplePlaces(m_facts.sampleFolder);
    const auto folder = DataFolder::open(places.dataFolder);
    const Security *const security =
        folder ? findSecurity(folder.value().securities(), replayedCode) : nullptr;
    PracticeOffer offer;
    offer.dataFolder = places.dataFolder;
    offer.code = replayedCode;
    offer.securityName = security == nullptr ? QString() : security->name;
    offer.day = replayedDay;
    offer.ledger = places.ledger;
    offer.moduleProgram = m_options.moduleProgram;
    offer.language = m_options.language;
    auto *const dialog = new PracticeDialog(PracticeSessions::ofUser(), offer, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &PracticeDialog::chosen, this, [this, dialog](const PracticeSession &session) {
        const QString problem = PracticeDoor::hindrance(session);
        if (!problem.isEmpty()) {
            dialog->showNotice(problem);
            return;
        }
        TerminalOptions options = m_options;
        options.practice = session.name;
        choose({session.dataFolder, session.ledger()}, options);
    });
    dialog->open();
}

/// The first time that the sample is opened, its statement is imported as a user's own would be.
void StartWindow::fillSample(bool practises)
{
    m_sample = std::make_unique<Intake>(planFor(examplePlaces(m_facts.sampleFolder)));
    m_progress->setRange(0, 0);
    m_progress->show();
    connect(
        m_sample.get(), &Intake::changed, this,
        [this, practises] {
            if (!m_sample) {
                return;
            }
            const bool isDone = m_sample->stage() == Intake::Stage::Done;
            if (m_sample->mayImport()) {
                m_sample->import();
            } else if (isDone || m_sample->stage() == Intake::Stage::Asking) {
                const QStringList refusals = m_sample->files().front().report.refusals;
                m_sample.reset();
                m_progress->hide();
                m_notice->setText(refusals.join(QLatin1Char('\n')));
                showTexts();
                if (isDone && QFileInfo::exists(examplePlaces(m_facts.sampleFolder).ledger)) {
                    openSample(practises);
                }
            }
        },
        Qt::QueuedConnection); // the intake that ends here is the one that tells
    m_sample->add({QDir(m_facts.sampleFolder).filePath(QStringLiteral("statement.csv"))});
    showTexts();
}

void StartWindow::choose(const AccountPlaces &places, const TerminalOptions &options)
{
    TerminalOptions chosenOptions = options;
    chosenOptions.dataFolder = places.dataFolder;
    chosenOptions.ledger = places.ledger;
    chosenOptions.overlays = mainOverlays();
    Q_EMIT chosen(chosenOptions);
}

} // namespace Terminal
