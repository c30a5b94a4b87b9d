// The dialog that begins, lists, continues and deletes practices.
#include "terminal/practice/PracticeDialog.h"

#include "terminal/trade/TradeStyle.h"

#include "tests/terminal/practice/SomePractice.h"
#include "tests/terminal/support/Controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>

#include <memory>

namespace Terminal {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class PracticeDialogTest : public SomePractice
{
protected:
    void SetUp() override { importStatement(); }

    PracticeOffer offer() const
    {
        PracticeOffer offer;
        offer.dataFolder = QStringLiteral(TRADECHART_EXAMPLES);
        offer.code = QStringLiteral("600536");
        offer.securityName = QStringLiteral("China Software");
        offer.day = onDay(20230711);
        offer.ledger = ledger();
        offer.price = 50.5;
        offer.moduleProgram = QStringLiteral(TRADEMODULE);
        offer.language = QStringLiteral("en");
        return offer;
    }

    void open(const PracticeOffer &offer)
    {
        m_dialog = std::make_unique<PracticeDialog>(sessions(), offer, nullptr);
        QObject::connect(m_dialog.get(), &PracticeDialog::chosen, m_dialog.get(),
                         [this](const PracticeSession &session) { m_chosen = session; });
        m_dialog->show();
    }

    template <typename Widget>
    Widget *part(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }
    void click(const char *name) const { part<QAbstractButton>(name)->click(); }
    int listed() const { return part<QTableWidget>("practiceList")->rowCount(); }

    QString accountOf(const PracticeSession &session, const QStringList &command)
    {
        QProcess module;
        module.start(QStringLiteral(TRADEMODULE),
                     QStringList({QStringLiteral("--ledger"), session.ledger()}) + command);
        EXPECT_TRUE(module.waitForFinished());
        return QString::fromUtf8(module.readAllStandardOutput());
    }

    std::unique_ptr<PracticeDialog> m_dialog;
    std::optional<PracticeSession> m_chosen;
};

TEST_F(PracticeDialogTest, BeginsWithACopyOfTheAccountUnderAProposedName)
{
    open(offer());
    click("beginPractice");
    ASSERT_TRUE(waitUntil([this] { return m_chosen.has_value(); }));
    EXPECT_EQ(m_chosen->name, QStringLiteral("600536 2023-07-11"));
    EXPECT_EQ(listed(), 1);
    open(offer());
    EXPECT_EQ(part<QLineEdit>("practiceName")->text(), QStringLiteral("600536 2023-07-11 (2)"));
}

TEST_F(PracticeDialogTest, BeginsWithCashAndSharesThatAreChosen)
{
    open(offer());
    click("practiceChoose");
    part<QDoubleSpinBox>("practiceCash")->setValue(12345.5);
    part<QSpinBox>("practiceShares")->setValue(300);
    EXPECT_EQ(part<QDoubleSpinBox>("practiceCost")->value(), 50.5) << "of the shown day";
    click("beginPractice");
    ASSERT_TRUE(waitUntil([this] { return m_chosen.has_value(); }));
    EXPECT_THAT(accountOf(*m_chosen, {QStringLiteral("account")}).toStdString(), HasSubstr("12345.50"));
    EXPECT_THAT(accountOf(*m_chosen, {QStringLiteral("positions")}).simplified().toStdString(),
                HasSubstr("600536 SH"));
}

TEST_F(PracticeDialogTest, SaysWhyOneCannotBeBegun)
{
    PracticeOffer broken = offer();
    broken.ledger = m_folder.filePath(QStringLiteral("nothing.db"));
    open(broken);
    click("beginPractice");
    auto *const notice = part<QLabel>("practiceNotice");
    EXPECT_TRUE(waitUntil([notice] { return notice->text().contains(QStringLiteral("nothing.db")); }));
    EXPECT_FALSE(m_chosen);
    EXPECT_TRUE(part<QPushButton>("beginPractice")->isEnabled());
}

TEST_F(PracticeDialogTest, BeginsNoneWithoutADay)
{
    PracticeOffer days = offer();
    days.day.reset();
    open(days);
    const auto *const form = part<QAbstractButton>("beginPractice")->parentWidget();
    EXPECT_THAT(qobject_cast<const QGroupBox *>(form)->title().toStdString(), HasSubstr("before today"));
    EXPECT_FALSE(part<QPushButton>("beginPractice")->isEnabled());
}

TEST_F(PracticeDialogTest, ContinuesAndDeletesTheOneThatIsChosen)
{
    ASSERT_TRUE(begin(wish()));
    open(offer());
    EXPECT_FALSE(part<QPushButton>("continuePractice")->isEnabled());
    part<QTableWidget>("practiceList")->selectRow(0);
    click("continuePractice");
    ASSERT_TRUE(m_chosen);
    EXPECT_EQ(m_chosen->name, QStringLiteral("morning"));

    const auto answer = [](const char *word) {
        QTimer::singleShot(0, [word] {
            auto *const question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            for (QAbstractButton *const button : question->buttons()) {
                if (button->text() == QLatin1String(word)) {
                    button->click();
                }
            }
        });
    };
    answer("Keep");
    click("deletePractice");
    EXPECT_EQ(listed(), 1);
    answer("Delete");
    click("deletePractice");
    EXPECT_EQ(listed(), 0);
    EXPECT_THAT(sessions().all(), IsEmpty());
}

TEST_F(PracticeDialogTest, NamesEachControl)
{
    open(offer());
    EXPECT_THAT(namelessControls(*m_dialog), IsEmpty());
}

TEST_F(PracticeDialogTest, ShowsWhichControlHasTheKeyboard)
{
    open(offer());
    const ChartTheme theme = makeTheme(ThemeKind::Dark, RiseColour::Red);
    m_dialog->setStyleSheet(windowStyleSheet(theme) + tradeStyleSheet(theme)); // as its window hands it down
    QApplication::setActiveWindow(m_dialog.get());
    EXPECT_THAT(controlsWithUnseenFocus(m_dialog.get(), m_dialog->focusWidget()), IsEmpty());
}

} // namespace
} // namespace Terminal
