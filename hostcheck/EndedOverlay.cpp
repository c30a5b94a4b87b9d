#include "hostcheck/EndedOverlay.h"

#include "hostcheck/Report.h"

#include <set>
#include <string>

namespace HostCheck {

namespace {

template <class Result>
Result refuse(const char *operation, Result result)
{
    Report::ofProcess().countCall();
    Report::ofProcess().tell(Rule::UsedAfterEnd, std::string(operation) + " of an overlay that was ended");
    return result;
}

void refuse(const char *operation)
{
    refuse(operation, 0);
}

} // namespace

void EndedOverlay::bury(void *memory)
{
    static auto &graves =
        *new std::set<void *>; // what still points there must find it to the end of the process
    graves.insert(memory);
    ::new (memory) EndedOverlay;
}

EndedOverlay::~EndedOverlay()
{
    Report::ofProcess().tell(Rule::EndedTwice, "the destructor of an overlay that was ended");
}

int EndedOverlay::type() const
{
    return refuse("type", Korvane::pluginObjectType);
}

bool EndedOverlay::deleteObject()
{
    return refuse("deleteObject", true);
}

bool EndedOverlay::calcIt(const Korvane::tagCodeWithName &, const Korvane::AnalyData *, int, Korvane::Period,
                          int, int)
{
    return refuse("calcIt", false);
}

bool EndedOverlay::calcRatio(int, int)
{
    return refuse("calcRatio", false);
}

double EndedOverlay::maximizeValue(int &)
{
    return refuse("maximizeValue", 0.0);
}

double EndedOverlay::minimizeValue(int &)
{
    return refuse("minimizeValue", 0.0);
}

bool EndedOverlay::paintIt(Korvane::IChartPainter &)
{
    return refuse("paintIt", false);
}

int EndedOverlay::hitTest(double, double)
{
    return refuse("hitTest", -1);
}

void EndedOverlay::handleMousePress(double, double)
{
    refuse("handleMousePress");
}

void EndedOverlay::handleMousePressR(double, double)
{
    refuse("handleMousePressR");
}

void EndedOverlay::handleMouseRelease(double, double)
{
    refuse("handleMouseRelease");
}

void EndedOverlay::handleMouseReleaseR(double, double)
{
    refuse("handleMouseReleaseR");
}

void EndedOverlay::handleMouseMove(double, double)
{
    refuse("handleMouseMove");
}

} // namespace HostCheck
