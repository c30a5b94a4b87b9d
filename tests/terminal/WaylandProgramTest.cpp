// The built program under Wayland.
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/SessionBus.h"
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <QLibraryInfo>
#include <QStandardPaths>

namespace Terminal {
namespace {

class WaylandProgram : public Program
{
protected:
    void SetUp() override
    {
        const QString platform = QLibraryInfo::location(QLibraryInfo::PluginsPath) +
                                 QStringLiteral("/platforms/libqwayland-generic.so");
        if (QStandardPaths::findExecutable(QStringLiteral("weston")).isEmpty() || !QFile::exists(platform)) {
            GTEST_SKIP() << "there is no weston, or Qt knows no Wayland here (qtwayland5)";
        }
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
        m_environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    }

    ~WaylandProgram() override { endProcess(&m_compositor); }

    /// On a screen that nobody sees.
    void startCompositor()
    {
        const QString socket = QStringLiteral("screen");
        m_compositor.setProcessEnvironment(m_environment);
        m_compositor.setStandardErrorFile(m_folder.filePath(QStringLiteral("compositor.txt")));
        m_compositor.start(QStringLiteral("weston"),
                           {QStringLiteral("--backend=headless-backend.so"), QStringLiteral("--width=1600"),
                            QStringLiteral("--height=1000"), QStringLiteral("--idle-time=0"),
                            QStringLiteral("--no-config"), QStringLiteral("--socket=") + socket});
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(m_runtime.filePath(socket)); }));
        m_environment.insert(QStringLiteral("WAYLAND_DISPLAY"), socket);
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
        m_environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    }

    QProcess m_compositor;
};

TEST_F(WaylandProgram, OpensItsWindowAndDrawsWithoutAWarning)
{
    startCompositor();
    m_environment.insert(QStringLiteral("WAYLAND_DEBUG"), QStringLiteral("client"));
    QProcess window;
    window.setProcessEnvironment(m_environment);
    window.start(m_program,
                 {QStringLiteral("--data"), QStringLiteral(TRADECHART_EXAMPLES), QStringLiteral("--plugin"),
                  QStringLiteral(PLUGIN_FILE), QStringLiteral("--size"), QStringLiteral("1280x720")});
    QByteArray said;
    EXPECT_TRUE(waitUntil([&] {
        window.waitForReadyRead(10);
        said += window.readAllStandardError();
        return said.contains("wl_surface@") && said.contains(".commit(");
    })) << said.toStdString();
    window.terminate();
    EXPECT_TRUE(window.waitForFinished(20000));
    EXPECT_EQ(window.exitCode(), 0);
    said += window.readAllStandardError();
    for (const QByteArray &line : said.split('\n')) {
        EXPECT_TRUE(line.isEmpty() || line.startsWith('[')) << line.toStdString(); // the protocol's lines do
    }
}

} // namespace
} // namespace Terminal
