#include "hostcheck/CheckedOverlay.h"

#include "hostcheck/EndedOverlay.h"

#include <sstream>

// Who calls, as the code address that the call returns to. Only the called function itself can ask for it.
#define CALLER __builtin_return_address(0)

namespace HostCheck {

using Call = Watch::Call;

namespace {

template <class... Numbers>
std::string signature(const char *operation, Numbers... numbers)
{
    std::ostringstream text;
    text.precision(17);
    text << operation;
    ((text << ' ' << numbers), ...);
    return text.str();
}

} // namespace

CheckedOverlay::~CheckedOverlay()
{
    const Call call(*m_watch, "the destructor", CALLER);
    m_watch->end();
}

/// The memory of an overlay that has ended.
void CheckedOverlay::operator delete(void *memory)
{
    static_assert(sizeof(EndedOverlay) <= sizeof(CheckedOverlay), "one is put in the place of the other");
    EndedOverlay::bury(memory);
}

int CheckedOverlay::type() const
{
    const Call call(*m_watch, "type", CALLER);
    return Korvane::pluginObjectType;
}

bool CheckedOverlay::deleteObject()
{
    const Call call(*m_watch, "deleteObject", CALLER);
    return !call.isAllowed() || m_watch->stop();
}

bool CheckedOverlay::calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                            Korvane::Period period, int a, int b)
{
    const Call call(
        *m_watch, "calcIt", CALLER,
        signature("calcIt", code.identity, static_cast<const void *>(bars), count, int{period}, a, b));
    return call.isAllowed() && m_watch->calcIt(code, bars, count, period, a, b);
}

bool CheckedOverlay::calcRatio(int a, int b)
{
    const Call call(*m_watch, "calcRatio", CALLER, signature("calcRatio", a, b));
    return call.isAllowed() && m_watch->calcRatio(a, b);
}

double CheckedOverlay::maximizeValue(int &value)
{
    const Call call(*m_watch, "maximizeValue", CALLER, "maximizeValue");
    return call.isAllowed() ? m_watch->maximizeValue(value) : 0.0;
}

double CheckedOverlay::minimizeValue(int &value)
{
    const Call call(*m_watch, "minimizeValue", CALLER, "minimizeValue");
    return call.isAllowed() ? m_watch->minimizeValue(value) : 0.0;
}

bool CheckedOverlay::paintIt(Korvane::IChartPainter &painter)
{
    const Call call(*m_watch, "paintIt", CALLER, signature("paintIt", static_cast<const void *>(&painter)));
    return call.isAllowed() && m_watch->paintIt(painter);
}

int CheckedOverlay::hitTest(double x, double y)
{
    const Call call(*m_watch, "hitTest", CALLER, signature("hitTest", x, y));
    return call.isAllowed() ? m_watch->hitTest(x, y) : -1;
}

void CheckedOverlay::handleMousePress(double x, double y)
{
    const Call call(*m_watch, "handleMousePress", CALLER, signature("handleMousePress", x, y));
    if (call.isAllowed()) {
        m_watch->handleMousePress(x, y);
    }
}

// The real ones do nothing in these.

void CheckedOverlay::handleMousePressR(double x, double y)
{
    const Call call(*m_watch, "handleMousePressR", CALLER);
    m_watch->checkPixel(x, y);
}

void CheckedOverlay::handleMouseRelease(double x, double y)
{
    const Call call(*m_watch, "handleMouseRelease", CALLER);
    m_watch->checkPixel(x, y);
}

void CheckedOverlay::handleMouseReleaseR(double x, double y)
{
    const Call call(*m_watch, "handleMouseReleaseR", CALLER);
    m_watch->checkPixel(x, y);
}

void CheckedOverlay::handleMouseMove(double x, double y)
{
    const Call call(*m_watch, "handleMouseMove", CALLER);
    m_watch->checkPixel(x, y);
}

} // namespace HostCheck
