#include "tests/abi/HandLaidHost.h"

#include <QDate>

#include <cstdlib>

namespace HandLaid {

void unexpectedSlot()
{
    ADD_FAILURE() << "the plug-in called a slot that no overlay uses";
    std::abort();
}

namespace {

Axis &log(void *self, const std::string &name)
{
    auto &axis = *static_cast<Axis *>(static_cast<Virtual *>(self));
    axis.calls.push_back(name);
    return axis;
}

int chartMode(void *self)
{
    log(self, "chartMode");
    return 1;
}

bool visiblePriceRange(void *self, double *low, double *high)
{
    log(self, "visiblePriceRange");
    *low = 10.0;
    *high = 20.0;
    return true;
}

const char *screenId(void *)
{
    return "by-hand";
}

double markerSize(void *self)
{
    log(self, "markerSize");
    return 16.0;
}

void updateObject(void *self, void *object)
{
    log(self, "updateObject").updated.push_back(object);
}

int popupMenu(void *self, const char **lines, void *)
{
    Axis &axis = log(self, "popupMenu");
    for (int line = 0; axis.linesWithoutEnd > 0 ? line < axis.linesWithoutEnd : lines[line] != nullptr;
         ++line) {
        axis.popupLines.emplace_back(lines[line]);
    }
    return axis.chosenLine;
}

void showMessage(void *self, const char *text)
{
    log(self, "showMessage " + std::string(text));
}

bool confirmBox(void *self, const char *text)
{
    log(self, "confirmBox " + std::string(text));
    return true;
}

double barToX(void *self, int bar)
{
    log(self, "barToX " + std::to_string(bar));
    return bar * 100.0;
}

double priceToY(void *self, double price, int one, int two)
{
    log(self, one == -1 && two == -1 ? "priceToY" : "priceToY with other ints");
    return 1000.0 - price;
}

int xToBar(void *self, double x)
{
    log(self, "xToBar");
    return static_cast<int>(x);
}

void barAt(void *self, int bar, void *out)
{
    log(self, "barAt " + std::to_string(bar));
    const double close = 15.0;
    std::memcpy(static_cast<unsigned char *>(out) + 32, &close, sizeof close);
}

} // namespace

const Table<27> &axisTable()
{
    static const Table<27> table = [] {
        Table<27> made;
        made.set(2, &chartMode);
        made.set(3, &visiblePriceRange);
        made.set(4, &screenId);
        made.set(12, &markerSize);
        made.set(13, &updateObject);
        made.set(18, &popupMenu);
        made.set(20, &showMessage);
        made.set(21, &confirmBox);
        made.set(23, &barToX);
        made.set(24, &priceToY);
        made.set(25, &xToBar);
        made.set(26, &barAt);
        return made;
    }();
    return table;
}

namespace {

void draw(void *self, const std::string &call)
{
    static_cast<Painter *>(static_cast<Virtual *>(self))->calls.push_back(call);
}

void endPaint(void *self)
{
    draw(self, "endPaint");
}

void drawSeriesLabel(void *self, const double *values, const char *text, int index)
{
    draw(self,
         "label " + std::string(text) + " at " + std::to_string(values[0]) + " " + std::to_string(index));
}

void drawLineSeries(void *self, int reserved, const double *values, double width)
{
    draw(self,
         "line " + std::to_string(reserved) + " " + std::to_string(values[1]) + " " + std::to_string(width));
}

void drawMarkerSeries(void *self, int reserved, const double *flags, const double *prices, int style,
                      int variant)
{
    draw(self, "markers " + std::to_string(reserved) + " " + (flags[1] == 1.0 ? "on" : "off") + " " +
                   std::to_string(prices[1]) + " " + std::to_string(style) + " " + std::to_string(variant));
}

void drawMarker(void *self, int reserved, int bar, int kind, int atLow, double price)
{
    draw(self, "marker " + std::to_string(reserved) + " " + std::to_string(bar) + " " + std::to_string(kind) +
                   " " + std::to_string(atLow) + " " + std::to_string(price));
}

} // namespace

const Table<37> &painterTable()
{
    static const Table<37> table = [] {
        Table<37> made;
        made.set(4, &endPaint);
        made.set(8, &drawSeriesLabel);
        made.set(13, &drawLineSeries);
        made.set(35, &drawMarkerSeries);
        made.set(36, &drawMarker);
        return made;
    }();
    return table;
}

Record dayBar(std::int32_t date, double high)
{
    Record bar;
    bar.fill(0xEE); // what the plug-in must not read
    put(bar, 0, date);
    put(bar, 16, high);
    put(bar, 24, high - 2.0);
    put(bar, 32, high - 1.0);
    return bar;
}

Record minuteBar(std::uint32_t minutes)
{
    const QDate today = QDate::currentDate();
    const auto year = static_cast<std::uint32_t>(today.year() - 2004);
    const auto monthDay = static_cast<std::uint32_t>(today.month() * 100 + today.day());
    Record bar;
    bar.fill(0xEE);
    put(bar, 0, (year << 27U) | (monthDay << 16U) | minutes);
    return bar;
}

Record security(std::int8_t market, const char *code, std::int64_t identity)
{
    Record record;
    record.fill(0xEE);
    put(record, 0, market);
    std::memcpy(record.data() + 1, code, std::strlen(code) + 1);
    put(record, 40, identity);
    std::memcpy(record.data() + 48, "NAME", 5);
    return record;
}

} // namespace HandLaid
