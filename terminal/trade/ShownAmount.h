#pragma once

#include <QString>

namespace Terminal {

/// A figure of the user's shares or money, or what stands in its place while amounts are hidden.
inline QString shownAmount(const QString &figure, bool isHidden)
{
    return isHidden ? QStringLiteral("***") : figure;
}

} // namespace Terminal
