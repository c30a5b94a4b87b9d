#include "tests/hostcheck/FaultyBorder.h"

#include <QCoreApplication>
#include <QTimer>

#include <array>
#include <cmath>
#include <cstring>
#include <exception>
#include <limits>
#include <thread>

using Korvane::AnalyData;

namespace {

const char *const calls[] = {"deleteObject",  "the destructor", "calcIt",  "calcRatio",       "maximizeValue",
                             "minimizeValue", "paintIt",        "hitTest", "handleMousePress"};
/// None of these does anything; so to leave them out or to double them is no fault.
const char *const idleCalls[] = {"type", "handleMousePressR", "handleMouseRelease", "handleMouseReleaseR",
                                 "handleMouseMove"};
const char *const drawings[] = {"endPaint", "drawSeriesLabel", "drawLineSeries", "drawMarkerSeries",
                                "drawMarker"};
const char *const wholeNumbers[] = {"chartMode", "xToBar"};
const char *const numbers[] = {"low",       "high",      "markerSize", "barToX",     "priceToY",
                               "copy.time", "copy.high", "copy.low",   "copy.close", "bar.time",
                               "bar.high",  "bar.low",   "bar.close"};
const char *const answers[] = {"chartMode", "visiblePriceRange", "screenId", "markerSize",
                               "barToX",    "priceToY",          "xToBar",   "barAt"};
const char *const wholeWays[] = {"plus one", "minus one", "negative", "zero", "huge", "unsteady"};
const char *const realWays[] = {"not a number", "infinite"};

const Fault singles[] = {
    {"calcRatio", "after the others"},
    {"the axis", "gone too early"},
    {"updateObject", "left out"},
    {"visiblePriceRange", "left out"},
    {"visiblePriceRange", "not filled"},
    {"visiblePriceRange", "swapped"},
    {"barAt", "left out"},
    {"confirmBox", "at once"},
    {"popupMenu", "at once"},
    {"popupMenu", "plus one"}, // a smaller number is what a user could have chosen
    {"popupMenu", "huge"},
    {"popupMenu", "unsteady"},
    {"drawSeriesLabel", "reads one more"},
    {"drawLineSeries", "reads one more"},
    {"drawMarkerSeries", "reads one more"},
    {"screenId", "null"},
    {"screenId", "empty"},
    {"screenId", "Global"},
    {"screenId", "not UTF-8"},
    {"screenId", "changing"},
    {"screenId", "the same for two"},
    {"the factory", "doubled"},
    {"the factory", "without JSON"},
    {"the factory", "with other text"},
    {"the factory", "with a text as type"},
    {"the factory", "with an unknown type"},
    {"the factory", "with a negative refresh"},
    {"the factory", "with a text as refresh"},
    {"the factory", "with a misspelt key"},
    {"the factory", "on another thread"},
    {"count", "plus one"},
    {"count", "minus one"},
    {"count", "negative"},
    {"bars", "null"},
    {"bars", "one left out in front"},
    {"bars", "newest first"},
    {"bars", "one doubled"},
    {"period", "plus one"},
    {"period", "minus one"},
    {"identity", "zero"},
    {"identity", "unsteady"},
    {"identity", "the same for two"},
    {"market", "none"},
    {"market", "unknown"},
    {"code", "empty"},
    {"code", "not ended"},
    {"code", "not ASCII"},
    {"name", "not ended"},
    {"name", "cut inside a character"},
    {"painter", "null"},
    {"pixel", "not a number"},
    {"handleMousePress", "beside the marks"},
};

} // namespace

std::vector<Fault> allFaults()
{
    std::vector<Fault> faults(std::begin(singles), std::end(singles));
    for (const char *const call : calls) {
        for (const char *const way :
             {"left out", "doubled", "inside an answer", "after the end", "on another thread"}) {
            faults.push_back({call, way});
        }
    }
    for (const char *const call : idleCalls) {
        for (const char *const way : {"inside an answer", "after the end", "on another thread"}) {
            faults.push_back({call, way});
        }
    }
    for (const char *const drawing : drawings) {
        for (const char *const way : {"runs events", "calls the overlay", "ends the overlay"}) {
            faults.push_back({drawing, way});
        }
    }
    for (const char *const call : {"calcIt", "paintIt"}) {
        faults.push_back({call, "after deleteObject"});
    }
    for (const char *const answer : answers) {
        faults.push_back({answer, "runs events"});
    }
    for (const char *const answer : wholeNumbers) {
        for (const char *const way : wholeWays) {
            faults.push_back({answer, way});
        }
    }
    for (const char *const number : numbers) {
        for (const char *const way : wholeWays) {
            faults.push_back({number, way});
        }
        for (const char *const way : realWays) {
            if (std::string(number).find("time") == std::string::npos) {
                faults.push_back({number, way});
            }
        }
    }
    return faults;
}

