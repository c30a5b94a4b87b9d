#pragma once

#include "hostcheck/CheckedAxis.h"
#include "hostcheck/HandedRecords.h"
#include "hostcheck/Rule.h"
#include "hostcheck/WatchedKind.h"
#include "tradechartobject/ChartInterface.h"

#include <QThread>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace HostCheck {

/// What the checker knows of one overlay: the real one, what the terminal did with it so far, and which of
/// its calls are open.
///
/// A terminal may end an overlay inside some of its calls, so a call keeps the watch alive that it is in.
class Watch : public std::enable_shared_from_this<Watch>
{
public:
    using Real = std::unique_ptr<Korvane::IChartObject, std::function<void(Korvane::IChartObject *)>>;

    /// `axis` is the terminal's; `number` tells overlays of one kind apart.
    Watch(Korvane::IChartAxis &axis, WatchedKind kind, int number);

    /// For the combined overlay, whose list has no end mark.
    void setListLength(std::function<int()> length) { m_axis.listLength = std::move(length); }

    /// What the real overlay is made with.
    Korvane::IChartAxis &axis() { return m_axis; }

    /// `shown` is what the terminal knows as the overlay.
    void attach(Real real, Korvane::IChartObject *shown);

    Korvane::IChartObject &real() { return *m_real; }
    bool isEnded() const { return m_isEnded; }
    Korvane::IChartObject *shown() const { return m_shown; }
    WatchedKind kind() const { return m_kind; }
    const HandedRecords &handed() const { return m_handed; }
    const std::string &name() const { return m_name; }

    /// Reports a rule as broken in the call that is open.
    void tell(Rule rule, const std::string &detail = {}) const;
    Tell teller() const;

    /// A call of the terminal, from its begin to its end. `signature` is what makes it the same call as
    /// another one; empty for calls that may come twice.
    class Call
    {
    public:
        Call(Watch &watch, const char *operation, const void *caller, const std::string &signature = {});
        ~Call();
        Call(const Call &) = delete;
        Call &operator=(const Call &) = delete;

        /// False inside an answer, where the overlay is in the middle of its markers: the call is told and
        /// goes no further.
        bool isAllowed() const { return m_isAllowed; }

    private:
        void checkDoubled(const std::string &signature) const;

        const std::shared_ptr<Watch> m_watch;
        const bool m_isAllowed;
    };

    bool calcIt(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                Korvane::Period period, int a, int b);
    bool calcRatio(int a, int b);
    double maximizeValue(int &value);
    double minimizeValue(int &value);
    bool paintIt(Korvane::IChartPainter &painter);
    int hitTest(double x, double y);
    void handleMousePress(double x, double y);
    /// The other operations of the mouse; none of them does anything.
    void checkPixel(double x, double y) const;
    bool stop();

    /// Ends the real overlay.
    void end();

    // For the axis
    void noteScreenId(const char *id);
    void notePriceRange(bool isGiven);
    void noteUpdate();

    /// Tells what an overlay that still lives owes at the end of the application.
    void tellNotEnded() const;

    /// The overlays that live now.
    static std::vector<Watch *> &living();

private:
    void checkOtherCharts();
    void checkScaleAsked();
    void checkUpdates(bool isEnding) const;
    void checkMode() const;
    void keepRecords(const Korvane::tagCodeWithName &code, const Korvane::AnalyData *bars, int count,
                     int period);
    std::string place() const;

    const WatchedKind m_kind;
    const std::string m_name;
    const QThread *const m_thread;
    CheckedAxis m_axis;
    Real m_real;
    Korvane::IChartObject *m_shown = nullptr;
    std::vector<std::string> m_calls; ///< open ones, the last is the innermost
    HandedRecords m_handed;
    std::size_t m_arrayLength = 0; ///< of what the overlay lends to painters
    std::string m_screenId;
    long m_paintedAt = 0;        ///< by a count of all paintings; 0: not yet
    int m_securityPaintings = 0; ///< since it shows this security
    bool m_isLaidOut = false;    ///< painted since the last calcIt
    std::optional<std::chrono::steady_clock::time_point> m_updateAsked;
    std::optional<std::chrono::steady_clock::time_point> m_repaintOwed;
    int m_rangesAsked = 0;
    int m_rangesGiven = 0;
    const std::optional<std::chrono::steady_clock::time_point> m_madeAt = std::chrono::steady_clock::now();
    std::optional<std::chrono::steady_clock::time_point> m_calculatedAt; ///< the first time
    bool m_isRefused = false;
    bool m_isServed = false; ///< at some time
    bool m_isPainted = false;
    bool m_isStopped = false;
    bool m_isEnded = false;
    bool m_hasRatio = false; ///< since the last calcIt
    bool m_isScaleAsked = false;
    int m_maximaAsked = 0;
    int m_minimaAsked = 0;
};

} // namespace HostCheck
