#pragma once

#include "tests/support/FakeHost.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ReadingWay.h"
#include "tests/support/RecordedBus.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QTimer>

#include <limits>
#include <memory>
#include <optional>

/// What a host hands over for a price or a place that it does not know.
inline constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A message that an overlay is to ignore, as a row of a data-driven test.
struct Ignored
{
    const char *name;
    const char *topic;
    const char *payload;
};

/// One overlay on a chart: the host drives it, the test speaks for the trading module.
template <class Overlay>
class OverlayTest : public ::testing::Test
{
protected:
    OverlayTest() { bus().reset(); }

    static RecordedBus &bus() { return RecordedBus::instance(); }

    Overlay &create(const QJsonObject &config = {})
    {
        overlay = new Overlay(axis, config, nullptr);
        owner.reset(overlay);
        return *overlay;
    }

    bool calc(const Korvane::tagCodeWithName &security, const std::vector<Korvane::AnalyData> &bars,
              int period, int a = 0, int b = 0)
    {
        axis.bars = bars;
        painter.barCount = bars.size();
        return overlay->calcIt(security, bars.data(), static_cast<int>(bars.size()),
                               static_cast<Korvane::Period>(period), a, b);
    }

    static void hear(const char *topic, const QByteArray &payload) { bus().deliver(topic, payload); }
    static void hear(const char *topic, const QJsonObject &message)
    {
        bus().deliver(topic, readIn(heardIn(), QJsonDocument(message).toJson(QJsonDocument::Compact)));
    }

    /// Compact JSON of every question sent so far.
    static std::vector<QByteArray> questions()
    {
        std::vector<QByteArray> texts;
        for (const RecordedBus::Message &message : bus().sent) {
            texts.push_back(message.payload);
        }
        return texts;
    }

    bool paint()
    {
        painter.calls.clear();
        return overlay->paintIt(painter);
    }

    QTimer *timer() const { return overlay->template findChild<QTimer *>(); }

    /// The host destroys the overlay, as it does: through the interface.
    void destroy()
    {
        overlay = nullptr;
        owner.reset();
    }

    const Korvane::tagCodeWithName shanghai = makeSecurity(1, "600536", 7001, "江山科技");
    const Korvane::tagCodeWithName shenzhen = makeSecurity(0, "000001", 7002, "平湖机械");

    FakeAxis axis;
    FakePainter painter;
    std::unique_ptr<Korvane::IChartObject> owner;
    Overlay *overlay = nullptr;
};
