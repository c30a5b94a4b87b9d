// A program outside the tree: built against the installed headers, linked with the installed library.
#include <tradechartobject/ChartObjectFactory.h>
#include <tradechartobject/common/TradeVocabulary.h>
#include <tradechartobject/objects/BSPoint.h>
#include <tradechartobject/objects/CChartTradeObject.h>
#include <tradechartobject/objects/PositionCost.h>

#include <cstdio>

namespace {

class Axis final : public Korvane::IChartAxis
{
public:
    int chartMode() override { return 0; }
    bool visiblePriceRange(double &, double &) override { return false; }
    const char *screenId() override { return "installed"; }
    double markerSize() override { return 16.0; }
    void updateObject(Korvane::IChartObject *) override {}
    int popupMenu(const char **, void *) override { return -1; }
    void showMessage(const char *) override {}
    bool confirmBox(const char *) override { return false; }
    double barToX(int) override { return 0.0; }
    double priceToY(double, int, int) override { return 0.0; }
    int xToBar(double) override { return 0; }
    void barAt(int, Korvane::AnalyData &) override {}
};

} // namespace

int main()
{
    Axis axis;
    const bool refuses = CreateChartObject(axis, R"({"type":99})") == nullptr;
    std::printf("%s %s %s\n", refuses ? "refused" : "created", TradeChart::CmdType::HOLDERCOSTPRICE,
                qPrintable(TradeChart::getMarketId(1)));
    return refuses ? 0 : 1;
}
