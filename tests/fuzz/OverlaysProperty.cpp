#include "tests/fuzz/FastClock.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/HeardMessage.h"
#include "tests/fuzz/Properties.h"

#include "tests/support/FakeHost.h"
#include "tests/support/RecordedBus.h"
#include "tradechartobject/ChartObjectFactory.h"
#include "tradechartobject/CombinedOverlay.h"
#include "tradechartobject/objects/CChartTradeObject.h"
#include "tradechartobject/objects/EntrustPoint.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <vector>

using Korvane::AnalyData;
using Korvane::IChartObject;
using Korvane::Period;
using Korvane::tagCodeWithName;

namespace {

constexpr int mostSteps = 120;
constexpr int deepest = 4; ///< acts inside each other

/// A host and its overlay. Inside what the overlay asks for with updateObject, popupMenu, showMessage and
/// confirmBox, and while a question of it goes out, the host does as it likes; inside all else it only
/// answers.
class Host
{
public:
    explicit Host(FuzzInput input) : m_input(std::move(input))
    {
        bus().reset();
        m_axis.onUpdate = [this] {
            m_hasUpdatedOther = m_hasUpdatedOther || m_axis.updated.back() != m_overlay.get();
            actInside();
        };
        m_axis.onPopup = [this] {
            actInside();
            return m_input.below(4) - 1;
        };
        m_axis.onConfirm = [this] {
            actInside();
            return m_input.flag();
        };
        m_axis.onMessage = [this] { actInside(); };
        m_axis.onLookUp = [this] { noteCall(); };
        m_axis.onBarAt = [this] { noteCall(); };
        m_axis.barUnder = [this](double) { return m_input.below(20) - 4; };
        bus().duringSend = [this] { actInside(); };
        bus().answerRequest = [this](const RecordedBus::Message &) {
            actInside();
            return heardMessage(&m_input, {}).payload;
        };
        bus().duringDisconnect = [this] { deliver(); };
    }

    ~Host() { bus().reset(); }
    Q_DISABLE_COPY_MOVE(Host)

    void run()
    {
        while (!m_input.isEmpty() && m_steps < mostSteps) {
            if (!m_overlay) {
                create();
                calc();
            }
            if (m_overlay) { // else it was ended inside of its first bars
                act();
            }
        }
        end();
        m_events.reset();
        QCoreApplication::processEvents();
        demand(!m_wasCalledAfterEnd, "an overlay that had ended called its host");
        demand(bus().endPointCount() == 0, "a bus client outlived its overlay");
        demand(!m_hasUpdatedOther, "an overlay asked for the repaint of another");
    }

private:
    static RecordedBus &bus() { return RecordedBus::instance(); }

    // Its life

    void create()
    {
        m_kind = m_input.below(5);
        m_isShown = false;
        const QByteArray config = "{\"type\":" + QByteArray::number(m_kind == 4 ? m_input.below(3) : m_kind) +
                                  ",\"auto_refresh_time\":" + QByteArray::number(m_input.below(4) - 1) + "}";
        m_axis.popupHasTerminator = m_kind < 3;
        m_axis.expectLines = 1;
        m_overlay.reset(
            m_kind < 3 ? CreateChartObject(m_axis, config.constData())
                       : new CChartTradeObject(m_axis, m_input.flag() ? config.constData() : "{\"type\":1}"));
    }

    void end()
    {
        const std::unique_ptr<IChartObject> ended = std::move(m_overlay);
        if (ended && m_input.flag()) {
            ended->deleteObject();
        }
    }

    // What a host does

    void actInside()
    {
        noteCall();
        if (m_depth >= deepest || m_input.isEmpty()) {
            return;
        }
        if (m_input.below(4) == 3) {
            end();
        }
        for (int acts = m_input.below(3); acts > 0 && m_overlay; --acts) {
            act();
        }
    }

    void noteCall() { m_wasCalledAfterEnd = m_wasCalledAfterEnd || !m_overlay; }

    void act()
    {
        ++m_steps;
        ++m_depth;
        step();
        --m_depth;
    }

    void step()
    {
        switch (m_input.below(16)) {
        case 0:
        case 1:
        case 2:
            calc();
            break;
        case 3:
            paint();
            break;
        case 4:
        case 5:
            press();
            break;
        case 6:
            point();
            break;
        case 7:
            scale();
            break;
        case 8:
        case 9:
        case 10:
        case 11:
            deliver();
            break;
        case 12:
            later();
            break;
        case 13:
            QCoreApplication::processEvents();
            break;
        case 14:
            change();
            break;
        default:
            endOrStop();
            break;
        }
    }

    /// Not while bars are under way: no array is as long as both those before and these. Nor after an overlay
    /// refused its bars, when hosts hide it.
    void paint()
    {
        if (m_calcs == 0 && m_isShown) {
            m_painter.calls.clear();
            m_overlay->paintIt(m_painter);
        }
    }

