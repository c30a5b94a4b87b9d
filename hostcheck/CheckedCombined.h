#pragma once

#include "hostcheck/CheckedOverlay.h"

#include <QObject>

#include <memory>

namespace HostCheck {

/// What the terminal gets in the place of a combined overlay, laid out as that one: a QObject with the length
/// of the list, then the interface. It lives in memory of the terminal.
class CheckedCombined : public QObject, public CheckedOverlay
{
public:
    explicit CheckedCombined(std::shared_ptr<Watch> watch) : CheckedOverlay(std::move(watch)) {}

    static void *operator new(std::size_t, void *place) { return place; }
    static void operator delete(void *memory) { ::operator delete(memory); }
};

} // namespace HostCheck
