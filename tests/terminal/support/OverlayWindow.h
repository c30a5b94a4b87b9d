#pragma once

#include "tests/support/WaitUntil.h"
#include "tests/terminal/support/OverlayLog.h"
#include "tests/terminal/support/Pixels.h"
#include "tests/terminal/support/WhenOpen.h"
#include "tests/terminal/support/WindowFixture.h"

namespace Terminal {

/// The terminal's window with the tests' own overlays on it, driven by mouse and keys.
class OverlayWindow : public WindowFixture
{
protected:
    void show(const QStringList &overlays, ChartPeriod period = ChartPeriod::Day,
              ThemeKind theme = ThemeKind::Dark)
    {
        TerminalOptions options;
        options.overlays = overlays;
        options.theme = theme;
        options.size = QSize(1280, 720);
        overlayLog();
        openWindow({QStringLiteral("600519"), period}, options);
        BusGates gates = openGates();
        gates.answered = [this](QObject *, const std::function<void()> &proceed) {
            m_askedForAnswers += 1;
            if (m_moduleAnswers) {
                proceed();
            }
        };
        startOverlays(TEST_OVERLAYS, gates);
        QApplication::processEvents();
    }

    QImage canvasPicture() { return chart()->canvas()->grab().toImage(); }

    void moveTo(const QPointF &position)
    {
        // From elsewhere: where the pointer is already, nothing would be told.
        QTest::mouseMove(chart()->canvas(), position.toPoint() + QPoint(40, 0));
        QApplication::processEvents();
        QTest::mouseMove(chart()->canvas(), position.toPoint());
        QApplication::processEvents();
    }
    void click(const QPointF &position, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(chart()->canvas(), button, Qt::NoModifier, position.toPoint());
    }
    void key(Qt::Key key)
    {
        QTest::keyClick(chart(), key);
        QApplication::processEvents();
    }
    Qt::CursorShape cursor() { return chart()->canvas()->cursor().shape(); }

    /// Of the test's cost line.
    double costPrice()
    {
        const Bars &bars = chart()->data().bars;
        return bars[bars.size() - 10].close;
    }

    /// The glyph of the last visible bar with a mark of the test's mark overlay.
    int lastMarkedBar()
    {
        const int last = static_cast<int>(chart()->data().bars.size()) - 1;
        return last - last % 3;
    }
    QPointF onMark(int bar)
    {
        const double high = chart()->data().bars[static_cast<size_t>(bar)].high;
        return {geometry().barToX(bar), geometry().priceToY(high) - 10};
    }
    QPointF onOrder()
    {
        const int bar = static_cast<int>(chart()->data().bars.size()) / 2 - 45;
        return {geometry().barToX(bar),
                geometry().priceToY((geometry().lowPrice + geometry().highPrice) / 2) + 8};
    }

    /// Few bars with trades, so that every mark is one of its own.
    void showMarks()
    {
        show({QStringLiteral("trades")});
        QObject::connect(chart(), &ChartView::pointedBarChanged, chart(),
                         [this](int bar) { m_pointed = bar; });
        const auto last = static_cast<double>(chart()->data().bars.size());
        chart()->setSpan({last - 40, last});
        QApplication::processEvents();
    }

    bool m_moduleAnswers = true;
    int m_askedForAnswers = 0;
    int m_pointed = -1; ///< the bar that the chart points at, once marks are shown
};

} // namespace Terminal
