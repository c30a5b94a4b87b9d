#include "terminal/ui/SecurityBox.h"

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace Terminal {
namespace {

class SecurityBoxTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_box.setSecurities({{QStringLiteral("600519"), Market::Shanghai, QStringLiteral(u"贵州茅台")},
                             {QStringLiteral("000001"), Market::Shenzhen, QStringLiteral(u"平安银行")},
                             {QStringLiteral("600536"), Market::Shanghai, QStringLiteral(u"中国软件")}});
        m_box.showSecurity(QStringLiteral("600519"));
        m_box.show();
        m_box.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_box));
    }

    /// What is chosen by typing this and Enter; empty for nothing.
    QString chosenBy(const QString &typed)
    {
        QSignalSpy chosen(&m_box, &SecurityBox::codeChosen);
        m_box.beginSearch({});
        m_box.lineEdit()->insert(typed);
        m_box.completer()->popup()->hide();
        QTest::keyClick(&m_box, Qt::Key_Return);
        return chosen.isEmpty() ? QString() : chosen.front().front().toString();
    }

    SecurityBox m_box;
};

TEST_F(SecurityBoxTest, FindsByCodeNameAndTheFirstLettersOfItsSyllables)
{
    EXPECT_EQ(chosenBy(QStringLiteral("0536")), QStringLiteral("600536"));
    EXPECT_EQ(chosenBy(QStringLiteral(u"软件")), QStringLiteral("600536"));
    EXPECT_EQ(chosenBy(QStringLiteral("PAYH")), QStringLiteral("000001"));
    EXPECT_EQ(chosenBy(QStringLiteral("gzmt")), QStringLiteral("600519"));
}

TEST_F(SecurityBoxTest, FindsNothingAcrossCodeAndName)
{
    EXPECT_EQ(chosenBy(QStringLiteral("9g")), QString());
}

TEST_F(SecurityBoxTest, ShowsTheSecurityOfTheChartAgainWhenNothingFits)
{
    chosenBy(QStringLiteral("xyz"));
    EXPECT_THAT(m_box.currentText().toStdString(), ::testing::StartsWith("600519"));
}

TEST_F(SecurityBoxTest, IsLeftByEscapeAsItWas)
{
    QSignalSpy chosen(&m_box, &SecurityBox::codeChosen);
    QSignalSpy left(&m_box, &SecurityBox::left);
    m_box.beginSearch(QStringLiteral("0"));
    m_box.completer()->popup()->hide();
    QTest::keyClick(&m_box, Qt::Key_Escape);
    EXPECT_TRUE(chosen.isEmpty());
    EXPECT_EQ(left.count(), 1);
    EXPECT_THAT(m_box.currentText().toStdString(), ::testing::StartsWith("600519"));
}

} // namespace
} // namespace Terminal
