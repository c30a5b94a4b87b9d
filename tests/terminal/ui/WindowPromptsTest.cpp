// Questions and lists of the window, whose words come from data files, the overlay library and the bus.
#include "terminal/ui/WindowPrompts.h"
#include "terminal/ui/MessageBar.h"
#include "tests/terminal/support/WhenOpen.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTest>

namespace Terminal {
namespace {

class WindowPromptsTest : public ::testing::Test
{
protected:
    WindowPromptsTest()
    {
        m_window.resize(800, 600);
        m_window.show();
    }

    /// Asks and says no, after `look` at the question.
    void ask(const QString &question, std::function<void(QMessageBox *)> look)
    {
        whenOpen<QMessageBox>([look = std::move(look)](QMessageBox *box) {
            look(box);
            QTest::keyClick(box, Qt::Key_Escape);
        });
        EXPECT_FALSE(m_prompts.confirm(question));
    }

    QWidget m_window;
    WindowPrompts m_prompts{&m_window};
};

/// The picture of `label` with its text taken as it is written.
QImage plainPicture(QLabel *label)
{
    const Qt::TextFormat format = label->textFormat();
    label->setTextFormat(Qt::PlainText);
    const QImage picture = label->grab().toImage();
    label->setTextFormat(format);
    return picture;
}

TEST_F(WindowPromptsTest, ShowEveryLineOfAQuestionAsItIsWritten)
{
    int lines = 0;
    ask(QStringLiteral("<i>Cancel?</i>\n<b>100 shares at 1.00</b><!-- 600519\nsell 5000 × 1405.00"),
        [&lines](QMessageBox *box) {
            for (QLabel *const label : box->findChildren<QLabel *>()) {
                if (!label->text().isEmpty()) {
                    ++lines;
                    EXPECT_EQ(label->grab().toImage(), plainPicture(label)) << qPrintable(label->text());
                }
            }
        });
    EXPECT_EQ(lines, 2) << "what is asked, and what about";
}

TEST_F(WindowPromptsTest, ChooseNoRowByALetterOfItsName)
{
    int chosen = 0;
    whenOpen<QMenu>([](QMenu *menu) {
        QTest::keyClick(menu, Qt::Key_B);
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    chosen = m_prompts.choose({QStringLiteral("first"), QStringLiteral("A&B Holdings")}, QPoint(10, 10));
    EXPECT_EQ(chosen, -1);
}

TEST_F(WindowPromptsTest, ShowAllOfALongMessageInsideTheirWindow)
{
    m_prompts.show(QStringLiteral("/a/folder/of/a/long/path").repeated(20) +
                   QStringLiteral(": is not there"));
    const auto *const bar = m_window.findChild<MessageBar *>();
    EXPECT_TRUE(m_window.rect().contains(bar->geometry()));
    EXPECT_GT(bar->height(), 3 * bar->fontMetrics().height()) << "in several lines";
}

TEST_F(WindowPromptsTest, ShowAShortMessageInOneLine)
{
    m_prompts.show(QStringLiteral("Done"));
    const auto *const bar = m_window.findChild<MessageBar *>();
    EXPECT_LT(bar->height(), 3 * bar->fontMetrics().height());
    EXPECT_LT(bar->width(), 200);
}

} // namespace
} // namespace Terminal
