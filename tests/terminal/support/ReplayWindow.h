#pragma once

#include "terminal/plugin/HostAxis.h"
#include "terminal/ui/ReplayBar.h"
#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/DayAndTime.h"
#include "tests/terminal/support/OverlayLog.h"
#include "tests/terminal/support/WindowFixture.h"

namespace Terminal {

/// The terminal's window with the chart of a recorded day, to be replayed.
class ReplayWindow : public WindowFixture
{
protected:
    void SetUp() override
    {
        TerminalOptions options;
        options.overlays = QStringList(QStringLiteral("orders"));
        options.size = QSize(1280, 720);
        openWindow({QStringLiteral("000001"), ChartPeriod::Minute, onDay(20180108)}, options);
        startOverlays(TEST_OVERLAYS, openGates());
    }

    void show(ChartPeriod period) { load({QStringLiteral("000001"), period}); }

    ReplayBar *bar() { return m_window->findChild<ReplayBar *>(); }
    size_t shownBars() { return chart()->data().bars.size(); }
    int chartMode() { return HostAxis(chart(), m_window->prompts(), "screen", nullptr).chartMode(); }

    void focusChart()
    {
        m_window->activateWindow();
        chart()->setFocus();
        ASSERT_TRUE(waitUntil([this] { return chart()->hasFocus(); }));
    }
};

} // namespace Terminal