namespace {

/// True at every other call, the first one too.
bool s_isUneven = false;

bool isUneven()
{
    return s_isUneven = !s_isUneven;
}

template <class Number>
Number wrong(const Fault &fault, const char *what, Number right)
{
    using Limits = std::numeric_limits<Number>;
    const auto one = static_cast<Number>(1);
    return fault.is(what, "plus one")       ? right + one
           : fault.is(what, "minus one")    ? right - one
           : fault.is(what, "negative")     ? static_cast<Number>(-right - one)
           : fault.is(what, "zero")         ? Number{}
           : fault.is(what, "huge")         ? static_cast<Number>(Limits::max() / 2)
           : fault.is(what, "unsteady")     ? (isUneven() ? right + 3 * one : right)
           : fault.is(what, "not a number") ? Limits::quiet_NaN()
           : fault.is(what, "infinite")     ? Limits::infinity()
                                            : right;
}

void spoil(const Fault &fault, const std::string &what, AnalyData *bar)
{
    bar->time = wrong(fault, (what + ".time").c_str(), bar->time);
    bar->high = wrong(fault, (what + ".high").c_str(), bar->high);
    bar->low = wrong(fault, (what + ".low").c_str(), bar->low);
    bar->close = wrong(fault, (what + ".close").c_str(), bar->close);
}

void spoil(const Fault &fault, Korvane::tagCodeWithName *security)
{
    if (fault.is("identity", "zero") || fault.is("identity", "unsteady")) {
        security->identity = fault.how == "zero" || isUneven() ? 0 : security->identity;
        security->identity += fault.how == "zero" ? 0 : 7;
    }
    if (fault.is("identity", "the same for two") && isUneven()) {
        security->code[0] = '3';
    }
    if (fault.what == "market") {
        security->market = fault.how == "none" ? -1 : 77;
    }
    if (fault.what == "code") {
        std::memset(security->code, fault.how == "empty" ? 0 : '7', sizeof security->code);
        security->code[6] = fault.is("code", "not ASCII") ? '\xE4' : security->code[6];
        security->code[38] = fault.is("code", "not ended") ? '7' : '\0';
    }
    if (fault.what == "name") {
        std::memset(security->name, 'n', sizeof security->name);
        std::memcpy(security->name + 29, "\xE4\xB8", fault.is("name", "not ended") ? 2 : 3);
    }
}

std::vector<AnalyData> spoiltBars(const Fault &fault, const AnalyData *bars, int count)
{
    std::vector<AnalyData> handed(bars, bars + count);
    for (AnalyData &bar : handed) {
        spoil(fault, "bar", &bar);
    }
    if (fault.is("count", "plus one")) { // what happens to lie there
        AnalyData other;
        std::memset(static_cast<void *>(&other), 0x33, sizeof other);
        handed.push_back(other);
    } else if (fault.is("count", "minus one")) {
        handed.pop_back();
    } else if (fault.is("bars", "one left out in front")) {
        handed.erase(handed.begin());
    } else if (fault.is("bars", "newest first")) {
        std::reverse(handed.begin(), handed.end());
    } else if (fault.is("bars", "one doubled")) {
        handed[1] = handed[2];
    }
    return handed;
}

std::string spoiltJson(const Fault &fault, std::string json)
{
    const auto replace = [&json](const std::string &text) { json.replace(1, 0, text + ","); };
    if (fault.is("the factory", "with a text as type")) {
        json = R"({"type":"0"})";
    } else if (fault.is("the factory", "with an unknown type")) {
        json = R"({"type":7})";
    } else if (fault.is("the factory", "with other text")) {
        json = "cost line";
    } else if (fault.is("the factory", "with a negative refresh")) {
        replace(R"("auto_refresh_time":-5)");
    } else if (fault.is("the factory", "with a text as refresh")) {
        replace(R"("auto_refresh_time":"5")");
    } else if (fault.is("the factory", "with a misspelt key")) {
        replace(R"("auto_refresh":5)");
    }
    return json;
}

} // namespace

