// The ways of files into a window.
#include "terminal/intake/IntakeDoor.h"
#include "terminal/intake/IntakeDialog.h"
#include "terminal/intake/PastImports.h"
#include "tests/terminal/support/Controls.h"
#include "tests/terminal/support/IntakeFiles.h"
#include "tests/terminal/support/WhenOpen.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

namespace Terminal {
namespace {

class IntakeDoorOfAWindow : public IntakeFiles
{
protected:
    IntakeDoorOfAWindow()
        : m_door(&m_window, {[this] { return plan(); }, [this] { return plan(); },
                             [] {
                                 return IntakeLook{makeTheme(ThemeKind::Dark, RiseColour::Red), false};
                             }})
    {
        m_window.setCentralWidget(new QLineEdit);
        m_window.show();
    }
    IntakeDialog *dialog() const { return m_window.findChild<IntakeDialog *>(); }

    QMainWindow m_window;
    IntakeDoor m_door;
};

TEST_F(IntakeDoorOfAWindow, TakesFilesThatAreDroppedAnywhere)
{
    EXPECT_TRUE(drop(m_window.centralWidget(), {statement(), barsWithCode()}));
    ASSERT_NE(dialog(), nullptr);
    ASSERT_TRUE(comesTo(dialog()->intake(), Intake::Stage::Asking));
    EXPECT_EQ(dialog()->intake().files().size(), 2U);
    EXPECT_EQ(qobject_cast<QLineEdit *>(m_window.centralWidget())->text(), QString());
}

TEST_F(IntakeDoorOfAWindow, LeavesTextThatIsDroppedToItsField)
{
    QMimeData text;
    text.setText(QStringLiteral("12.50"));
    drop(m_window.centralWidget(), text);
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(qobject_cast<QLineEdit *>(m_window.centralWidget())->text(), QStringLiteral("12.50"));
}

TEST_F(IntakeDoorOfAWindow, BringsMoreFilesIntoTheOpenDialog)
{
    m_door.bring({statement()});
    ASSERT_TRUE(comesTo(dialog()->intake(), Intake::Stage::Asking));
    m_door.bring({barsWithCode()});
    EXPECT_EQ(m_window.findChildren<IntakeDialog *>().size(), 1);
    EXPECT_TRUE(waitUntil([this] { return dialog()->intake().files().size() == 2; }));
}

TEST_F(IntakeDoorOfAWindow, TellsWhatWasTakenInWhenTheUserIsDone)
{
    QStringList codes;
    int changes = 0;
    QObject::connect(&m_door, &IntakeDoor::changed, &m_door, [&changes] { ++changes; });
    QObject::connect(&m_door, &IntakeDoor::finished, &m_door,
                     [&codes](const AccountPlaces &, const QStringList &taken) { codes = taken; });
    m_door.bring({statement()});
    auto *const import = dialog()->findChild<QPushButton *>(QStringLiteral("importFiles"));
    ASSERT_TRUE(waitUntil([import] { return import->isEnabled(); }));
    import->click();
    ASSERT_TRUE(waitUntil([&changes] { return changes == 1; }));
    dialog()->reject();
    EXPECT_EQ(codes, QStringList(QStringLiteral("000001")));
}

TEST_F(IntakeDoorOfAWindow, TakesAPastImportBackAfterAQuestion)
{
    Intake intake(plan());
    intake.add({statement()});
    ASSERT_TRUE(waitUntil([&intake] { return intake.mayImport(); }));
    intake.import();
    ASSERT_TRUE(comesTo(intake, Intake::Stage::Done));

    PastImports list(plan(), IntakeLook{makeTheme(ThemeKind::Light, RiseColour::Red), false}, &m_window);
    list.show();
    const auto *const table = list.findChild<QTableWidget *>();
    ASSERT_TRUE(waitUntil([table] { return table->rowCount() == 1; }));
    bool isWritten = false;
    QObject::connect(&list, &PastImports::written, &list, [&isWritten] { isWritten = true; });
    auto *const undo = list.findChild<QPushButton *>(QStringLiteral("undoPastImport"));
    whenOpen<QMessageBox>([](QMessageBox *question) { question->reject(); });
    undo->click();
    EXPECT_EQ(listed("imports").size(), 1) << "no is the default";
    whenOpen<QMessageBox>([](QMessageBox *question) {
        const auto buttons = question->buttons();
        for (QAbstractButton *const button : buttons) {
            if (question->buttonRole(button) == QMessageBox::AcceptRole) {
                button->click();
            }
        }
    });
    undo->click();
    ASSERT_TRUE(waitUntil([&isWritten] { return isWritten; }));
    EXPECT_TRUE(waitUntil([table] { return table->rowCount() == 0; }));
    EXPECT_EQ(listed("trades").size(), 0);
}

TEST_F(IntakeDoorOfAWindow, ShowsEachColumnOfPastImportsBesideALongName)
{
    const QString file =
        folder() + QStringLiteral(u"/2024年1月至12月_某某证券股份有限公司_资金账号880001_历史成交.csv");
    ASSERT_TRUE(QFile::copy(statement(), file));
    Intake intake(plan());
    intake.add({file});
    ASSERT_TRUE(waitUntil([&intake] { return intake.mayImport(); }));
    intake.import();
    ASSERT_TRUE(comesTo(intake, Intake::Stage::Done));

    PastImports list(plan(), IntakeLook{makeTheme(ThemeKind::Light, RiseColour::Red), false}, &m_window);
    list.resize(800, 400);
    list.show();
    const auto *const table = list.findChild<QTableWidget *>();
    ASSERT_TRUE(waitUntil([table] { return table->rowCount() == 1; }));
    QApplication::processEvents();
    const QRect last = table->visualItemRect(table->item(0, table->columnCount() - 1));
    EXPECT_TRUE(table->viewport()->rect().contains(last));
    EXPECT_EQ(table->item(0, 2)->toolTip(), file);
}

TEST_F(IntakeDoorOfAWindow, NamesEachControlOfPastImports)
{
    PastImports list(plan(), IntakeLook{makeTheme(ThemeKind::Light, RiseColour::Red), false}, &m_window);
    list.show();
    const auto labels = list.findChildren<QLabel *>();
    ASSERT_TRUE(waitUntil([&labels] { // the module has said that there is no ledger yet
        return std::any_of(labels.begin(), labels.end(),
                           [](QLabel *label) { return !label->text().isEmpty(); });
    }));
    EXPECT_THAT(namelessControls(list), ::testing::IsEmpty());
}

} // namespace
} // namespace Terminal
