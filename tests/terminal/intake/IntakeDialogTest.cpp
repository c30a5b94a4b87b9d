// What the user sees of an intake, and does with it.
#include "terminal/intake/IntakeDialog.h"
#include "terminal/intake/FileSheet.h"
#include "tests/terminal/support/Controls.h"
#include "tests/terminal/support/IntakeFiles.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QWindow>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class IntakeDialogOfFiles : public IntakeFiles
{
protected:
    IntakeDialogOfFiles() { QApplication::setDoubleClickInterval(10); }
    ~IntakeDialogOfFiles() override { QApplication::setDoubleClickInterval(m_usualInterval); }

    void open(const QStringList &files, bool hidesAmounts = false)
    {
        m_dialog = std::make_unique<IntakeDialog>(
            plan(), IntakeLook{makeTheme(ThemeKind::Dark, RiseColour::Red), hidesAmounts}, nullptr);
        m_dialog->add(files);
        m_dialog->show();
        ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Asking));
        ASSERT_TRUE(waitUntil([this] { return isAttentive(); }));
    }
    /// A double click would be over.
    bool isAttentive() const { return widget<QPushButton>("closeIntake")->isEnabled(); }
    template <typename Widget>
    Widget *widget(const char *name) const
    {
        Widget *const found = m_dialog->findChild<Widget *>(QLatin1String(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    /// All that stands on the sheet and below it.
    std::string words() const
    {
        QStringList all;
        for (const QLabel *const label : m_dialog->findChildren<QLabel *>()) {
            if (label->isVisible()) {
                all.append(label->text());
            }
        }
        return all.join(QLatin1Char('\n')).toStdString();
    }
    QPushButton *import() const { return widget<QPushButton>("importFiles"); }
    void importAll() const
    {
        ASSERT_TRUE(waitUntil([this] { return import()->isEnabled(); }));
        import()->click();
        ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Done));
        ASSERT_TRUE(waitUntil([this] { return isAttentive(); }));
    }
    void choose(const char *kindOfFile) const
    {
        auto *const kind = widget<QComboBox>("fileKind");
        const int row = kind->findText(QLatin1String(kindOfFile));
        kind->setCurrentIndex(row);
        Q_EMIT kind->activated(row);
    }

    const int m_usualInterval = QApplication::doubleClickInterval();
    std::unique_ptr<IntakeDialog> m_dialog;
};

TEST_F(IntakeDialogOfFiles, ShowsCountsAndTheFirstRows)
{
    open({statement()});
    EXPECT_THAT(words(), HasSubstr("Trades: purchases 3"));
    EXPECT_THAT(words(), HasSubstr("3 entries are new"));
    const auto *const rows = widget<QTableWidget>("firstRows");
    EXPECT_EQ(rows->rowCount(), 3);
    EXPECT_EQ(rows->item(0, 4)->text(), QStringLiteral("000001"));
    EXPECT_THAT(words(), HasSubstr("account.db")) << "into which account";
}

TEST_F(IntakeDialogOfFiles, ImportsWithTheKeyboardAlone)
{
    open({statement()});
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Done));
    EXPECT_EQ(listed("trades").size(), 3);
    EXPECT_THAT(words(), HasSubstr("3 entries imported"));
    ASSERT_TRUE(waitUntil([this] { return isAttentive(); }));
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
}

TEST_F(IntakeDialogOfFiles, WritesNothingWhenItIsClosed)
{
    open({statement()});
    QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(m_dialog->result(), QDialog::Rejected);
    EXPECT_FALSE(QFileInfo::exists(ledger()));
}

TEST_F(IntakeDialogOfFiles, TakesBackRightThere)
{
    open({statement()});
    importAll();
    int written = 0;
    QObject::connect(m_dialog.get(), &IntakeDialog::written, m_dialog.get(), [&written] { ++written; });
    widget<QPushButton>("undoImport")->click();
    ASSERT_TRUE(waitUntil([&written] { return written == 1; }));
    EXPECT_EQ(listed("trades").size(), 0);
    EXPECT_FALSE(widget<QPushButton>("undoImport")->isVisible());
    EXPECT_THAT(words(), HasSubstr("Taken back"));
    EXPECT_FALSE(m_dialog->hasChanged());
}

