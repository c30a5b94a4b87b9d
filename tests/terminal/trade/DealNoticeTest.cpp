#include "terminal/trade/DealNotice.h"

#include "terminal/plugin/UserPrompts.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/SessionBus.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QDBusConnection>
#include <QEventLoop>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <QVariantMap>
#include <QWidget>

namespace Terminal {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The part of a desktop that shows notifications; keeps what it is told.
class Notifier : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    std::vector<std::string> shown;

public Q_SLOTS:
    uint Notify(const QString &program, uint /*instead*/, const QString & /*icon*/, const QString &title,
                const QString &text, const QStringList & /*actions*/, const QVariantMap & /*hints*/,
                int /*milliseconds*/) // NOLINT(readability-identifier-naming)
    {
        shown.push_back((program + QLatin1String(": ") + title + QLatin1String(": ") + text).toStdString());
        return static_cast<uint>(shown.size());
    }
};

class Prompts : public UserPrompts
{
public:
    std::vector<std::string> shown;

    int choose(const QStringList & /*rows*/, const QPoint & /*place*/) override { return -1; }
    void show(const QString &text) override { shown.push_back(text.toStdString()); }
    bool confirm(const QString & /*question*/) override { return false; }
};

/// Nothing shows that a pause has ended.
void pass(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

class DealNoticeTest : public ::testing::Test
{
protected:
    DealNoticeTest() { m_window.setWindowTitle(QStringLiteral("600519")); }

    QWidget m_window;
    Prompts m_prompts;
    int m_beeps = 0;
    DealNotice m_notice{&m_window, &m_prompts, [this] { ++m_beeps; }};
};

TEST_F(DealNoticeTest, TellsInTheWindowAndKeepsSilentAtFirst)
{
    m_notice.tell(QStringLiteral("1"), QStringLiteral("dealt"));
    EXPECT_THAT(m_prompts.shown, ElementsAre("dealt"));
    EXPECT_EQ(m_beeps, 0);
}

TEST_F(DealNoticeTest, IsHeardWhenTheUserWishesSo)
{
    m_notice.soundAction()->setChecked(true);
    m_notice.tell(QStringLiteral("1"), QStringLiteral("dealt"));
    EXPECT_EQ(m_beeps, 1);
}

TEST_F(DealNoticeTest, TellsWhatComesShortlyAfterTogetherAndOfEachOrderTheLatest)
{
    m_notice.setPause(20ms);
    m_notice.soundAction()->setChecked(true);
    m_notice.tell(QStringLiteral("1"), QStringLiteral("1 in part"));
    m_notice.tell(QStringLiteral("2"), QStringLiteral("2 in part"));
    m_notice.tell(QStringLiteral("1"), QStringLiteral("1 wholly"));
    m_notice.tell(QStringLiteral("2"), QStringLiteral("2 wholly"));
    EXPECT_THAT(m_prompts.shown, ElementsAre("1 in part")) << "at once";
    ASSERT_TRUE(waitUntil([this] { return m_prompts.shown.size() == 2; }));
    EXPECT_EQ(m_prompts.shown.back(), "1 wholly\n2 wholly");
    EXPECT_EQ(m_beeps, 2);
}

TEST_F(DealNoticeTest, CountsTheOrdersOfAFlood)
{
    m_notice.setPause(20ms);
    for (int order = 1; order <= 40; ++order) {
        m_notice.tell(QString::number(order), QStringLiteral("order %1").arg(order));
    }
    ASSERT_TRUE(waitUntil([this] { return m_prompts.shown.size() == 2; }));
    EXPECT_EQ(m_prompts.shown.back(), "40 orders were dealt, wholly or in part. The last one:\norder 40");
}

TEST_F(DealNoticeTest, TellsAnotherDealAtOnceWhenItHasBecomeQuiet)
{
    m_notice.setPause(1ms);
    m_notice.tell(QStringLiteral("1"), QStringLiteral("one"));
    pass(20ms);
    m_notice.tell(QStringLiteral("2"), QStringLiteral("two"));
    EXPECT_THAT(m_prompts.shown, ElementsAre("one", "two"));
}

TEST_F(DealNoticeTest, ForgetsWhatItHasGatheredWhenAmountsAreHidden)
{
    m_notice.setPause(1ms);
    m_notice.tell(QStringLiteral("1"), QStringLiteral("one"));
    m_notice.tell(QStringLiteral("2"), QStringLiteral("300 at 10.00"));
    m_notice.forget();
    pass(20ms);
    EXPECT_THAT(m_prompts.shown, ElementsAre("one"));
}

TEST_F(DealNoticeTest, IsShownByTheDesktopWhenTheUserWishesSo)
{
    if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty()) {
        GTEST_SKIP() << "there is no dbus-daemon";
    }
    const QTemporaryDir runtime;
    QProcess bus;
    const QString address = startSessionBus(&bus, runtime.path());
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8()); // before this process first asks for it
    Notifier desktop;
    QDBusConnection ofDesktop = QDBusConnection::connectToBus(address, QStringLiteral("desktop"));
    ASSERT_TRUE(ofDesktop.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &desktop,
                                         QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(ofDesktop.registerService(QStringLiteral("org.freedesktop.Notifications")));

    m_notice.setPause(1ms);
    m_notice.tell(QStringLiteral("1"), QStringLiteral("not wished yet"));
    m_notice.desktopAction()->setChecked(true);
    m_notice.tell(QStringLiteral("2"), QStringLiteral("1 < 2"));
    EXPECT_TRUE(waitUntil([&desktop] { return !desktop.shown.empty(); }));
    EXPECT_THAT(desktop.shown, ElementsAre(::testing::EndsWith(": 600519: not wished yet\n1 &lt; 2")));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
    endProcess(&bus);
}

} // namespace
} // namespace Terminal

#include "DealNoticeTest.moc"
