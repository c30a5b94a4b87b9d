#pragma once

#include "terminal/chart/view/ChartView.h"
#include "terminal/session/TradingSession.h"
#include "terminal/ui/MainWindow.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QTest>

#include <algorithm>
#include <memory>

namespace Terminal {

/// The chart that a window opens.
struct OpenedChart
{
    QString code;
    ChartPeriod period = ChartPeriod::Day;
    std::optional<Trading::TradingDate> day = {};
};

/// The terminal's window on a data folder, the sample data unless a test has its own.
class WindowFixture : public ::testing::Test
{
protected:
    void TearDown() override
    {
        m_window.reset();
        m_session.reset();
    }

    /// Makes the window and its trading session, on a bus that nobody has unless a test names one.
    void makeWindow(const TerminalOptions &options, const QString &data = QStringLiteral(TRADECHART_EXAMPLES))
    {
        m_window.reset();
        m_session = std::make_unique<TradingSession>(DataFolder::open(data).value(), m_plan, m_busAddress);
        m_window = std::make_unique<MainWindow>(m_session.get(), options);
    }

    /// Opens the window and shows it.
    void openWindow(const OpenedChart &chart, const TerminalOptions &options,
                    const QString &data = QStringLiteral(TRADECHART_EXAMPLES))
    {
        makeWindow(options, data);
        load(chart);
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void load(const OpenedChart &chart)
    {
        ASSERT_TRUE(m_window->load(chart.code, chart.period, chart.day)) << qPrintable(m_window->loadError());
    }

    /// Starts the overlays that the options name, of the library in this file.
    void startOverlays(const char *library, const BusGates &gates)
    {
        const auto opened = OverlayLibrary::open(QString::fromUtf8(library));
        ASSERT_TRUE(opened) << qPrintable(opened.error());
        m_window->startOverlays(opened.value(), gates);
    }

    void activateWindow()
    {
        m_window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    }

    /// The action of this name; null for none.
    QAction *action(const char *name) const
    {
        const auto actions = m_window->findChildren<QAction *>();
        const auto found = std::find_if(actions.begin(), actions.end(), [name](const QAction *candidate) {
            return candidate->text() == QString::fromUtf8(name);
        });
        return found == actions.end() ? nullptr : *found;
    }

    void speakEnglish()
    {
        action("English")->trigger();
        QApplication::processEvents();
    }

    Replay *replay() const { return m_session->replay(); }
    OrderDesk *desk() const { return m_session->desk(); }
    ChartView *chart() const { return m_window->chart(); }
    const ChartGeometry &geometry() const { return chart()->chartGeometry(); }

    DayPlan m_plan;
    QString m_busAddress = QStringLiteral("/nowhere/bin");
    std::unique_ptr<TradingSession> m_session;
    std::unique_ptr<MainWindow> m_window;
};

/// Gates that nobody has to wait at.
inline BusGates openGates()
{
    const Gate open = [](QObject *, const std::function<void()> &proceed) { proceed(); };
    return {open, open};
}

} // namespace Terminal
