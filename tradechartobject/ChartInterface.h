// The border between a chart terminal (the host) and the overlays of this library.
//
// Both sides are built apart and meet at run time, so this header is a binary promise: the order of
// the virtual operations, their argument and result types and the bytes of the records must never
// change. tests/abi/ drives the built library with virtual tables laid by hand to keep it so.
//
// Life of an overlay, as the host drives it (all on the host's user-interface thread):
//   1. CreateChartObject(axis, json)              the overlay joins the bus; nothing is asked yet
//   2. calcIt(code, bars, count, period, a, b)    whenever the security or the loaded bars change
//   3. calcRatio, maximizeValue, minimizeValue    while the host fits its price scale
//   4. paintIt(painter)                           for every repaint
//   5. hitTest, handleMouse...                    on user input, in pixels
//   6. deleteObject()                             stops the refresh timer, and nothing else: calls and
//                                                 messages that still come do what they always do
//   7. the virtual destructor                     leaves the bus and frees everything
//
// docs/host-interface.md tells what each operation is called with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace Korvane {

class IChartObject;

/// One bar of the chart. The host hands an array of them to calcIt(), oldest bar first.
struct AnalyData
{
    /// Packed time stamp, see docs/host-interface.md.
    std::uint32_t time;
    unsigned char unread4[12];
    double high;  ///< highest price, in the currency of the security
    double low;   ///< lowest price
    double close; ///< last price
    unsigned char unread40[40];
};

/// The security that a chart shows.
struct tagCodeWithName
{
    /// The host's market number, -1 when no security is set; TradeChart::getMarketId() names it.
    std::int8_t market;
    char code[39]; ///< NUL-terminated ASCII security code
    /// Identity word: it differs exactly when the chart has switched to another security; never 0.
    std::int64_t identity;
    char name[32]; ///< NUL-terminated UTF-8 security name
};

/// A chart period. The host knows more values than are named here; any int may arrive.
enum Period : int {
    NoPeriod = -1,      ///< no calcIt() yet
    DayPeriod = 4,      ///< one bar a trading day
    IntradayPeriod = 21 ///< the minutes of one trading day
};

/// What chartMode() answers; other numbers are the host's.
enum ChartMode : int {
    TodayChart = 1,  ///< the minutes of today
    PastDayChart = 2 ///< those of an earlier day
};

// The numbers that painters know. Do not change one: hosts are built against them.

/// A marker of trades; even ones stand above their bar, odd ones below.
enum MarkerStyle : int {
    BuyAbove = 0,
    BuyBelow = 1,
    SellAbove = 2,
    SellBelow = 3,
    BothAbove = 4, ///< buys and sells
    BothBelow = 5
};

/// Which way the markers of a series reach from their prices.
enum MarkerVariant : int { BelowTheBar = 0, AboveTheBar = 1 };

/// A marker of the orders at one price.
enum MarkerKind : int {
    BuyWaiting = 20,  ///< buys, none dealt
    BuyPartDeal = 21, ///< a partly dealt buy; also waiting and dealt orders of one side, buys and sells alike
    BuyDealed = 22,   ///< dealt buys
    SellWaiting = 23, ///< sells, none dealt
    SellPartDeal = 24, ///< a partly dealt sell
    SellDealed = 25    ///< dealt sells
};

/// What type() of every overlay of this library answers, whatever it draws: it tells the host its own
/// chart objects from those of a plug-in.
constexpr int pluginObjectType = 3;

// The placeholders below keep the places of host operations that no overlay calls. A host that
// derives from these declarations may leave them as they are.

/// Drawing surface of one repaint; valid during paintIt() only. Per-bar arrays hold one double for
/// every bar of the last calcIt() and are borrowed for the call.
class IChartPainter
{
public:
    virtual void reserved0() {}
    virtual void reserved1() {}
    virtual void reserved2() {}
    virtual void reserved3() {}
    /// Closes the overlay's drawing.
    virtual void endPaint() = 0;
    virtual void reserved5() {}
    virtual void reserved6() {}
    virtual void reserved7() {}
    /// Draws the UTF-8 `text` beside the series `values`; `index` is always -1.
    virtual void drawSeriesLabel(const double *values, const char *text, int index) = 0;
    virtual void reserved9() {}
    virtual void reserved10() {}
    virtual void reserved11() {}
    virtual void reserved12() {}
    /// Draws a line through one value per bar, NaN meaning no point. `reserved` is 0, `width` in pixels.
    virtual void drawLineSeries(int reserved, const double *values, double width) = 0;
    virtual void reserved14() {}
    virtual void reserved15() {}
    virtual void reserved16() {}
    virtual void reserved17() {}
    virtual void reserved18() {}
    virtual void reserved19() {}
    virtual void reserved20() {}
    virtual void reserved21() {}
    virtual void reserved22() {}
    virtual void reserved23() {}
    virtual void reserved24() {}
    virtual void reserved25() {}
    virtual void reserved26() {}
    virtual void reserved27() {}
    virtual void reserved28() {}
    virtual void reserved29() {}
    virtual void reserved30() {}
    virtual void reserved31() {}
    virtual void reserved32() {}
    virtual void reserved33() {}
    virtual void reserved34() {}
    /// Draws a marker on every bar whose flag is 1.0, at that bar's price. `style` is a MarkerStyle,
    /// `variant` a MarkerVariant.
    virtual void drawMarkerSeries(int reserved, const double *flags, const double *prices, int style,
                                  int variant) = 0;
    /// Draws one order marker of `kind`, a MarkerKind, on `bar`; `atLow` is 1 when its price was clamped to
    /// the bottom of the visible scale.
    virtual void drawMarker(int reserved, int bar, int kind, int atLow, double price) = 0;

protected:
    ~IChartPainter() = default; // the host's own: an overlay never destroys it
};

