#pragma once

#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/PrivateDesktop.h"
#include "tests/terminal/support/ScreenReader.h"
#include "tests/terminal/support/TerminalProgramFixture.h"

#include <memory>

namespace Terminal {

/// The built program on a desktop of its own, with a screen reader.
class DesktopProgram : public Program
{
protected:
    void SetUp() override
    {
        const QString missing = PrivateDesktop::missing();
        if (!missing.isEmpty()) {
            GTEST_SKIP() << "there is no " << qPrintable(missing);
        }
        m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.filePath(QStringLiteral("config")));
    }

    ~DesktopProgram() override { closeWindow(); }

    void makeDesktop(const QSize &screen)
    {
        m_desktop = std::make_unique<PrivateDesktop>(screen);
        m_reader = std::make_unique<ScreenReader>();
    }

    /// With the keyboard on the chart of 600519.
    void openWindow(const QStringList &more)
    {
        m_window.setProcessEnvironment(m_desktop->environment(m_environment));
        const QStringList wanted = {QStringLiteral("--data"),   QStringLiteral(TRADECHART_EXAMPLES),
                                    QStringLiteral("--plugin"), QStringLiteral(PLUGIN_FILE),
                                    QStringLiteral("--lang"),   QStringLiteral("en"),
                                    QStringLiteral("--code"),   QStringLiteral("600519")};
        m_window.start(m_program, wanted + more);
        m_desktop->focusWindow(QStringLiteral("600519"));
        ASSERT_TRUE(waitUntil([this] { return isPainted(); }));
        m_reader->begin(m_desktop->busAddress());
        ASSERT_TRUE(waitUntil([this] { return m_reader->knowsAProgram(); }));
    }

    /// True when there is a window on the empty screen: its program has started then.
    bool isPainted() const
    {
        const QImage screen = m_desktop->picture();
        return screen.pixel(screen.rect().center() / 2) != qRgb(0, 0, 0); // the pointer is in the middle
    }

    /// And leaves the desktop.
    void closeWindow()
    {
        m_window.terminate();
        EXPECT_TRUE(m_window.state() == QProcess::NotRunning || m_window.waitForFinished(20000));
        m_reader.reset();
        m_desktop.reset();
        EXPECT_TRUE(waitUntil([this] { return m_runtime.remove(); })); // what it has started ends after it
    }

    std::unique_ptr<PrivateDesktop> m_desktop;
    std::unique_ptr<ScreenReader> m_reader;
    QProcess m_window;
};

} // namespace Terminal
