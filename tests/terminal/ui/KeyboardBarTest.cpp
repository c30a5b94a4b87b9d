// What keyboard and screen reader find in the window, whatever they look for.
#include "terminal/ui/KeyboardBar.h"
#include "terminal/practice/PracticeDialog.h"
#include "terminal/results/ResultsDock.h"
#include "terminal/trade/OutcomeText.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/KeysDialog.h"
#include "terminal/ui/SecurityBox.h"
#include "terminal/watch/WatchDock.h"
#include "tests/terminal/support/Controls.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QCompleter>
#include <QDockWidget>
#include <QLineEdit>
#include <QMessageBox>
#include <QTableWidget>

namespace Terminal {
namespace {

class KeyboardBarTest : public OverlayWindow
{
protected:
    void showAll(ChartPeriod period)
    {
        show({QStringLiteral("orders")}, period);
        for (QDockWidget *const dock : m_window->findChildren<QDockWidget *>()) {
            dock->show();
        }
        QApplication::processEvents();
    }
};

TEST_F(KeyboardBarTest, EveryControlOfTheWindowHasAName)
{
    for (const ChartPeriod period : {ChartPeriod::Day, ChartPeriod::Minute}) {
        showAll(period);
        EXPECT_THAT(namelessControls(*m_window), ::testing::IsEmpty());
    }
}

TEST_F(KeyboardBarTest, EveryControlOfAQuestionHasAName)
{
    show({});
    OrderQuestion question(OutcomeText::sendQuestion({}, {}), m_window.get());
    question.show();
    EXPECT_THAT(namelessControls(question), ::testing::IsEmpty());
    KeysDialog keys(m_window.get());
    keys.show();
    EXPECT_THAT(namelessControls(keys), ::testing::IsEmpty());
    PracticeOffer offer;
    offer.day = Trading::TradingDate::today();
    PracticeDialog practice(PracticeSessions(QStringLiteral("nowhere")), offer, m_window.get());
    practice.show();
    EXPECT_THAT(namelessControls(practice), ::testing::IsEmpty());
}

TEST_F(KeyboardBarTest, TabReachesEveryControlThatCanBeUsed)
{
    showAll(ChartPeriod::Minute);
    activateWindow();
    const auto reachable = reachedByTab(m_window->chart());
    std::vector<std::string> left;
    for (const QAbstractButton *const button : m_window->findChildren<QAbstractButton *>()) {
        const bool isHidden = !button->isVisible() || !button->isEnabled() ||
                              button->objectName() == QLatin1String("qt_toolbar_ext_button") ||
                              button->objectName() == QLatin1String("qt_dockwidget_floatbutton") ||
                              button->parentWidget()->inherits("QTableView");
        const auto *const checked = qobject_cast<const QAbstractButton *>(button);
        const bool isOneOfAGroup = checked->autoExclusive() || checked->group() != nullptr; // arrows go there
        if (!isHidden && !isOneOfAGroup && reachable.count(button) == 0) {
            left.push_back(nameOfControl(button) + " " + button->text().toStdString());
        }
    }
    EXPECT_THAT(left, ::testing::IsEmpty());
}

TEST_F(KeyboardBarTest, ALetterOnTheChartLooksForASecurity)
{
    show({});
    activateWindow();
    key(Qt::Key_0);
    auto *const box = m_window->findChild<SecurityBox *>();
    EXPECT_EQ(box->lineEdit()->text(), QStringLiteral("0"));
    EXPECT_TRUE(box->completer()->popup()->isVisible());
    box->completer()->popup()->hide();
}

TEST_F(KeyboardBarTest, TheQuestionMarkListsAllKeys)
{
    show({});
    activateWindow();
    int rows = 0;
    whenOpen<KeysDialog>([&rows](KeysDialog *dialog) {
        rows = dialog->findChild<QTableWidget *>()->rowCount();
        dialog->reject();
    });
    QTest::keyClick(chart(), '?');
    EXPECT_GT(rows, 20);
}

} // namespace
} // namespace Terminal