    void calc()
    {
        if (m_calcs > 0) {
            return; // a host lays its chart out once at a time
        }
        m_bars.resize(static_cast<std::size_t>(m_input.below(8)));
        for (AnalyData &bar : m_bars) {
            bar = someBar();
        }
        m_axis.bars = m_bars;
        const int count = m_input.below(32) == 31 ? -1 : static_cast<int>(m_bars.size());
        const std::vector<AnalyData> borrowed = m_bars; // for the call
        const tagCodeWithName shown = security();
        const Period length = period();
        ++m_calcs;
        try {
            m_isShown = m_overlay->calcIt(shown, borrowed.data(), count, length, 0, 0);
        } catch (const std::length_error &) {
            m_isShown = false;
            demand(count < 0, "a number of bars is refused that there can be");
        }
        --m_calcs;
        m_painter.barCount = static_cast<std::size_t>(std::max(count, 0));
    }

    AnalyData someBar()
    {
        constexpr std::uint32_t days[] = {20240102, 20240103, 20231229, 0, 99999999, 0xFFFFFFFF};
        const double low = m_input.flag() ? 9.0 : m_input.real();
        if (m_input.flag()) {
            return makeDayBar(m_input.oneOf(days), low, low + 2, low + 1);
        }
        return makeMinuteBar(20240102, static_cast<std::uint32_t>(931 + m_input.below(60)), low, low + 2,
                             low + 1);
    }

    tagCodeWithName security()
    {
        switch (m_input.below(8)) {
        case 0:
            return makeSecurity(0, "000001", 7002, "平湖机械");
        case 1:
            return oddSecurity();
        default:
            return makeSecurity(1, "600536", 7001, "江山科技");
        }
    }

    tagCodeWithName oddSecurity()
    {
        tagCodeWithName odd{};
        odd.market = static_cast<std::int8_t>(m_input.below(256) - 128);
        odd.identity = m_input.integer();
        const QByteArray code = m_input.text(39);
        std::memcpy(odd.code, code.constData(), static_cast<std::size_t>(code.size()));
        std::memset(odd.name, m_input.below(256), sizeof odd.name);
        return odd;
    }

    Period period()
    {
        constexpr int periods[] = {4, 21, 4, 21, 0, 7, -1, 22, 0x7FFFFFFF};
        return static_cast<Period>(m_kind == 1 ? 4 : m_kind == 2 ? 21 : m_input.oneOf(periods));
    }

    double pixel() { return m_input.flag() ? m_input.below(1000) : m_input.real(); }

    void press()
    {
        const double x = pixel();
        m_overlay->handleMousePress(x, pixel());
    }

    void point()
    {
        const double x = pixel();
        const double y = pixel();
        m_overlay->hitTest(x, y);
        m_overlay->handleMouseMove(x, y);
        m_overlay->handleMousePressR(x, y);
        m_overlay->handleMouseRelease(x, y);
        m_overlay->handleMouseReleaseR(x, y);
    }

    void scale()
    {
        int untouched = 0;
        m_overlay->calcRatio(0, 0);
        m_overlay->maximizeValue(untouched);
        m_overlay->minimizeValue(untouched);
        demand(m_overlay->type() == Korvane::pluginObjectType && untouched == 0,
               "an overlay is of another type");
    }

    // What it hears

    QByteArray objectId() const
    {
        for (auto sent = bus().sent.crbegin(); sent != bus().sent.crend(); ++sent) {
            const QString id =
                QJsonDocument::fromJson(sent->payload).object().value(QStringLiteral("objectId")).toString();
            if (!id.isEmpty()) {
                return id.toUtf8();
            }
        }
        return {};
    }

    void deliver()
    {
        if (m_depth < deepest + 2) {
            const HeardMessage heard = heardMessage(&m_input, objectId());
            ++m_depth;
            bus().deliver(heard.topic, heard.payload);
            --m_depth;
        }
    }

    /// For a wait of the overlay, in which events run.
    void later()
    {
        QTimer::singleShot(m_input.below(1200), m_events.get(), [this] {
            if (m_overlay && m_depth < deepest + 2 && m_steps < mostSteps) {
                act();
            }
        });
    }

    // What changes

    void change()
    {
        m_axis.mode = m_input.below(4);
        m_axis.hasPriceScale = m_input.flag();
        m_axis.hasScreenId = m_input.below(8) > 0;
        bus().takesMessages = m_input.below(4) > 0;
        if (m_input.flag()) {
            m_axis.low = m_input.real();
            m_axis.high = m_input.real();
            m_axis.markerPixels = m_input.real();
        }
    }

    void endOrStop() { m_input.flag() ? end() : static_cast<void>(m_overlay->deleteObject()); }

    FuzzInput m_input;
    FakeAxis m_axis;
    FakePainter m_painter;
    std::vector<AnalyData> m_bars;
    std::unique_ptr<QObject> m_events = std::make_unique<QObject>(); ///< what is still to happen
    std::unique_ptr<IChartObject> m_overlay;
    int m_kind = 0; ///< as configured, and 3 and 4 the combined one
    int m_depth = 0;
    int m_steps = 0;
    int m_calcs = 0; ///< under way
    bool m_isShown = false;
    bool m_wasCalledAfterEnd = false;
    bool m_hasUpdatedOther = false;
};

} // namespace

void checkOverlays(const QByteArray &bytes)
{
    const FastClock clock;
    Host(FuzzInput(bytes)).run();
}
