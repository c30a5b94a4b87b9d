#pragma once

#include <QRegularExpression>
#include <QString>

namespace Terminal {

/// A figure of the user's shares or money, or what stands in its place while amounts are hidden.
inline QString shownAmount(const QString &figure, bool isHidden)
{
    return isHidden ? QStringLiteral("***") : figure;
}

/// Somebody else's words, which may tell amounts, with every figure in them replaced while amounts are
/// hidden.
inline QString withoutFigures(const QString &words, bool isHidden)
{
    static const QRegularExpression figure(QStringLiteral(R"(\d+(?:[.,]\d+)*)"));
    return isHidden ? QString(words).replace(figure, shownAmount({}, true)) : words;
}

} // namespace Terminal
