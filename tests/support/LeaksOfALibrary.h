#pragma once

#ifdef __SANITIZE_ADDRESS__
#    include <sanitizer/lsan_interface.h>
#endif

/// While one lives, memory that is taken is not looked for at the end: of calls in which a library forgets
/// some.
#ifdef __SANITIZE_ADDRESS__
using LeaksOfALibrary = __lsan::ScopedDisabler;
#else
struct LeaksOfALibrary
{
    LeaksOfALibrary() {} // NOLINT(modernize-use-equals-default): a trivial one would count as unused
};
#endif
