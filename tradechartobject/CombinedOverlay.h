// What a terminal needs to construct the combined overlay (CChartTradeObject) out of the library's file,
// which has no factory for it. A terminal that links the library uses the class itself, and its
// header tells of what it does; docs/host-interface.md tells of both.
//
//   void *memory = ::operator new(CombinedOverlay::memorySize);
//   auto construct =
//   reinterpret_cast<CombinedOverlay::Constructor>(library.resolve(CombinedOverlay::constructor));
//   construct(memory, axis, R"({"type":1})");
//   auto *overlay = reinterpret_cast<Korvane::IChartObject *>(static_cast<char *>(memory) +
//                                                             CombinedOverlay::interfaceOffset);
//   ...
//   overlay->~IChartObject(); // the whole overlay, by its virtual destructor
//   ::operator delete(memory);
#pragma once

#include "tradechartobject/ChartInterface.h"

#include <cstddef>

namespace Korvane::CombinedOverlay {

/// Name of the symbol that constructs an overlay in memory of the terminal: `json` has "type" 0 for the
/// cost line, 1 for the trade markers.
constexpr char constructor[] = "_ZN17CChartTradeObjectC1ERN7Korvane10IChartAxisEPKc";
using Constructor = void (*)(void *memory, IChartAxis &axis, const char *json);

/// Bytes of memory that hold an overlay of this and later versions, aligned as operator new does it.
constexpr std::size_t memorySize = 1024;

/// The overlay starts with its QObject; its IChartObject follows so many bytes into it.
constexpr std::size_t interfaceOffset = 2 * sizeof(void *);

/// The QObject's property, an int, that holds the number of lines of the list when popupMenu() is called:
/// the array itself has no end mark. Read it on entry and keep it: a click inside the list shows another
/// one and changes it. Libraries older than the property do not have it.
constexpr char listLength[] = "popupLineCount";

} // namespace Korvane::CombinedOverlay
