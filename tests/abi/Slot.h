#pragma once

#include <cstring>

/// The operation in this slot of an interface, to be called as a terminal calls it that knows nothing but
/// numbers.
template <class Function, class Object>
Function slot(Object &object, int number)
{
    void **table = nullptr;
    std::memcpy(&table, static_cast<void *>(&object), sizeof table);
    Function function = nullptr;
    std::memcpy(&function, table + number, sizeof function);
    return function;
}