/// Services of one chart. The host keeps it alive longer than every overlay made for it.
class IChartAxis
{
public:
    virtual void reserved0() {}
    virtual void reserved1() {}
    /// A ChartMode, or another number of the host's.
    virtual int chartMode() = 0;
    /// Fills the lowest and highest visible price; false when there is no scale to draw on.
    virtual bool visiblePriceRange(double &low, double &high) = 0;
    /// UTF-8 name of the screen that holds the chart; also the bus channel of its answers.
    virtual const char *screenId() = 0;
    virtual void reserved5() {}
    virtual void reserved6() {}
    virtual void reserved7() {}
    virtual void reserved8() {}
    virtual void reserved9() {}
    virtual void reserved10() {}
    virtual void reserved11() {}
    /// Height of a trade marker in pixels.
    virtual double markerSize() = 0;
    /// Asks the host to recompute and repaint `object`.
    virtual void updateObject(IChartObject *object) = 0;
    virtual void reserved14() {}
    virtual void reserved15() {}
    virtual void reserved16() {}
    virtual void reserved17() {}
    /// Shows a list of UTF-8 lines, ended by a null pointer, and blocks until the user has chosen.
    /// Returns the chosen row, negative for none. `reserved` is null. Lines are borrowed for the call.
    /// The list of CChartTradeObject has no null pointer at its end; CombinedOverlay.h tells its length.
    virtual int popupMenu(const char **lines, void *reserved) = 0;
    virtual void reserved19() {}
    /// Shows a UTF-8 message to the user.
    virtual void showMessage(const char *text) = 0;
    /// Asks a yes/no question and blocks until it is answered; true for yes.
    virtual bool confirmBox(const char *text) = 0;
    virtual void reserved22() {}
    /// x pixel of the centre of a bar.
    virtual double barToX(int bar) = 0;
    /// y pixel of a price, growing downwards; both ints are -1.
    virtual double priceToY(double price, int, int) = 0;
    /// Index of the bar under an x pixel.
    virtual int xToBar(double x) = 0;
    /// Copies the record of a bar.
    virtual void barAt(int bar, AnalyData &out) = 0;

protected:
    ~IChartAxis() = default; // the host's own: an overlay never destroys it
};

/// An overlay, as the host sees it. The host owns it and ends it with deleteObject() and then the
/// virtual destructor.
class IChartObject
{
public:
    virtual ~IChartObject() = default;
    /// pluginObjectType for every overlay of this library.
    virtual int type() const = 0;
    /// Stops and deletes the overlay's refresh timer, to be called before destruction; returns true.
    virtual bool deleteObject() = 0;
    /// Recomputes for the security `code` and its `count` loaded bars (may be 0). Both are borrowed
    /// for the call. `a` and `b` are the host's. False from an overlay that does not draw on the period,
    /// and from the buy/sell points when the bus refused their question.
    virtual bool calcIt(const tagCodeWithName &code, const AnalyData *bars, int count, Period period, int a,
                        int b) = 0;
    /// Hook of the host's scaling step.
    virtual bool calcRatio(int, int) = 0;
    /// Highest value for the fitting of the price scale; the argument is left untouched.
    virtual double maximizeValue(int &) = 0;
    /// Lowest value for the same.
    virtual double minimizeValue(int &) = 0;
    /// Draws the overlay.
    virtual bool paintIt(IChartPainter &painter) = 0;
    /// 0 when the pixel (x, y) is on the overlay, -1 when it is not.
    virtual int hitTest(double x, double y) = 0;
    virtual void handleMousePress(double x, double y) = 0;    ///< left button pressed at a pixel
    virtual void handleMousePressR(double x, double y) = 0;   ///< right button pressed
    virtual void handleMouseRelease(double x, double y) = 0;  ///< left button released
    virtual void handleMouseReleaseR(double x, double y) = 0; ///< right button released
    virtual void handleMouseMove(double x, double y) = 0;     ///< pointer moved
};

static_assert(sizeof(AnalyData) == 80 && std::is_trivially_copyable_v<AnalyData>,
              "the host lays its bars 80 bytes apart");
static_assert(offsetof(AnalyData, time) == 0, "a bar starts with its time word");
static_assert(offsetof(AnalyData, high) == 16, "the host keeps the high price at byte 16");
static_assert(offsetof(AnalyData, low) == 24, "the host keeps the low price at byte 24");
static_assert(offsetof(AnalyData, close) == 32, "the host keeps the close price at byte 32");

static_assert(sizeof(tagCodeWithName) == 80 && std::is_trivially_copyable_v<tagCodeWithName>,
              "the host hands over 80 bytes for a security");
static_assert(offsetof(tagCodeWithName, market) == 0, "a security starts with its market number");
static_assert(offsetof(tagCodeWithName, code) == 1, "the code follows the market number");
static_assert(offsetof(tagCodeWithName, identity) == 40, "the host keeps the identity word at byte 40");
static_assert(offsetof(tagCodeWithName, name) == 48, "the host keeps the name at byte 48");

static_assert(sizeof(Period) == sizeof(int), "a period travels as an int");
static_assert(BuyAbove == 0 && BothBelow == 5, "painters know the styles by these numbers");
static_assert(BuyWaiting == 20 && SellDealed == 25, "painters know the kinds by these numbers");

} // namespace Korvane
