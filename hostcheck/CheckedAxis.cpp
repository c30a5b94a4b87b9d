#include "hostcheck/CheckedAxis.h"

#include "hostcheck/Answer.h"
#include "hostcheck/EventTurns.h"
#include "hostcheck/Report.h"
#include "hostcheck/Watch.h"

#include <QElapsedTimer>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <string>

namespace HostCheck {

using Korvane::AnalyData;

namespace {

const void *tableOf(const Korvane::IChartAxis &axis)
{
    const void *table = nullptr;
    std::memcpy(&table, static_cast<const void *>(&axis), sizeof table);
    return table;
}

constexpr double tallestMarker = 200.0;
constexpr qint64 tooFastForUser = 20; // milliseconds

/// Sees whether a list or a question has waited for somebody: events came, or time went by.
class Wait
{
public:
    Wait() { m_clock.start(); }
    bool wasLong() const { return EventTurns::count() != m_turns || m_clock.elapsed() >= tooFastForUser; }

private:
    QElapsedTimer m_clock;
    const long m_turns = EventTurns::count();
};

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

} // namespace

CheckedAxis::CheckedAxis(Korvane::IChartAxis &host, Watch &watch)
    : m_host(host),
      m_watch(watch),
      m_table(tableOf(host))
{
}

/// What is freed or destroyed has another table, as a rule; to ask it would end the program before the
/// report.
bool CheckedAxis::isThere() const
{
    if (m_watch.isEnded()) {
        return false;
    }
    const bool isThere = tableOf(m_host) == m_table;
    if (!isThere) {
        m_watch.tell(Rule::AxisGone);
    }
    return isThere;
}

int CheckedAxis::chartMode()
{
    const Answer answer(m_watch);
    return isThere() ? m_host.chartMode() : 0;
}

bool CheckedAxis::visiblePriceRange(double &low, double &high)
{
    const Answer answer(m_watch);
    constexpr double unset = std::numeric_limits<double>::quiet_NaN();
    double lowest = unset;
    double highest = unset;
    const bool isGiven = isThere() && m_host.visiblePriceRange(lowest, highest);
    m_watch.notePriceRange(isGiven);
    if (!isGiven) {
        return false;
    }
    checkPriceRange(lowest, highest);
    low = lowest;
    high = highest;
    return true;
}

void CheckedAxis::checkPriceRange(double low, double high) const
{
    const std::string range = std::to_string(low) + " to " + std::to_string(high);
    const double lowestBar = m_watch.handed().lowestPrice();
    constexpr double everything = -1e100; // a terminal may say that every price is in view
    if (!std::isfinite(low) || !std::isfinite(high)) {
        m_watch.tell(Rule::PriceRangeNotFilled, range);
    } else if (low >= high) {
        m_watch.tell(Rule::PriceRangeUpsideDown, range);
    } else if (high < lowestBar || low > m_watch.handed().highestPrice() ||
               (lowestBar > 0.0 && low <= 0.0 && low > everything)) {
        m_watch.tell(Rule::PriceRangeOffBars, range);
    }
    double again[2] = {low, high};
    if (m_host.visiblePriceRange(again[0], again[1]) && !(isSame(again[0], low) && isSame(again[1], high))) {
        m_watch.tell(Rule::MappingUnsteady, "the visible prices");
    }
}

const char *CheckedAxis::screenId()
{
    const Answer answer(m_watch);
    const char *const id = isThere() ? m_host.screenId() : "";
    m_watch.noteScreenId(id);
    return id;
}

double CheckedAxis::markerSize()
{
    const Answer answer(m_watch);
    const double size = isThere() ? m_host.markerSize() : 0.0;
    if (!(size >= 1.0 && size <= tallestMarker)) {
        m_watch.tell(Rule::MarkerSize, std::to_string(size));
    } else if (m_host.markerSize() != size) {
        m_watch.tell(Rule::MappingUnsteady, "the marker's height");
    }
    return size;
}

void CheckedAxis::updateObject(Korvane::IChartObject * /*object*/)
{
    const std::shared_ptr<Watch> kept = m_watch.shared_from_this(); // the terminal may end it in here
    if (isThere()) {
        m_watch.noteUpdate();
        m_host.updateObject(m_watch.shown());
    }
}

int CheckedAxis::lengthOf(const char **lines) const
{
    if (listLength) {
        return listLength();
    }
    int length = 0;
    while (lines[length] != nullptr) {
        ++length;
    }
    return length;
}

int CheckedAxis::popupMenu(const char **lines, void *reserved)
{
    const std::shared_ptr<Watch> kept = m_watch.shared_from_this();
    if (!isThere()) {
        return -1;
    }
    const int length = lengthOf(lines);
    const Wait wait;
    const int row = m_host.popupMenu(lines, reserved);
    if (row >= length) {
        kept->tell(Rule::RowNotInList, "row " + std::to_string(row) + " of " + std::to_string(length));
    }
    if (row >= 0 && kept->kind() == WatchedKind::OrderPoints && !wait.wasLong()) {
        kept->tell(Rule::AnsweredForUser, "popupMenu");
    }
    return row;
}

void CheckedAxis::showMessage(const char *text)
{
    const std::shared_ptr<Watch> kept = m_watch.shared_from_this();
    if (isThere()) {
        m_host.showMessage(text);
    }
}

bool CheckedAxis::confirmBox(const char *text)
{
    const std::shared_ptr<Watch> kept = m_watch.shared_from_this();
    const Wait wait;
    const bool isYes = isThere() && m_host.confirmBox(text);
    if (isYes && !wait.wasLong()) {
        kept->tell(Rule::AnsweredForUser, "confirmBox");
    }
    return isYes;
}

double CheckedAxis::barToX(int bar)
{
    const Answer answer(m_watch);
    const double x = isThere() ? m_host.barToX(bar) : 0.0;
    if (!std::isfinite(x)) {
        m_watch.tell(Rule::BarPixelNotFinite, "bar " + std::to_string(bar));
    }
    return x;
}

double CheckedAxis::priceToY(double price, int one, int two)
{
    const Answer answer(m_watch);
    const double y = isThere() ? m_host.priceToY(price, one, two) : 0.0;
    if (std::isfinite(price) && !std::isfinite(y)) {
        m_watch.tell(Rule::PricePixelNotFinite, "price " + std::to_string(price));
    }
    return y;
}

int CheckedAxis::xToBar(double x)
{
    const Answer answer(m_watch);
    return isThere() ? m_host.xToBar(x) : -1;
}

void CheckedAxis::barAt(int bar, AnalyData &out)
{
    const Answer answer(m_watch);
    AnalyData untouched;
    std::memset(static_cast<void *>(&untouched), 0x5C, sizeof untouched);
    AnalyData copy = untouched;
    if (isThere()) {
        m_host.barAt(bar, copy);
    }
    if (std::memcmp(&copy, &untouched, sizeof copy) == 0) {
        m_watch.tell(Rule::BarNotCopied, "bar " + std::to_string(bar));
        return; // the record of the overlay stays as it was, too
    }
    out = copy;
    checkBarCopy(bar, copy);
}

void CheckedAxis::checkBarCopy(int bar, const AnalyData &copy) const
{
    const std::vector<AnalyData> &bars = m_watch.handed().bars;
    if (bar < 0 || static_cast<std::size_t>(bar) >= bars.size()) {
        return;
    }
    const AnalyData &handed = bars[static_cast<std::size_t>(bar)];
    if (copy.time != handed.time || !isSame(copy.high, handed.high) || !isSame(copy.low, handed.low) ||
        !isSame(copy.close, handed.close)) {
        m_watch.tell(Rule::BarCopyWrong, "bar " + std::to_string(bar) + ", time " +
                                             std::to_string(copy.time) + " instead of " +
                                             std::to_string(handed.time));
    }
}

} // namespace HostCheck
