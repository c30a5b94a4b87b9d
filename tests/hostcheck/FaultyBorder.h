// Faults of a terminal, made between it and the library: the terminal itself stays as it is.
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <QString>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// One thing that is done wrongly: at an operation or at what goes through it, and how.
struct Fault
{
    std::string what; ///< "calcIt", "bar.high", "priceToY"
    std::string how;  ///< "left out", "plus one"

    bool is(const char *where, const char *way) const { return what == where && how == way; }
    friend std::ostream &operator<<(std::ostream &out, const Fault &fault)
    {
        return out << fault.what << ": " << fault.how;
    }
};

/// The faults that can be made: every call and every answer in every way that it can go wrong in.
std::vector<Fault> allFaults();

using Factory = std::function<Korvane::IChartObject *(Korvane::IChartAxis &, const char *)>;

/// Makes overlays by `create` with one fault between them and their terminal. What a fault leaves behind
/// lives as long as this.
class FaultyBorder
{
public:
    FaultyBorder(Factory create, Fault fault);
    ~FaultyBorder();

    Korvane::IChartObject *create(Korvane::IChartAxis &axis, const char *json);

    /// For a fault between the painting of the chart and its end: the axes are gone before the overlays.
    void destroyAxes();

    /// Ends what a fault has left alive.
    void endLeftOvers();

private:
    class Axis;
    class Object;
    class Painter;

    Axis &axisBeside(Korvane::IChartAxis &right);

    const Factory m_create;
    const Fault m_fault;
    std::vector<Axis *> m_axes;
    std::vector<Korvane::IChartObject *> m_leftOvers;
};
