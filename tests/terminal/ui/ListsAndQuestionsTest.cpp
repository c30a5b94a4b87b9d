// Lists and questions of overlays, as their user answers them.
#include "terminal/ui/PopupRow.h"
#include "tests/terminal/support/OverlayWindow.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

namespace Terminal {
namespace {

using ::testing::HasSubstr;

class ListsAndQuestions : public OverlayWindow
{
};

TEST_F(ListsAndQuestions, ChoosesARowWithTheKeyboard)
{
    show({QStringLiteral("trades")});
    whenOpen<QMenu>([](QMenu *menu) {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(overlayLog(), HasSubstr("chose 1"));
}

TEST_F(ListsAndQuestions, ChoosesARowWithTheMouse)
{
    show({QStringLiteral("trades")});
    whenOpen<QMenu>([](QMenu *menu) {
        const QPoint row = menu->actionGeometry(menu->actions().at(2)).center();
        QTest::mouseMove(menu, row);
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, row);
    });
    click(onMark(lastMarkedBar()));
    EXPECT_THAT(overlayLog(), HasSubstr("chose 2"));
}

TEST_F(ListsAndQuestions, OpensTheListAtTheCursor)
{
    show({QStringLiteral("trades")});
    const QPoint position = chart()->canvas()->mapToGlobal(onMark(lastMarkedBar() - 120).toPoint());
    QCursor::setPos(position);
    QRect place;
    whenOpen<QMenu>([&place](QMenu *menu) {
        place = menu->frameGeometry();
        menu->close();
    });
    click(onMark(lastMarkedBar() - 120));
    EXPECT_TRUE(place.adjusted(-8, -8, 8, 8).contains(position))
        << place.x() << "," << place.y() << " for " << position.x() << "," << position.y();
}

TEST_F(ListsAndQuestions, KeepsTheOrderByDefault)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    QString question;
    QString defaultText;
    whenOpen<QMenu>([&](QMenu *menu) {
        whenOpen<QMessageBox>([&](QMessageBox *box) {
            question = box->text() + QLatin1Char('\n') + box->informativeText();
            defaultText = box->defaultButton()->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onOrder());
    EXPECT_EQ(question,
              QStringLiteral(u"撤单?\n买入[测试]\n状态:未成交\n编号:1\n委托价格:10.000\n委托数量:300"));
    EXPECT_EQ(defaultText, QStringLiteral(u"保留委托"));
    EXPECT_THAT(overlayLog(), HasSubstr("kept"));
}

TEST_F(ListsAndQuestions, KeepsTheOrderOnEscape)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    whenOpen<QMenu>([](QMenu *menu) {
        whenOpen<QMessageBox>([](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onOrder());
    EXPECT_THAT(overlayLog(), HasSubstr("kept"));
}

TEST_F(ListsAndQuestions, CancelsAnOrderWhenToldAndTellsTheOutcomeWithoutBlocking)
{
    show({QStringLiteral("orders")}, ChartPeriod::Minute);
    whenOpen<QMenu>([](QMenu *menu) {
        whenOpen<QMessageBox>([](QMessageBox *box) {
            for (QAbstractButton *const button : box->buttons()) {
                if (button != box->defaultButton()) {
                    QTest::mouseClick(button, Qt::LeftButton);
                    return;
                }
            }
        });
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    click(onOrder());
    EXPECT_THAT(overlayLog(), HasSubstr("confirmed"));
    const auto *const message = m_window->findChild<QLabel *>(QStringLiteral("messageBar"));
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->text(), QStringLiteral(u"撤单成功"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(ListsAndQuestions, DressesListsAndQuestionsInItsTheme)
{
    for (const ThemeKind theme : {ThemeKind::Dark, ThemeKind::Light, ThemeKind::Dark}) {
        show({QStringLiteral("orders")}, ChartPeriod::Minute, theme);
        std::vector<QPalette> worn;
        whenOpen<QMenu>([&worn](QMenu *menu) {
            worn.push_back(menu->findChild<PopupRow *>()->palette());
            whenOpen<QMessageBox>([&worn](QMessageBox *box) {
                worn.push_back(box->palette());
                worn.push_back(box->defaultButton()->palette());
                QTest::keyClick(box, Qt::Key_Escape);
            });
            QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        click(onOrder());
        ASSERT_THAT(worn, ::testing::SizeIs(3));
        for (const QPalette &palette : worn) {
            const int text = palette.color(QPalette::WindowText).lightness();
            const int ground = palette.color(QPalette::Window).lightness();
            EXPECT_GT(theme == ThemeKind::Dark ? text - ground : ground - text, 100);
        }
    }
}

} // namespace
} // namespace Terminal
