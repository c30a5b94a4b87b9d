#include "tests/e2e/PluginOnBus.h"

#include "tradechartobject/objects/CChartTradeObject.h"

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
    combinedAxis.high = 200.0;
    combinedAxis.popupHasTerminator = false;
    combinedAxis.expectLines = 1; // a list has one at least
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

PluginOnBus::Overlay PluginOnBus::construct(int type)
{
    const QByteArray config = QByteArrayLiteral("{\"type\":") + QByteArray::number(type) + '}';
    return Overlay(new CChartTradeObject(combinedAxis, config.constData()));
}

bool PluginOnBus::calc(Korvane::IChartObject &overlay, const Korvane::tagCodeWithName &security,
                       const std::vector<Korvane::AnalyData> &bars, int period)
{
    m_barCounts[&overlay] = bars.size();
    axis.bars = bars;
    combinedAxis.bars = bars;
    return overlay.calcIt(security, bars.data(), static_cast<int>(bars.size()),
                          static_cast<Korvane::Period>(period), 0, 0);
}

FakePainter PluginOnBus::paint(Korvane::IChartObject &overlay) const
{
    FakePainter painter;
    painter.barCount = m_barCounts.at(&overlay);
    overlay.paintIt(painter);
    return painter;
}

double PluginOnBus::paintedCost(Korvane::IChartObject &overlay) const
{
    const FakePainter::Call first = paint(overlay).calls.front();
    return first.kind == FakePainter::Call::LineSeries ? first.values.front()
                                                       : std::numeric_limits<double>::quiet_NaN();
}

std::string PluginOnBus::paintedMarks(Korvane::IChartObject &overlay) const
{
    std::string marks(m_barCounts.at(&overlay), ' ');
    for (const FakePainter::Call &call : paint(overlay).calls) {
        for (std::size_t bar = 0; bar < call.values.size(); ++bar) {
            if (call.values[bar] == 1.0) {
                marks[bar] = "BbSsTt"[call.ints[1]];
            }
        }
    }
    return marks;
}
