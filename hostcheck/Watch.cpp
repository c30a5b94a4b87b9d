#include "hostcheck/Watch.h"

#include "hostcheck/CheckedPainter.h"
#include "hostcheck/EventTurns.h"
#include "hostcheck/PixelMapping.h"
#include "hostcheck/Report.h"

#include <QDateTime>
#include <QTextCodec>
#include <QTimeZone>

#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>
#include <utility>

namespace HostCheck {

using Korvane::AnalyData;
using std::chrono::steady_clock;

namespace {

/// Where in the terminal's program or library a call comes from, for addr2line.
std::string placeOf(const void *code)
{
    Dl_info info{};
    if (dladdr(code, &info) == 0 || info.dli_fname == nullptr) {
        return "an unknown place";
    }
    std::ostringstream text;
    text << info.dli_fname << "+0x" << std::hex
         << static_cast<const char *>(code) - static_cast<const char *>(info.dli_fbase);
    return text.str();
}

/// How long an update may wait for its calcIt and its paintIt.
std::chrono::duration<double> patience()
{
    bool isNumber = false;
    const double seconds = qEnvironmentVariable("TRADECHARTOBJECT_CHECK_PATIENCE").toDouble(&isNumber);
    return std::chrono::duration<double>(isNumber ? seconds : 2.0);
}

bool isOverdue(const std::optional<steady_clock::time_point> &asked)
{
    return asked && steady_clock::now() - *asked >= patience();
}

/// The call before, whatever the overlay, and in which turn of the event loop.
struct LastCall
{
    std::string signature;
    long turn = 0;
};

LastCall &lastCall()
{
    static LastCall &call = *new LastCall; // as long as the process, which may make calls to its very end
    return call;
}

std::string textOfCall(const char *operation, std::initializer_list<double> numbers)
{
    std::ostringstream text;
    text.precision(17);
    text << operation;
    for (const double number : numbers) {
        text << ' ' << number;
    }
    return text.str();
}

/// Today here and in Shanghai, whose days differ for hours.
bool isToday(std::int64_t day)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const auto number = [](const QDate &date) {
        return std::int64_t{date.year()} * 10000 + date.month() * 100 + date.day();
    };
    return day == number(now.toLocalTime().date()) || day == number(now.toOffsetFromUtc(8 * 3600).date());
}

bool isUtf8(const char *text)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(text, static_cast<int>(std::strlen(text)), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

} // namespace

// Life

Watch::Watch(Korvane::IChartAxis &axis, WatchedKind kind, int number)
    : m_kind(kind),
      m_name("overlay " + std::to_string(number) + " (" + nameOf(kind) + ")"),
      m_thread(QThread::currentThread()),
      m_axis(axis, *this)
{
}

void Watch::attach(Real real, Korvane::IChartObject *shown)
{
    m_real = std::move(real);
    m_shown = shown;
    for (const Watch *const other : living()) {
        if (&other->m_axis.host() == &m_axis.host() && (isCombined(m_kind) || isCombined(other->m_kind))) {
            tell(Rule::CombinedAxisShared, "with " + other->m_name);
        }
    }
    living().push_back(this);
}

std::vector<Watch *> &Watch::living()
{
    static std::vector<Watch *> &watches =
        *new std::vector<Watch *>; // as long as the process: see lastCall()
    return watches;
}

bool Watch::stop()
{
    if (std::exchange(m_isStopped, true)) {
        tell(Rule::StoppedTwice);
    }
    return m_real->deleteObject();
}

void Watch::end()
{
    m_isEnded = true;
    if (!m_isStopped) {
        tell(Rule::NotStopped);
    }
    if (isOverdue(m_madeAt) && !m_calculatedAt) {
        tell(Rule::NotCalculated);
    }
    if (isOverdue(m_calculatedAt) && !m_isPainted) {
        tell(Rule::NeverPainted);
    }
    if (m_rangesAsked > 0 && m_rangesGiven == 0) {
        tell(Rule::PriceRangeNeverGiven);
    }
    checkUpdates(true);
    checkScaleAsked();
    auto &watches = living();
    watches.erase(std::remove(watches.begin(), watches.end(), this), watches.end());
    if (Answer::isOpen()) {
        tell(Rule::EndInsideAnswer);
        static auto &stillNeeded = *new std::vector<std::shared_ptr<Watch>>;
        stillNeeded.push_back(
            shared_from_this()); // the real one goes on when the answer is there: it has to stay
        return;
    }
    m_real.reset();
}

void Watch::tellNotEnded() const
{
    tell(Rule::NotEnded);
}

// Reports

std::string Watch::place() const
{
    return m_calls.empty() ? "an event of " + m_name : m_calls.back();
}

void Watch::tell(Rule rule, const std::string &detail) const
{
    Report::ofProcess().tell(rule, place(), detail);
}

Tell Watch::teller() const
{
    return [this](Rule rule, const std::string &detail) { tell(rule, detail); };
}

Watch::Call::Call(Watch &watch, const char *operation, const void *caller, const std::string &signature)
    : m_watch(watch.shared_from_this()),
      m_isAllowed(!Answer::isOpen())
{
    EventTurns::watch();
    Report::ofProcess().countCall();
    const std::string place =
        std::string(operation) + " of " + watch.m_name + ", called from " + placeOf(caller);
    if (QThread::currentThread() != watch.m_thread) {
        Report::ofProcess().tell(Rule::OffThread, place); // told before two threads meet in what follows
    }
    watch.m_calls.push_back(place);
    if (!m_isAllowed) {
        watch.tell(Rule::CallInsideAnswer);
    }
    checkDoubled(signature);
}

void Watch::Call::checkDoubled(const std::string &signature) const
{
    const LastCall call{signature.empty() ? std::string() : m_watch->m_name + ' ' + signature,
                        EventTurns::count()};
    const LastCall before = std::exchange(lastCall(), call);
    if (!signature.empty() && before.signature == call.signature && before.turn == call.turn) {
        m_watch->tell(Rule::CallDoubled, signature);
    }
}

Watch::Call::~Call()
{
    lastCall().turn = EventTurns::count(); // a list may have run events
    m_watch->m_calls.pop_back();
}

// The bars

void Watch::keepRecords(const Korvane::tagCodeWithName &code, const AnalyData *bars, int count, int period)
{
    const HandedRecords before = std::exchange(m_handed, HandedRecords{code, period, {}});
    if (count < 0) {
        tell(Rule::CountNegative, std::to_string(count));
    } else if (bars == nullptr && count > 0) {
        tell(Rule::BarsMissing, std::to_string(count));
    } else if (count > 0) {
        m_handed.bars.assign(bars, bars + count);
    }
    checkSecurity(code, count > 0, teller());
    checkBars(m_handed.bars, period, teller());
    if (!m_calculatedAt) {
        return;
    }
    checkChange(before, m_handed, teller());
    const bool isSame = before.isSameSecurity(m_handed);
    m_securityPaintings = isSame ? m_securityPaintings : 0;
    if (m_kind == WatchedKind::CombinedTrades && !isSame) {
        tell(Rule::CombinedSecurityChanged, before.code() + ", " + m_handed.code());
    }
    const bool isBothDaily = before.period == Korvane::DayPeriod && period == Korvane::DayPeriod;
    if (m_kind == WatchedKind::BuySellPoints && isSame && isBothDaily && !before.bars.empty() &&
        !m_handed.bars.empty() &&
        (before.firstDay() != m_handed.firstDay() || before.lastDay() != m_handed.lastDay())) {
        tell(Rule::RangeChanged,
             std::to_string(before.firstDay()) + " to " + std::to_string(before.lastDay()) + ", " +
                 std::to_string(m_handed.firstDay()) + " to " + std::to_string(m_handed.lastDay()));
    }
}

bool Watch::calcIt(const Korvane::tagCodeWithName &code, const AnalyData *bars, int count,
                   Korvane::Period period, int a, int b)
{
    if (m_isStopped) {
        tell(Rule::UsedAfterStop);
    }
    keepRecords(code, bars, count, period);
    m_calculatedAt = m_calculatedAt.value_or(steady_clock::now());
    m_hasRatio = false;
    m_isLaidOut = false;
    if (m_updateAsked) {
        m_repaintOwed = std::exchange(m_updateAsked, std::nullopt);
    }
    const bool isServed = m_real && m_real->calcIt(code, bars, count, period, a, b);
    m_isRefused = !isServed;
    if (isServed || (m_kind == WatchedKind::BuySellPoints && period == Korvane::DayPeriod)) {
        m_arrayLength = m_handed.bars.size();
    }
    m_isServed = m_isServed || isServed;
    checkMode();
    return isServed;
}

void Watch::checkMode() const
{
    if (m_kind != WatchedKind::OrderPoints || m_handed.period != Korvane::IntradayPeriod ||
        m_handed.bars.empty() || !m_real) {
        return;
    }
    const int mode = const_cast<CheckedAxis &>(m_axis).chartMode();
    const std::string detail = "mode " + std::to_string(mode) + ", day " + std::to_string(m_handed.lastDay());
    if (mode != Korvane::TodayChart && mode != Korvane::PastDayChart) {
        tell(Rule::ModeUnknown, detail);
    } else if ((mode == Korvane::TodayChart) != isToday(m_handed.lastDay())) {
        tell(Rule::ModeWrong, detail);
    }
}

// Scale and painting

bool Watch::calcRatio(int a, int b)
{
    m_hasRatio = true;
    m_isScaleAsked = true;
    return m_real->calcRatio(a, b);
}

double Watch::maximizeValue(int &value)
{
    if (!m_hasRatio) {
        tell(Rule::ScaleOutOfOrder, "maximizeValue");
    }
    ++m_maximaAsked;
    return m_real->maximizeValue(value);
}

double Watch::minimizeValue(int &value)
{
    if (!m_hasRatio) {
        tell(Rule::ScaleOutOfOrder, "minimizeValue");
    }
    ++m_minimaAsked;
    return m_real->minimizeValue(value);
}

void Watch::checkScaleAsked()
{
    if (!m_isScaleAsked && m_isServed) {
        tell(Rule::ScaleNotAsked);
    } else if ((m_maximaAsked == 0) != (m_minimaAsked == 0) || (m_isScaleAsked && m_maximaAsked == 0)) {
        tell(Rule::ScaleHalfAsked);
    }
}

bool Watch::paintIt(Korvane::IChartPainter &painter)
{
    const void *volatile address = &painter; // a terminal may hand over null, whatever the compiler thinks
    if (address == nullptr) {
        tell(Rule::PainterMissing);
        return false;
    }
    if (m_isStopped) {
        tell(Rule::UsedAfterStop);
    }
    if (m_isRefused && m_isServed) {
        tell(Rule::PaintedThoughRefused, "period " + std::to_string(m_handed.period));
    }
    checkUpdates(false);
    checkOtherCharts();
    if (!std::exchange(m_isLaidOut, true)) {
        checkMapping(m_axis, m_handed, teller());
    }
    static long paintings = 0;
    m_paintedAt = ++paintings;
    ++m_securityPaintings;
    m_isPainted = true;
    m_repaintOwed.reset();
    CheckedPainter checked(painter, *this, m_arrayLength);
    return m_real->paintIt(checked);
}

/// Beside the others that are painted, too.
void Watch::checkOtherCharts()
{
    for (const Watch *const other : living()) {
        if (other == this) {
            continue;
        }
        const bool isSame = m_handed.isSameSecurity(other->m_handed);
        if (&other->m_axis.host() != &m_axis.host()) {
            // painted in turns with nothing recomputed between: both stand for good
            if (!isSame && m_screenId == other->m_screenId && m_paintedAt != 0 &&
                m_paintedAt < other->m_paintedAt) {
                tell(Rule::ScreenIdShared, m_screenId);
            }
            continue;
        }
        if (!other->m_isLaidOut) {
            continue;
        }
        if (other->m_kind == m_kind) {
            tell(Rule::OverlayDoubled, m_name + ", " + other->m_name);
        }
        const bool isSamePeriod = m_handed.period == other->m_handed.period;
        const auto &bars = m_handed.bars;
        const auto &others = other->m_handed.bars;
        if (isSame && isSamePeriod &&
            (bars.size() != others.size() || (!bars.empty() && (bars.front().time != others.front().time ||
                                                                bars.back().time != others.back().time)))) {
            tell(Rule::BarsDiffer, std::to_string(bars.size()) + " bars, " + std::to_string(others.size()) +
                                       " of " + other->m_name);
        }
    }
}

void Watch::noteUpdate()
{
    if (!m_updateAsked) {
        m_updateAsked = steady_clock::now();
    }
}

void Watch::checkUpdates(bool isEnding) const
{
    if (isOverdue(m_updateAsked)) {
        tell(Rule::UpdateIgnored);
    }
    if (isEnding && isOverdue(m_repaintOwed)) {
        tell(Rule::UpdateNotPainted);
    }
}

// The mouse

void Watch::checkPixel(double x, double y) const
{
    if (!std::isfinite(x) || !std::isfinite(y)) {
        tell(Rule::PixelNotFinite, std::to_string(x) + ", " + std::to_string(y));
    }
}

int Watch::hitTest(double x, double y)
{
    checkPixel(x, y);
    if (m_isPainted) { // before, the chart need not be laid out
        checkBarUnder(m_axis, static_cast<int>(m_handed.bars.size()), x, teller());
    }
    return m_real->hitTest(x, y);
}

void Watch::handleMousePress(double x, double y)
{
    checkPixel(x, y);
    if (m_real->hitTest(x, y) != 0) {
        tell(Rule::PressWithoutHit, textOfCall("pixel", {x, y}));
    }
    m_real->handleMousePress(x, y);
}

// Answers

void Watch::noteScreenId(const char *id)
{
    if (id == nullptr || *id == '\0') {
        tell(Rule::ScreenIdMissing);
        return;
    }
    if (!isUtf8(id)) {
        tell(Rule::ScreenIdUnreadable);
    }
    if (std::strcmp(id, "Global") == 0) {
        tell(Rule::ScreenIdReserved);
    }
    if (!m_screenId.empty() && m_screenId != id) {
        tell(Rule::ScreenIdChanged, m_screenId + ", " + id);
    }
    m_screenId = id;
}

void Watch::notePriceRange(bool isGiven)
{
    if (!m_handed.bars.empty()) {
        ++m_rangesAsked;
        m_rangesGiven += isGiven ? 1 : 0;
    }
}

} // namespace HostCheck
