#include "hostcheck/HostCheck.h"

#include "hostcheck/CheckedCombined.h"
#include "hostcheck/CheckedOverlay.h"
#include "hostcheck/EventTurns.h"
#include "hostcheck/RealLibrary.h"
#include "hostcheck/Report.h"
#include "hostcheck/Watch.h"

#include <QCoreApplication>
#include <QThread>
#include <QVariant>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace HostCheck;

namespace {

/// Since the last end of a run.
struct Run
{
    int overlays = 0;
    long turnsBefore = 0;
};

Run &run()
{
    static Run run;
    return run;
}

/// For the first run too short to be told by a summary: nothing was loaded but the file.
void endAtExit()
{
    if (!Report::ofProcess().isEmpty()) {
        EndHostCheck();
    }
}

void tellNotEnded()
{
    for (const Watch *const watch : Watch::living()) {
        watch->tellNotEnded();
    }
}

void begin()
{
    static const bool isRegistered = std::atexit(&endAtExit) == 0;
    Q_UNUSED(isRegistered);
    EventTurns::watch();
    if (run().overlays++ == 0) {
        run().turnsBefore = EventTurns::count();
        qAddPostRoutine(&tellNotEnded);
    }
    Report::ofProcess().countOverlay();
}

void checkMaking(const char *json, int types, const std::string &place)
{
    const Tell tell = [&place](Rule rule, const std::string &detail) {
        Report::ofProcess().tell(rule, place, detail);
    };
    const QCoreApplication *const application = QCoreApplication::instance();
    if (application == nullptr) {
        tell(Rule::NoApplication, {});
    } else if (QThread::currentThread() != application->thread()) {
        tell(Rule::FactoryOffThread, {});
    }
    checkConfiguration(json, types, tell);
}

WatchedKind combinedKind(int type)
{
    return type == 0   ? WatchedKind::CombinedCost
           : type == 1 ? WatchedKind::CombinedTrades
                       : WatchedKind::CombinedNothing;
}

using CombinedMemory = std::array<unsigned char, Korvane::CombinedOverlay::memorySize>;

/// A real combined overlay in memory of our own, which is freed with it.
Watch::Real makeCombined(Watch &watch, const char *json)
{
    void *const memory = ::operator new(sizeof(CombinedMemory));
    RealLibrary::get().constructCombined(memory, watch.axis(), json);
    auto *const object = reinterpret_cast<Korvane::IChartObject *>(static_cast<char *>(memory) +
                                                                   Korvane::CombinedOverlay::interfaceOffset);
    return {object, [memory](Korvane::IChartObject *overlay) {
                overlay->~IChartObject();
                ::operator delete(memory);
            }};
}

void checkMemory(const void *memory)
{
    const char *const place = "the constructor of a combined overlay";
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    bool isInUse = false;
    for (const Watch *const watch : Watch::living()) {
        const auto other =
            reinterpret_cast<std::uintptr_t>(watch->shown()) - Korvane::CombinedOverlay::interfaceOffset;
        isInUse = isInUse || (isCombined(watch->kind()) && other == address);
    }
    if (address % alignof(std::max_align_t) != 0 || isInUse) {
        Report::ofProcess().tell(Rule::CombinedMemory, place);
    }
}

} // namespace

/// As libtradechartobject has it.
extern "C" Q_DECL_EXPORT Korvane::IChartObject *CreateChartObject(Korvane::IChartAxis &axis, const char *json)
{
    begin();
    checkMaking(json, 3, "CreateChartObject");
    const int type = typeOf(json);
    const RealLibrary::Factory create = RealLibrary::get().create;
    if (create == nullptr || type < 0 || type > 2) {
        return create == nullptr ? nullptr : create(axis, json); // whose message the terminal is to see
    }
    const auto watch = std::make_shared<Watch>(axis, static_cast<WatchedKind>(type), run().overlays);
    Watch::Real real(create(watch->axis(), json), [](Korvane::IChartObject *overlay) { delete overlay; });
    auto *const shown = new CheckedOverlay(watch); // the terminal's, which ends it
    watch->attach(std::move(real), shown);
    return shown;
}

/// As libtradechartobject has it: the name is that of CombinedOverlay.h.
extern "C" Q_DECL_EXPORT void
_ZN17CChartTradeObjectC1ERN7Korvane10IChartAxisEPKc( // NOLINT: the compiler's name
    void *memory, Korvane::IChartAxis &axis, const char *json)
{
    static_assert(sizeof(CheckedCombined) <= Korvane::CombinedOverlay::memorySize,
                  "the terminal's memory holds it");
    begin();
    checkMaking(json, 2, "the constructor of a combined overlay");
    checkMemory(memory);
    if (RealLibrary::get().constructCombined == nullptr) {
        std::abort(); // there is no way to refuse, and what is missing was told
    }
    const auto watch = std::make_shared<Watch>(axis, combinedKind(typeOf(json)), run().overlays);
    Watch::Real real = makeCombined(*watch, json);
    auto *const shown = new (memory) CheckedCombined(watch);
    const auto *const realObject = reinterpret_cast<const QObject *>(
        reinterpret_cast<const char *>(real.get()) - Korvane::CombinedOverlay::interfaceOffset);
    watch->setListLength([shown, realObject] {
        const QVariant length = realObject->property(Korvane::CombinedOverlay::listLength);
        shown->setProperty(Korvane::CombinedOverlay::listLength, length);
        return length.toInt();
    });
    watch->attach(std::move(real), shown);
}

const char *EndHostCheck()
{
    static std::string &summary = *new std::string; // readable to the end of the process
    tellNotEnded();
    if (run().overlays > 0 && EventTurns::count() == run().turnsBefore) {
        Report::ofProcess().tell(Rule::NoEventLoop, "the whole run");
    }
    run() = {};
    summary = Report::ofProcess().endRun();
    return summary.c_str();
}
