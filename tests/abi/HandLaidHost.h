// A terminal that knows the plug-in only as a file: it loads the library, finds the factory by name and
// speaks through virtual tables and records laid by hand. No header of the plug-in is used here, so a
// slot or a byte that moves breaks these tests although everything still compiles.
#pragma once

#include "tests/support/RecordedBus.h"

#include <gmock/gmock.h>

#include <QLibrary>
#include <QObject>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace HandLaid {

/// Any object with virtual operations: a pointer to its table, whose slots follow two words of type
/// information.
struct Virtual
{
    void *const *table;
};

template <class Function>
void *address(Function *function)
{
    void *raw = nullptr;
    std::memcpy(&raw, &function, sizeof raw);
    return raw;
}

template <class Result, class... Arguments>
Result call(void *object, int slot, Arguments... arguments)
{
    using Function = Result (*)(void *, Arguments...);
    Function function = nullptr;
    std::memcpy(&function, static_cast<Virtual *>(object)->table + slot, sizeof function);
    return function(object, arguments...);
}

/// Fails the test and ends it: no overlay uses the slot.
[[noreturn]] void unexpectedSlot();

template <std::size_t slotCount>
struct Table
{
    Table() { words.fill(address(&unexpectedSlot)); }

    template <class Function>
    void set(std::size_t slot, Function *function)
    {
        words[2 + slot] = address(function);
    }
    void *const *slots() const { return words.data() + 2; }

    std::array<void *, 2 + slotCount> words;
};

/// IChartAxis: the price p stands at the row 1000 - p, the bar b at the column 100 b; prices from 10 to 20
/// are visible.
struct Axis : Virtual
{
    std::vector<std::string> calls;
    std::vector<void *> updated;
    std::vector<std::string> popupLines;
    int linesWithoutEnd = 0; ///< more than 0: so many lines, and no null pointer after them
    int chosenLine = -1;
};

/// IChartPainter.
struct Painter : Virtual
{
    std::vector<std::string> calls;
};

const Table<27> &axisTable();
const Table<37> &painterTable();

/// 80 bytes that are read as a record of the host.
struct alignas(8) Record : std::array<unsigned char, 80>
{
};

template <class Value>
void put(Record &record, std::size_t byte, Value value)
{
    std::memcpy(record.data() + byte, &value, sizeof value);
}

Record dayBar(std::int32_t date, double high);

/// A bar of today, `minutes` after midnight.
Record minuteBar(std::uint32_t minutes);

Record security(std::int8_t market, const char *code, std::int64_t identity);

class HandLaidHost : public ::testing::Test
{
protected:
    HandLaidHost()
    {
        RecordedBus::instance().reset();
        axis.table = axisTable().slots();
        painter.table = painterTable().slots();
        // Linux holds the file loaded for the whole run, as a terminal does.
        library.setFileName(QStringLiteral(PLUGIN_FILE));
        library.setLoadHints(QLibrary::PreventUnloadHint);
    }

    ~HandLaidHost() override
    {
        if (overlay != nullptr) {
            call<bool>(overlay, 3);
            call<void>(overlay, 1);
        }
    }

    QFunctionPointer find(const char *symbol)
    {
        const QFunctionPointer found = library.resolve(symbol);
        EXPECT_NE(found, nullptr) << library.errorString().toStdString();
        return found;
    }

    template <class Function>
    Function *function(const char *symbol)
    {
        return reinterpret_cast<Function *>(find(symbol));
    }

    void *create(const char *json)
    {
        if (const auto factory = function<void *(void *, const char *)>("CreateChartObject")) {
            overlay = factory(static_cast<Virtual *>(&axis), json);
        }
        return overlay;
    }

    bool calcIt(const Record &code, int period)
    {
        const std::vector<Record> bars = {dayBar(20240102, 15.0), dayBar(20240103, 16.0)};
        return call<bool, const void *, const void *, int, int, int, int>(overlay, 4, code.data(),
                                                                          bars.data(), 2, period, 7, 8);
    }

    bool paintIt() { return call<bool, void *>(overlay, 8, static_cast<Virtual *>(&painter)); }

    QLibrary library;
    Axis axis;
    Painter painter;
    void *overlay = nullptr;
};

/// A terminal that constructs an overlay in memory of its own, by the constructor's name - the combined one
/// cannot be had otherwise - and drives the part of it that follows the QObject.
class HandLaidHostConstructs : public HandLaidHost
{
protected:
    void construct(const char *json)
    {
        constructBy<const char *>("_ZN17CChartTradeObjectC1ERN7Korvane10IChartAxisEPKc", json);
    }

    template <class... Arguments>
    void constructBy(const char *symbol, Arguments... arguments)
    {
        memory.fill(0xEE);
        if (const auto constructor = function<void(void *, void *, Arguments...)>(symbol)) {
            constructor(memory.data(), static_cast<Virtual *>(&axis), arguments...);
            constructed = memory.data() + qobjectSize;
        }
    }

    ~HandLaidHostConstructs() override
    {
        if (constructed != nullptr) {
            call<bool>(constructed, 3);
            call<void>(constructed, 0); // the memory is not the library's to free
            EXPECT_EQ(RecordedBus::instance().endPointCount(), 0);
        }
    }

    bool calcItOnTwoDays()
    {
        const std::vector<Record> bars = {dayBar(20240102, 16.0), dayBar(20240103, 17.0)};
        const Record code = security(1, "600536", 77);
        return call<bool, const void *, const void *, int, int, int, int>(constructed, 4, code.data(),
                                                                          bars.data(), 2, 4, 7, 8);
    }

    bool paintCombined() { return call<bool, void *>(constructed, 8, static_cast<Virtual *>(&painter)); }

    static constexpr std::size_t qobjectSize = 2 * sizeof(void *);
    alignas(std::max_align_t) std::array<unsigned char, 4096> memory;
    void *constructed = nullptr;
};

} // namespace HandLaid