/// The terminal's axis with wrong answers.
class FaultyBorder::Axis final : public Korvane::IChartAxis
{
public:
    Axis(Korvane::IChartAxis &right, const Fault &fault) : m_right(right), m_fault(fault) {}

    bool isBeside(const Korvane::IChartAxis &right) const { return &right == &m_right; }

    std::function<void()> insideAnswer; ///< called in the next one

    int chartMode() override
    {
        disturb("chartMode");
        return wrong(m_fault, "chartMode", m_right.chartMode());
    }
    bool visiblePriceRange(double &low, double &high) override
    {
        disturb("visiblePriceRange");
        if (m_fault.is("visiblePriceRange", "left out") || m_fault.is("visiblePriceRange", "not filled")) {
            return m_fault.how == "not filled";
        }
        const bool isSwapped = m_fault.is("visiblePriceRange", "swapped");
        const bool isGiven = m_right.visiblePriceRange(isSwapped ? high : low, isSwapped ? low : high);
        low = wrong(m_fault, "low", low);
        high = wrong(m_fault, "high", high);
        return isGiven;
    }
    const char *screenId() override
    {
        disturb("screenId");
        return m_fault.what != "screenId"                                     ? m_right.screenId()
               : m_fault.how == "null"                                        ? nullptr
               : m_fault.how == "empty"                                       ? ""
               : m_fault.how == "Global" || m_fault.how == "the same for two" ? m_fault.how.c_str()
               : m_fault.how == "not UTF-8"                                   ? "\xE4\xB8"
               : m_fault.how == "changing" && isUneven()                      ? "another"
                                                                              : m_right.screenId();
    }
    double markerSize() override
    {
        disturb("markerSize");
        return wrong(m_fault, "markerSize", m_right.markerSize());
    }
    void updateObject(Korvane::IChartObject *object) override
    {
        if (!m_fault.is("updateObject", "left out")) {
            m_right.updateObject(object);
        }
    }
    int popupMenu(const char **lines, void *reserved) override
    {
        return m_fault.is("popupMenu", "at once")
                   ? 0
                   : wrong(m_fault, "popupMenu", m_right.popupMenu(lines, reserved));
    }
    void showMessage(const char *text) override { m_right.showMessage(text); }
    bool confirmBox(const char *text) override
    {
        return m_fault.is("confirmBox", "at once") || m_right.confirmBox(text);
    }
    double barToX(int bar) override
    {
        disturb("barToX");
        return wrong(m_fault, "barToX", m_right.barToX(bar));
    }
    double priceToY(double price, int one, int two) override
    {
        disturb("priceToY");
        return wrong(m_fault, "priceToY", m_right.priceToY(price, one, two));
    }
    int xToBar(double x) override
    {
        disturb("xToBar");
        return wrong(m_fault, "xToBar", m_right.xToBar(x));
    }
    void barAt(int bar, AnalyData &out) override
    {
        disturb("barAt");
        if (!m_fault.is("barAt", "left out")) {
            m_right.barAt(bar, out);
            spoil(m_fault, "copy", &out);
        }
    }

private:
    void disturb(const char *answer)
    {
        if (m_fault.is(answer, "runs events")) {
            QCoreApplication::processEvents();
        }
        if (insideAnswer) {
            std::exchange(insideAnswer, nullptr)();
        }
    }

    Korvane::IChartAxis &m_right;
    const Fault &m_fault;
};

/// The terminal's painter, doing more than to draw.
class FaultyBorder::Painter final : public Korvane::IChartPainter
{
public:
    Painter(Korvane::IChartPainter &right, const Fault &fault, Object &overlay)
        : m_right(right),
          m_fault(fault),
          m_overlay(overlay)
    {
    }
    std::size_t length = 0; ///< of the arrays

    void endPaint() override
    {
        disturb("endPaint", nullptr);
        m_right.endPaint();
    }
    void drawSeriesLabel(const double *values, const char *text, int index) override
    {
        disturb("drawSeriesLabel", values);
        m_right.drawSeriesLabel(values, text, index);
    }
    void drawLineSeries(int reserved, const double *values, double width) override
    {
        disturb("drawLineSeries", values);
        m_right.drawLineSeries(reserved, values, width);
    }
    void drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                          int variant) override
    {
        disturb("drawMarkerSeries", prices);
        m_right.drawMarkerSeries(reserved, flags, prices, style, variant);
    }
    void drawMarker(int reserved, int bar, int kind, int atLow, double price) override
    {
        disturb("drawMarker", nullptr);
        m_right.drawMarker(reserved, bar, kind, atLow, price);
    }