TEST_F(IntakeDialogOfFiles, ShowsFirstTheFileThatNeedsItsUser)
{
    open({statement(), barsWithoutCode()});
    EXPECT_FALSE(import()->isEnabled());
    EXPECT_EQ(widget<QLabel>("fileName")->text(), QStringLiteral("000001.csv"));
    auto *const code = widget<QLineEdit>("answer-code");
    EXPECT_EQ(code->text(), QStringLiteral("000001.SZ")) << "proposed, not taken";
    m_dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    code->setFocus();
    QTest::keyClick(code, Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return import()->isEnabled(); }));
    EXPECT_EQ(m_dialog->intake().stage(), Intake::Stage::Asking) << "Return in a field imports nothing";
    EXPECT_EQ(QApplication::focusWidget(), widget<QLineEdit>("answer-code"));
}

TEST_F(IntakeDialogOfFiles, AsksWhatAnUnknownFileIs)
{
    open({somethingElse()});
    auto *const kind = widget<QComboBox>("fileKind");
    EXPECT_EQ(kind->currentText(), QStringLiteral("What is this file?"));
    EXPECT_FALSE(import()->isEnabled());
    kind->setCurrentIndex(3);
    Q_EMIT kind->activated(3);
    EXPECT_EQ(m_dialog->intake().files()[0].state, IntakeFile::State::LeftOut);
    EXPECT_FALSE(import()->isEnabled()) << "nothing is left to be imported";
}

TEST_F(IntakeDialogOfFiles, LeavesOutAtOnceAllThatCannotBeRead)
{
    open({write(QStringLiteral("a.png"), "\x89PNG\r\n"), somethingElse(), statement(), barsWithoutCode()});
    widget<QPushButton>("leaveOutUnreadable")->click();
    const auto &files = m_dialog->intake().files();
    EXPECT_EQ(files[0].state, IntakeFile::State::LeftOut);
    EXPECT_EQ(files[1].state, IntakeFile::State::LeftOut);
    EXPECT_EQ(files[2].state, IntakeFile::State::Ready);
    EXPECT_EQ(files[3].state, IntakeFile::State::Refused) << "an answer is enough";
    EXPECT_FALSE(widget<QPushButton>("leaveOutUnreadable")->isVisible());
}

TEST_F(IntakeDialogOfFiles, LeavesBadRowsOutWhenItsUserSaysSo)
{
    open({statement("20240102,09:36:00,证券买入,000001,平安银行,10.00,x,1000.00,80000001\n")});
    EXPECT_THAT(words(), HasSubstr("Line 5"));
    widget<QCheckBox>("answer-skip-bad")->click();
    ASSERT_TRUE(waitUntil([this] { return import()->isEnabled(); }));
    EXPECT_THAT(words(), HasSubstr("Left out: Line 5"));
}

TEST_F(IntakeDialogOfFiles, HidesTheFiguresOfTheAccount)
{
    open({statement()}, true);
    EXPECT_THAT(words(), Not(HasSubstr("purchases 3")));
    const auto *const rows = widget<QTableWidget>("firstRows");
    EXPECT_EQ(rows->item(0, 7)->text(), QStringLiteral("***"));
    EXPECT_EQ(rows->item(0, 8)->text(), QStringLiteral("***"));
    EXPECT_EQ(rows->item(0, 6)->text(), QStringLiteral("10.00")) << "prices stay";
}

TEST_F(IntakeDialogOfFiles, FitsOnASmallScreen)
{
    open({statement(), barsWithCode(), somethingElse()});
    EXPECT_LE(m_dialog->minimumSizeHint().width(), 760);
    EXPECT_LE(m_dialog->minimumSizeHint().height(), 440);
    m_dialog->resize(760, 440);
    QApplication::processEvents();
    for (const char *const name : {"importFiles"}) {
        const auto *const button = widget<QPushButton>(name);
        EXPECT_TRUE(
            m_dialog->rect().contains(QRect(button->mapTo(m_dialog.get(), QPoint()), button->size())));
    }
}

TEST_F(IntakeDialogOfFiles, ShowsHowFarItIsAndCancels)
{
    open({statement({}, 20000)});
    import()->click();
    EXPECT_TRUE(m_dialog->findChild<QProgressBar *>()->isVisible());
    m_dialog->reject();
    ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Asking));
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ(listed("imports").size(), 0);
    importAll();
    EXPECT_EQ(listed("imports").size(), 1) << "it goes on as if nothing had been";
}

