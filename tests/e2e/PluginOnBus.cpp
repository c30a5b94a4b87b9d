#include "tests/e2e/PluginOnBus.h"

#include <QCoreApplication>
#include <QFile>

#include <cmath>
#include <limits>

PluginOnBus::PluginOnBus()
    : m_busFile(QCoreApplication::applicationDirPath() + QStringLiteral("/endpoint.ini"))
{
    QFile::remove(m_busFile); // of a run that was cut off
    EXPECT_TRUE(QFile::copy(broker.address() + QStringLiteral("/endpoint.ini"), m_busFile));
    m_library.setFileName(QStringLiteral(PLUGIN_FILE));
    m_library.setLoadHints(QLibrary::PreventUnloadHint);
    axis.high = 200.0;
}

PluginOnBus::~PluginOnBus()
{
    QFile::remove(m_busFile);
}

PluginOnBus::Overlay PluginOnBus::create(int type)
{
    using Factory = Korvane::IChartObject *(*)(Korvane::IChartAxis &, const char *);
    const auto factory = reinterpret_cast<Factory>(m_library.resolve("CreateChartObject"));
    EXPECT_NE(factory, nullptr) << m_library.errorString().toStdString();
    const QByteArray config =
        QByteArrayLiteral("{\"auto_refresh_time\":1,\"type\":") + QByteArray::number(type) + '}';
    return Overlay(factory(axis, config.constData()));
}

bool PluginOnBus::calc(Korvane::IChartObject &overlay, const Korvane::tagCodeWithName &security,
                       const std::vector<Korvane::AnalyData> &bars, int period)
{
    m_barCount = bars.size();
    axis.bars = bars;
    return overlay.calcIt(security, bars.data(), static_cast<int>(bars.size()),
                          static_cast<Korvane::Period>(period), 0, 0);
}

double PluginOnBus::paintedCost(Korvane::IChartObject &overlay)
{
    FakePainter painter;
    painter.barCount = m_barCount;
    overlay.paintIt(painter);
    const auto &first = painter.calls.front();
    return first.kind == FakePainter::Call::LineSeries ? first.values.front()
                                                       : std::numeric_limits<double>::quiet_NaN();
}

std::string PluginOnBus::paintedMarks(Korvane::IChartObject &overlay)
{
    FakePainter painter;
    painter.barCount = m_barCount;
    overlay.paintIt(painter);
    std::string marks(m_barCount, ' ');
    for (const FakePainter::Call &call : painter.calls) {
        for (std::size_t bar = 0; bar < m_barCount; ++bar) {
            if (call.values[bar] == 1.0) {
                marks[bar] = "B S T"[call.ints[1]];
            }
        }
    }
    return marks;
}