private:
    void disturb(const char *drawing, const double *values);

    Korvane::IChartPainter &m_right;
    const Fault &m_fault;
    Object &m_overlay;
};

/// The overlay as the terminal has it, called wrongly.
class FaultyBorder::Object final : public Korvane::IChartObject
{
public:
    Object(FaultyBorder &border, Axis &axis, Korvane::IChartObject *right)
        : m_border(border),
          m_axis(axis),
          m_fault(border.m_fault),
          m_right(right)
    {
    }
    ~Object() override
    {
        if (m_fault.what != "the axis") {
            m_axis.insideAnswer = nullptr;
        }
        if (m_fault.is("the destructor", "left out")) {
            m_border.m_leftOvers.push_back(m_right);
            return;
        }
        if (!m_isEnded) {
            call("the destructor", [this] { return delete m_right, true; });
        }
        if (m_fault.how == "after the end" && m_again) {
            m_again();
        }
    }

    /// Without the terminal's knowledge.
    void end()
    {
        if (!std::exchange(m_isEnded, true)) {
            m_right->deleteObject();
            delete m_right;
        }
    }
    int hitSomewhere() { return m_right->hitTest(1.0, 1.0); }

    int type() const override
    {
        return const_cast<Object *>(this)->call("type", [this] { return m_right->type(); });
    }
    bool deleteObject() override
    {
        const bool isStopped = call("deleteObject", [this] { return m_right->deleteObject(); });
        if (m_fault.how == "after deleteObject" && m_again) {
            m_again();
        }
        return isStopped;
    }
    bool calcIt(const Korvane::tagCodeWithName &code, const AnalyData *bars, int count,
                Korvane::Period period, int a, int b) override
    {
        Korvane::tagCodeWithName security = code;
        spoil(m_fault, &security);
        m_handed = spoiltBars(m_fault, bars, count);
        const int handed = m_fault.is("count", "negative") ? -1 : static_cast<int>(m_handed.size());
        const AnalyData *const start = m_fault.is("bars", "null") ? nullptr : m_handed.data();
        const int its = period + (m_fault.is("period", "plus one")    ? 1
                                  : m_fault.is("period", "minus one") ? -1
                                                                      : 0);
        return call("calcIt", [=] {
            try {
                return m_right->calcIt(security, start, handed, static_cast<Korvane::Period>(its), a, b);
            } catch (const std::exception &) {
                return false; // of a count below zero
            }
        });
    }
    bool calcRatio(int a, int b) override
    {
        return m_fault.is("calcRatio", "after the others") ||
               call("calcRatio", [=] { return m_right->calcRatio(a, b); });
    }
    double maximizeValue(int &value) override
    {
        return call("maximizeValue", [=] { return m_right->maximizeValue(const_cast<int &>(value)); });
    }
    double minimizeValue(int &value) override
    {
        const double lowest =
            call("minimizeValue", [=] { return m_right->minimizeValue(const_cast<int &>(value)); });
        if (m_fault.is("calcRatio", "after the others")) {
            m_right->calcRatio(0, 0);
        }
        return lowest;
    }
    bool paintIt(Korvane::IChartPainter &painter) override
    {
        m_painter = std::make_unique<Painter>(painter, m_fault, *this);
        m_painter->length = m_handed.size();
        Korvane::IChartPainter *handed = m_painter.get();
        if (m_fault.how == "inside an answer" &&
            (m_fault.what == "the destructor" || m_fault.what == "deleteObject")) {
            m_axis.insideAnswer = [this] {
                m_fault.what == "deleteObject" ? void(m_right->deleteObject()) : end();
            };
        }
        if (m_fault.is("painter", "null")) {
            handed = nullptr;
        }
        return call("paintIt", [=] { return paint(handed); });
    }
    int hitTest(double x, double y) override
    {
        const double handed = m_fault.is("pixel", "not a number") ? std::nan("") : x;
        return call("hitTest", [=] { return m_right->hitTest(handed, y); });
    }
    void handleMousePress(double x, double y) override
    {
        const double handed = m_fault.is("handleMousePress", "beside the marks") ? y + 100.0 : y;
        call("handleMousePress", [=] { return m_right->handleMousePress(x, handed), true; });
    }
    void handleMousePressR(double x, double y) override
    {
        call("handleMousePressR", [=] { return m_right->handleMousePressR(x, y), true; });
    }
    void handleMouseRelease(double x, double y) override
    {
        call("handleMouseRelease", [=] { return m_right->handleMouseRelease(x, y), true; });
    }
    void handleMouseReleaseR(double x, double y) override
    {
        call("handleMouseReleaseR", [=] { return m_right->handleMouseReleaseR(x, y), true; });
    }
    void handleMouseMove(double x, double y) override
    {
        call("handleMouseMove", [=] { return m_right->handleMouseMove(x, y), true; });
    }

private:
    /// As a call through the table does it, which knows nothing of references.
    bool paint(Korvane::IChartPainter *painter)
    {
        using PaintIt = bool (*)(void *, void *);
        void *const *table = nullptr;
        std::memcpy(&table, static_cast<void *>(m_right), sizeof table);
        PaintIt slot = nullptr;
        std::memcpy(&slot, table + 8, sizeof slot);
        return slot(m_right, painter);
    }