TEST_F(IntakeDialogOfFiles, TakesMoreFilesThatAreDroppedOnIt)
{
    open({statement()});
    EXPECT_TRUE(drop(m_dialog.get(), {barsWithCode()}));
    ASSERT_TRUE(waitUntil([this] {
        return m_dialog->intake().stage() == Intake::Stage::Asking && m_dialog->intake().files().size() == 2;
    }));
    EXPECT_TRUE(waitUntil([this] { return import()->isEnabled(); }));
}

constexpr int longInterval = 60'000; ///< of a double click, which does not end while a test runs

TEST_F(IntakeDialogOfFiles, TakesNoDoubleClickOnImportForAClickOnWhatComesAfterIt)
{
    open({statement()});
    QApplication::setDoubleClickInterval(longInterval);
    import()->click();
    ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Done));
    const auto *const undo = widget<QPushButton>("undoImport");
    EXPECT_TRUE(undo->isVisible());
    QTest::mouseClick(m_dialog->windowHandle(), Qt::LeftButton, {}, undo->geometry().center());
    QTest::mouseClick(m_dialog->windowHandle(), Qt::LeftButton, {},
                      widget<QPushButton>("closeIntake")->geometry().center());
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    EXPECT_EQ(m_dialog->intake().stage(), Intake::Stage::Done);
    EXPECT_TRUE(m_dialog->isVisible()) << "nobody has read it yet";
}

TEST_F(IntakeDialogOfFiles, LetsTheKeyboardLeaveWhatWasImportedAndNotTakeItBack)
{
    open({statement()});
    m_dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    importAll();
    EXPECT_EQ(QApplication::focusWidget(), widget<QPushButton>("closeIntake"));
}

TEST_F(IntakeDialogOfFiles, TakesNoDoubleClickOnAnAnswerForOneToTheNextQuestion)
{
    open({write(
        QStringLiteral("000001.csv"),
        FormOfDays("Date,Open,High,Low,Close,Volume", "{iso},{o},{h},{l},{c},{lots0}").of(someDays()))});
    QApplication::setDoubleClickInterval(longInterval);
    auto *const unit = widget<QComboBox>("answer-volume");
    unit->setCurrentIndex(2);
    Q_EMIT unit->activated(2);
    ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Asking));
    QApplication::processEvents(); // a pause of no length would be over
    EXPECT_FALSE(widget<QPushButton>("use-code")->isEnabled());
    EXPECT_FALSE(widget<QPushButton>("allFromNames-code")->isEnabled());
    EXPECT_FALSE(import()->isEnabled());
}

TEST_F(IntakeDialogOfFiles, AsksForTheDayOfMinutesAndProposesWhatTheNameSays)
{
    open({ownMinutes()});
    EXPECT_THAT(words(), HasSubstr("\"Day\""));
    EXPECT_THAT(words(), Not(HasSubstr("--")));
    EXPECT_EQ(widget<QLineEdit>("answer-day")->text(), QStringLiteral("20260327"));
    EXPECT_EQ(widget<QLineEdit>("answer-code")->text(), QStringLiteral("600519.SH"));
    widget<QPushButton>("use-day")->click();
    ASSERT_TRUE(comesTo(m_dialog->intake(), Intake::Stage::Asking));
    ASSERT_TRUE(waitUntil([this] { return isAttentive(); }));
    widget<QPushButton>("use-code")->click();
    ASSERT_TRUE(waitUntil([this] { return import()->isEnabled(); })) << words();
    EXPECT_THAT(words(), HasSubstr("2 bars of minutes, 2026-03-27"));
}

TEST_F(IntakeDialogOfFiles, KeepsTheKindThatItsUserSays)
{
    open({somethingElse()});
    choose("Bars of a security");
    ASSERT_TRUE(waitUntil([this] { return widget<QComboBox>("fileKind")->isEnabled(); }));
    EXPECT_EQ(widget<QComboBox>("fileKind")->currentText(), QStringLiteral("Bars of a security"));
    EXPECT_EQ(m_dialog->intake().files()[0].state, IntakeFile::State::Refused);
}

TEST_F(IntakeDialogOfFiles, ShowsNamesOfFilesAsTheyAreWritten)
{
    open({write(QStringLiteral("<b>odd\nname.csv"), "a,b\n1,2\n")});
    EXPECT_THAT(words(), HasSubstr("<b>odd\xEF\xBF\xBDname.csv"));
}

