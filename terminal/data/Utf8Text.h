#pragma once

#include <QByteArray>

#include <optional>
#include <string_view>

namespace Terminal {

/// The text of a file in UTF-8, without a byte order mark, whether it is in UTF-8, UTF-16 or GB18030; nothing
/// for what is no text.
std::optional<QByteArray> utf8Of(const QByteArray &bytes);

inline std::string_view viewOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

} // namespace Terminal