    template <class Function>
    auto call(const char *operation, Function right) -> decltype(right())
    {
        decltype(right()) result{};
        if (m_fault.is(operation, "left out")) {
            return result;
        }
        if (m_fault.is(operation, "inside an answer")) {
            m_axis.insideAnswer = [right] { right(); };
        }
        if (m_fault.is(operation, "after the end") || m_fault.is(operation, "after deleteObject")) {
            m_again = [right] { right(); };
        }
        if (m_fault.is(operation, "on another thread")) {
            std::thread([&] { result = right(); }).join();
            return result;
        }
        if (m_fault.is(operation, "doubled")) {
            right();
        }
        return right();
    }

    FaultyBorder &m_border;
    Axis &m_axis;
    const Fault &m_fault;
    Korvane::IChartObject *const m_right;
    std::vector<AnalyData> m_handed;
    std::unique_ptr<Painter> m_painter; ///< of the last repaint, which a fault may do again
    std::function<void()> m_again;
    bool m_isEnded = false;
};

void FaultyBorder::Painter::disturb(const char *drawing, const double *values)
{
    if (m_fault.is(drawing, "runs events")) {
        QCoreApplication::processEvents();
    } else if (m_fault.is(drawing, "calls the overlay")) {
        m_overlay.hitSomewhere();
    } else if (m_fault.is(drawing, "ends the overlay")) {
        m_overlay.end();
    } else if (m_fault.is(drawing, "reads one more")) {
        volatile double read = values[length];
        Q_UNUSED(read);
    }
}

FaultyBorder::FaultyBorder(Factory create, Fault fault)
    : m_create(std::move(create)),
      m_fault(std::move(fault))
{
    s_isUneven = false;
}

FaultyBorder::~FaultyBorder()
{
    for (Axis *const axis : m_axes) {
        ::operator delete(axis);
    }
}

Korvane::IChartObject *FaultyBorder::create(Korvane::IChartAxis &right, const char *json)
{
    Axis &axis = axisBeside(right);
    const std::string text = spoiltJson(m_fault, json);
    const char *const handed = m_fault.is("the factory", "without JSON") ? nullptr : text.c_str();
    Korvane::IChartObject *made = nullptr;
    if (m_fault.is("the factory", "on another thread")) {
        std::thread([&] { made = m_create(axis, handed); }).join();
    } else {
        made = m_create(axis, handed);
    }
    return made == nullptr ? nullptr : new Object(*this, axis, made);
}

/// One for each of the terminal's.
FaultyBorder::Axis &FaultyBorder::axisBeside(Korvane::IChartAxis &right)
{
    for (Axis *const axis : m_axes) {
        if (axis->isBeside(right)) {
            return *axis;
        }
    }
    m_axes.push_back(new (::operator new(sizeof(Axis))) Axis(right, m_fault));
    return *m_axes.back();
}

void FaultyBorder::destroyAxes()
{
    if (m_fault.is("the axis", "gone too early")) {
        for (Axis *const axis : m_axes) {
            axis->~Axis();
            std::memset(static_cast<void *>(axis), 0x6B, sizeof *axis); // somebody else's now
        }
    }
}

void FaultyBorder::endLeftOvers()
{
    for (Korvane::IChartObject *const overlay : m_leftOvers) {
        delete overlay;
    }
    m_leftOvers.clear();
}