/// Files that ask whatever can be asked.
class IntakeDialogOfFilesThatAsk : public IntakeDialogOfFiles
{
protected:
    QStringList askingFiles()
    {
        const QByteArray header = "成交日期,业务名称,证券代码,证券名称,成交价格,成交数量,成交金额";
        const QByteArray row = "20240102,证券买入,000001,平安银行,10.00,100,1000.00";
        return {barsWithoutCode(),
                write(QStringLiteral("unit.csv"), FormOfDays("code,Date,Open,High,Low,Close,Volume",
                                                             "000001.SZ,{iso},{o},{h},{l},{c},{lots0}")
                                                      .of(someDays())),
                write(QStringLiteral("accounts.csv"),
                      header + ",资金账号\n" + row + ",111111\n" + row + ",222222\n"),
                write(QStringLiteral("words.csv"),
                      header + "\n" + row + "\n" + "20240102,奇怪业务,000001,平安银行,10.00,100,1000.00\n"),
                write(QStringLiteral("undated.csv"),
                      "成交时间,证券代码,买卖标志,成交价格,成交数量\n09:35:00,000001,买入,10.00,100\n"),
                somethingElse()};
    }
    /// Buttons, fields and lists that a user could use now.
    std::vector<const QWidget *> usable() const
    {
        std::vector<const QWidget *> controls;
        for (const QWidget *const widget : m_dialog->findChildren<QWidget *>()) {
            const bool isControl = qobject_cast<const QAbstractButton *>(widget) != nullptr ||
                                   qobject_cast<const QComboBox *>(widget) != nullptr ||
                                   qobject_cast<const QLineEdit *>(widget) != nullptr ||
                                   qobject_cast<const QPlainTextEdit *>(widget) != nullptr ||
                                   qobject_cast<const QAbstractItemView *>(widget) != nullptr;
            const bool isInside = qobject_cast<const QComboBox *>(widget->parentWidget()) != nullptr ||
                                  widget->parentWidget()->inherits("QComboBoxPrivateContainer") ||
                                  widget->parentWidget()->inherits("QTableView");
            if (isControl && !isInside && widget->isVisible() && widget->isEnabled()) {
                controls.push_back(widget);
            }
        }
        return controls;
    }
};

TEST_F(IntakeDialogOfFilesThatAsk, NamesEachControlAndLetsTheKeyboardReachIt)
{
    open(askingFiles());
    QApplication::setActiveWindow(m_dialog.get());
    auto *const list = m_dialog->findChild<QListWidget *>();
    std::set<QString> asked;
    for (int file = 0; file < list->count(); ++file) {
        SCOPED_TRACE(list->item(file)->text().toStdString());
        list->setCurrentRow(file);
        QApplication::processEvents();
        EXPECT_THAT(namelessControls(*m_dialog), ::testing::IsEmpty());
        EXPECT_THAT(controlsWithUnseenFocus(m_dialog.get(), list), ::testing::IsEmpty());
        const auto reachable = reachedByTab(list);
        for (const QWidget *const control : usable()) {
            EXPECT_EQ(reachable.count(control), 1U) << nameOfControl(control);
            asked.insert(control->objectName());
        }
    }
    for (const char *const question : {"code", "volume", "account", "profile", "date"}) {
        EXPECT_EQ(asked.count(QStringLiteral("answer-") + QLatin1String(question)), 1U) << question;
    }
}

TEST_F(IntakeDialogOfFilesThatAsk, ShowsThatTheKeyboardScrollsTheSheet)
{
    open(askingFiles());
    QApplication::setActiveWindow(m_dialog.get());
    auto *const sheet = widget<FileSheet>("fileSheet");
    sheet->setFocus(Qt::TabFocusReason);
    const QImage focused = m_dialog->grab().toImage();
    sheet->clearFocus();
    EXPECT_NE(m_dialog->grab().toImage(), focused);
}

TEST_F(IntakeDialogOfFilesThatAsk, NamesEachControlOfWhatWasImported)
{
    open({statement(), barsWithCode()});
    importAll();
    EXPECT_THAT(namelessControls(*m_dialog), ::testing::IsEmpty());
}

} // namespace
} // namespace Terminal
