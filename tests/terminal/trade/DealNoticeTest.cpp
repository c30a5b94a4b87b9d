#include "terminal/trade/DealNotice.h"

#include "terminal/plugin/UserPrompts.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/SessionBus.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QDBusConnection>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QVariantMap>
#include <QWidget>

namespace Terminal {
namespace {

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
    m_notice.tell(QStringLiteral("dealt"));
    EXPECT_THAT(m_prompts.shown, ElementsAre("dealt"));
    EXPECT_EQ(m_beeps, 0);
}

TEST_F(DealNoticeTest, IsHeardWhenTheUserWishesSo)
{
    m_notice.soundAction()->setChecked(true);
    m_notice.tell(QStringLiteral("dealt"));
    EXPECT_EQ(m_beeps, 1);
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

    m_notice.tell(QStringLiteral("not wished yet"));
    m_notice.desktopAction()->setChecked(true);
    m_notice.tell(QStringLiteral("1 < 2"));
    EXPECT_TRUE(waitUntil([&desktop] { return !desktop.shown.empty(); }));
    EXPECT_THAT(desktop.shown, ElementsAre(::testing::EndsWith(": 600519: 1 &lt; 2")));
    QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
    endProcess(&bus);
}

} // namespace
} // namespace Terminal

#include "DealNoticeTest.moc"
