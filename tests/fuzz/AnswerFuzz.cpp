// Looks for a message that an overlay would read differently in place than through Qt. The preset `fuzz`
// builds it.
#include "tests/fuzz/TwoWays.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy without an end mark: reading one byte too many is a fault, too.
    const QByteArray text =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const std::string difference = differenceOfWays(text);
    if (!difference.empty()) {
        std::fprintf(stderr, "read differently: %s\n", difference.c_str());
        std::abort();
    }
    return 0;
}
