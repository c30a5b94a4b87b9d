// What keyboard and screen reader find in the window, whatever they look for.
#include "terminal/ui/KeyboardBar.h"
#include "terminal/practice/PracticeDialog.h"
#include "terminal/results/ResultsDock.h"
#include "terminal/trade/OutcomeText.h"
#include "terminal/trade/TradeDocks.h"
#include "terminal/ui/KeysDialog.h"
#include "terminal/ui/SecurityBox.h"
#include "terminal/watch/WatchDock.h"
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

#include <set>

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

    static std::string nameOf(const QWidget *widget)
    {
        return (QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') + widget->objectName())
            .toStdString();
    }

    /// Controls below `root` that the keyboard can have and a screen reader would call nothing.
    static std::vector<std::string> nameless(const QWidget &root)
    {
        std::vector<std::string> found;
        for (QWidget *const widget : root.findChildren<QWidget *>()) {
            const bool isControl = widget->isVisibleTo(&root) && (widget->focusPolicy() & Qt::TabFocus) != 0;
            QAccessibleInterface *const seen =
                isControl ? QAccessible::queryAccessibleInterface(widget) : nullptr;
            const bool isInside = widget->objectName().startsWith(QLatin1String("qt_spinbox")) ||
                                  qobject_cast<QComboBox *>(widget->parentWidget()) != nullptr;
            if (seen != nullptr && !isInside && seen->text(QAccessible::Name).isEmpty()) {
                found.push_back(nameOf(widget));
            }
        }
        return found;
    }

    /// What Tab comes to, from the chart on until it is there again.
    std::set<const QWidget *> reached()
    {
        std::set<const QWidget *> widgets;
        constexpr int longestWay = 200;
        m_window->chart()->setFocus();
        for (int step = 0; step < longestWay; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            if (!widgets.insert(QApplication::focusWidget()).second) {
                break;
            }
        }
        return widgets;
    }
};

TEST_F(KeyboardBarTest, EveryControlOfTheWindowHasAName)
{
    for (const ChartPeriod period : {ChartPeriod::Day, ChartPeriod::Minute}) {
        showAll(period);
        EXPECT_THAT(nameless(*m_window), ::testing::IsEmpty());
    }
}

TEST_F(KeyboardBarTest, EveryControlOfAQuestionHasAName)
{
    show({});
    OrderQuestion question(OutcomeText::sendQuestion({}, {}), m_window.get());
    question.show();
    EXPECT_THAT(nameless(question), ::testing::IsEmpty());
    KeysDialog keys(m_window.get());
    keys.show();
    EXPECT_THAT(nameless(keys), ::testing::IsEmpty());
    PracticeOffer offer;
    offer.day = Trading::TradingDate::today();
    PracticeDialog practice(PracticeSessions(QStringLiteral("nowhere")), offer, m_window.get());
    practice.show();
    EXPECT_THAT(nameless(practice), ::testing::IsEmpty());
}

TEST_F(KeyboardBarTest, TabReachesEveryControlThatCanBeUsed)
{
    showAll(ChartPeriod::Minute);
    activateWindow();
    const auto reachable = reached();
    std::vector<std::string> left;
    for (const QAbstractButton *const button : m_window->findChildren<QAbstractButton *>()) {
        const bool isHidden = !button->isVisible() || !button->isEnabled() ||
                              button->objectName() == QLatin1String("qt_toolbar_ext_button") ||
                              button->objectName() == QLatin1String("qt_dockwidget_floatbutton") ||
                              button->parentWidget()->inherits("QTableView");
        const auto *const checked = qobject_cast<const QAbstractButton *>(button);
        const bool isOneOfAGroup = checked->autoExclusive() || checked->group() != nullptr; // arrows go there
        if (!isHidden && !isOneOfAGroup && reachable.count(button) == 0) {
            left.push_back(nameOf(button) + " " + button->text().toStdString());
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
