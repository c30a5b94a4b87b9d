#include "terminal/data/Utf8Text.h"

#include "trading/DecodedText.h"

#include <algorithm>

namespace Terminal {

std::optional<QByteArray> utf8Of(const QByteArray &bytes)
{
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0; });
    if (isAscii) {
        return bytes;
    }
    const auto decoded = Trading::decodedText(bytes);
    return decoded ? std::optional(decoded->toUtf8()) : std::nullopt;
}

} // namespace Terminal
