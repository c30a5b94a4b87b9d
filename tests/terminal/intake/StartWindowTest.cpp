// The page of the first start.
#include "terminal/intake/StartWindow.h"
#include "terminal/intake/IntakeDialog.h"
#include "terminal/practice/PracticeSessions.h"
#include "tests/terminal/support/Controls.h"
#include "tests/terminal/support/IntakeFiles.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class StartWindowOfAUser : public IntakeFiles
{
protected:
    StartWindowOfAUser() { qputenv("XDG_DATA_HOME", folder().toUtf8()); }
    ~StartWindowOfAUser() override
    {
        m_before.isEmpty() ? static_cast<void>(qunsetenv("XDG_DATA_HOME"))
                           : static_cast<void>(qputenv("XDG_DATA_HOME", m_before));
    }

    void open(const QString &sample = QStringLiteral(TRADECHART_EXAMPLES))
    {
        TerminalOptions options;
        options.moduleProgram = QStringLiteral(TRADEMODULE);
        options.language = QStringLiteral("en");
        m_window = std::make_unique<StartWindow>(
            options,
            StartWindow::Facts{QStringLiteral(TRADETERMINAL), sample, {}, [this](const QString &word) {
                                   m_language = word;
                               }});
        QObject::connect(m_window.get(), &StartWindow::chosen, m_window.get(),
                         [this](const TerminalOptions &chosen) { m_chosen = chosen; });
        m_window->show();
    }
    QPushButton *button(const char *text) const
    {
        for (QPushButton *const candidate : m_window->findChildren<QPushButton *>()) {
            if (candidate->text() == QString::fromUtf8(text)) {
                return candidate;
            }
        }
        return nullptr;
    }
    void bring(const QStringList &files) const
    {
        m_window->door()->bring(files);
        auto *const dialog = m_window->findChild<IntakeDialog *>();
        auto *const import = dialog->findChild<QPushButton *>(QStringLiteral("importFiles"));
        ASSERT_TRUE(waitUntil([import] { return import->isEnabled(); }));
        import->click();
        ASSERT_TRUE(comesTo(dialog->intake(), Intake::Stage::Done));
        dialog->reject();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    std::string notice() const
    {
        return m_window->findChild<QLabel *>(QStringLiteral("startNotice"))->text().toStdString();
    }

    const QByteArray m_before = qgetenv("XDG_DATA_HOME");
    QString m_language;
    std::unique_ptr<StartWindow> m_window;
    std::optional<TerminalOptions> m_chosen;
};

TEST_F(StartWindowOfAUser, LeadsFromOwnFilesToTheirChart)
{
    open();
    EXPECT_FALSE(button("Open my account")->isVisible());
    bring({statement(), barsWithCode()});
    ASSERT_TRUE(m_chosen);
    EXPECT_EQ(m_chosen->code, QStringLiteral("000001"));
    EXPECT_EQ(m_chosen->dataFolder, ownPlaces().dataFolder);
    EXPECT_EQ(m_chosen->ledger, ownPlaces().ledger);
    EXPECT_TRUE(areUsable(ownPlaces()));
    EXPECT_THAT(m_chosen->overlays, ::testing::Contains(QStringLiteral("cost")));
    EXPECT_TRUE(button("Open my account")->isVisible()) << "the next time that the page is seen";
}

TEST_F(StartWindowOfAUser, SaysWhichBarsAStatementWaitsFor)
{
    open();
    bring({statement()});
    EXPECT_FALSE(m_chosen);
    EXPECT_THAT(notice(), HasSubstr("000001"));
    bring({barsWithCode()});
    EXPECT_TRUE(m_chosen);
}

TEST_F(StartWindowOfAUser, OpensTheExampleWithItsTrades)
{
    open();
    button("Open the example")->click();
    ASSERT_TRUE(waitUntil([this] { return m_chosen.has_value(); })) << notice();
    EXPECT_EQ(m_chosen->dataFolder, QStringLiteral(TRADECHART_EXAMPLES));
    EXPECT_EQ(m_chosen->replaySpeed, 0);
    EXPECT_TRUE(QFileInfo::exists(m_chosen->ledger));
    EXPECT_NE(m_chosen->ledger, ownPlaces().ledger);
}

TEST_F(StartWindowOfAUser, PractisesADayOfTheExampleOnALedgerOfItsOwn)
{
    open();
    button("Practise a day...")->click();
    ASSERT_TRUE(waitUntil([this] { return button("Begin") != nullptr; })) << notice();
    button("Begin")->click();
    ASSERT_TRUE(waitUntil([this] { return m_chosen.has_value(); })) << notice();
    const auto session = PracticeSessions::ofUser().find(m_chosen->practice);
    ASSERT_TRUE(session);
    EXPECT_EQ(m_chosen->ledger, session->ledger());
    EXPECT_NE(m_chosen->ledger, examplePlaces(QStringLiteral(TRADECHART_EXAMPLES)).ledger);
}

TEST_F(StartWindowOfAUser, ClosesTheWaysOfASampleThatIsNotThere)
{
    open({});
    EXPECT_FALSE(button("Open the example")->isEnabled());
    EXPECT_FALSE(button("Practise a day...")->isEnabled());
    EXPECT_TRUE(button("Choose files...")->isEnabled());
}

TEST_F(StartWindowOfAUser, SpeaksTheOtherLanguage)
{
    open();
    EXPECT_EQ(m_language, QStringLiteral("en"));
    button("中文")->click();
    EXPECT_EQ(m_language, QStringLiteral("zh"));
}

TEST_F(StartWindowOfAUser, FitsOnASmallScreen)
{
    open();
    m_window->resize(800, 500);
    QApplication::processEvents();
    EXPECT_EQ(m_window->size(), QSize(800, 500));
    for (const char *const text : {"Choose files...", "Open the example", "Practise a day..."}) {
        const QPushButton *const way = button(text);
        EXPECT_TRUE(m_window->rect().contains(QRect(way->mapTo(m_window.get(), QPoint()), way->size())))
            << text;
    }
}

TEST_F(StartWindowOfAUser, NamesEachControlAndLetsTheKeyboardReachIt)
{
    open();
    QApplication::setActiveWindow(m_window.get());
    EXPECT_THAT(namelessControls(*m_window), ::testing::IsEmpty());
    const auto reachable = reachedByTab(button("Choose files..."));
    for (const QPushButton *const way : m_window->findChildren<QPushButton *>()) {
        const bool canBeUsed = way->isVisible() && way->isEnabled();
        EXPECT_EQ(reachable.count(way), canBeUsed ? 1U : 0U) << way->text().toStdString();
    }
}

} // namespace
} // namespace Terminal
