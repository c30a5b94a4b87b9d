#include "terminal/trade/OrderQuestion.h"
#include "tests/terminal/support/WhenOpen.h"

#include <gmock/gmock.h>

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace Terminal {
namespace {

class OrderQuestionTest : public ::testing::Test
{
protected:
    /// Asks; `answer` does what the user does.
    bool ask(std::function<void(QMessageBox *)> answer)
    {
        OrderQuestion question({QStringLiteral("Send an order"), QStringLiteral("Send?\n<b>Buy</b> 100"),
                                QStringLiteral("A&B"), QStringLiteral("Do not send")},
                               nullptr);
        whenOpen<QMessageBox>(std::move(answer));
        return question.isConfirmed();
    }

    static QAbstractButton *confirming(QMessageBox *box)
    {
        for (QAbstractButton *const button : box->buttons()) {
            if (button != box->defaultButton()) {
                return button;
            }
        }
        return nullptr;
    }

    /// What a held key sends.
    static void repeat(QWidget *to, Qt::Key key)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(to, &event);
        }
    }
};

TEST_F(OrderQuestionTest, IsConfirmedByItsOwnButtonAlone)
{
    EXPECT_TRUE(ask([](QMessageBox *box) { QTest::mouseClick(confirming(box), Qt::LeftButton); }));
    EXPECT_FALSE(ask([](QMessageBox *box) { QTest::mouseClick(box->defaultButton(), Qt::LeftButton); }));
}

TEST_F(OrderQuestionTest, IsAnsweredWithNoByEnterAndEscape)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        EXPECT_FALSE(ask([key](QMessageBox *box) { QTest::keyClick(box, key); })) << key;
    }
}

TEST_F(OrderQuestionTest, IsNotAnsweredByAKeyThatIsHeld)
{
    EXPECT_TRUE(ask([](QMessageBox *box) {
        for (QWidget *const place : {static_cast<QWidget *>(box), static_cast<QWidget *>(confirming(box)),
                                     static_cast<QWidget *>(box->defaultButton())}) {
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
                repeat(place, key);
            }
        }
        ASSERT_TRUE(box->isVisible()) << "it is still open";
        QTest::mouseClick(confirming(box), Qt::LeftButton);
    }));
}

TEST_F(OrderQuestionTest, IsNotAnsweredByTheSecondPressOfADoubleClick)
{
    EXPECT_FALSE(ask([](QMessageBox *box) {
        QAbstractButton *const button = confirming(box);
        for (const QEvent::Type type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, button->rect().center(), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(button, &event);
        }
        ASSERT_TRUE(box->isVisible());
        QTest::keyClick(box, Qt::Key_Escape);
    }));
}

TEST_F(OrderQuestionTest, ShowsItsWordsAsTheyAreWritten)
{
    ask([](QMessageBox *box) {
        for (const QLabel *const label : box->findChildren<QLabel *>()) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << qPrintable(label->text());
        }
        EXPECT_EQ(box->informativeText(), QStringLiteral("<b>Buy</b> 100"));
        EXPECT_EQ(confirming(box)->text(), QStringLiteral("A&&B")) << "shown as A&B";
        QTest::keyClick(box, Qt::Key_Escape);
    });
}

} // namespace
} // namespace Terminal
