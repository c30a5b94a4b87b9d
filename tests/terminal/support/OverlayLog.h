#pragma once

#include <QLibrary>

#include <string>

namespace Terminal {

/// What happened to the test's overlays since the last call.
inline std::string overlayLog()
{
    using TakeLog = const char *(*)();
    const auto take =
        reinterpret_cast<TakeLog>(QLibrary::resolve(QStringLiteral(TEST_OVERLAYS), "takeOverlayLog"));
    return take();
}

/// Whether the test's library makes the overlays that it is asked for, as it does at first.
inline void setLibraryMakesOverlays(bool makes)
{
    using SetMakes = void (*)(bool);
    const auto set =
        reinterpret_cast<SetMakes>(QLibrary::resolve(QStringLiteral(TEST_OVERLAYS), "setMakesOverlays"));
    set(makes);
}

/// How far below the close of its bar the test's cost line lies in bars that come from now on, 0 at first.
inline void setCostOffset(double offset)
{
    using SetOffset = void (*)(double);
    const auto set =
        reinterpret_cast<SetOffset>(QLibrary::resolve(QStringLiteral(TEST_OVERLAYS), "setCostOffset"));
    set(offset);
}

inline int countOf(const std::string &text, const std::string &part)
{
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace Terminal
