#pragma once

#include <QStringList>

#include <vector>

namespace Terminal {

/// A kind of overlay that the overlay library offers.
struct OverlayKind
{
    const char *word;  ///< of the command line and the settings
    int factoryType;   ///< "type" of the library's factory
    const char *title; ///< English source text of its toggle
    /// True when it adds up records of the range it was shown, so that another range needs a new one.
    bool boundToRange;
    std::vector<const char *> commands; ///< whose answers are its data
};

const std::vector<OverlayKind> &overlayKinds();

/// The kind of a word; null when there is none.
const OverlayKind *findOverlayKind(const QString &word);

QStringList overlayWords();

/// The title that the user reads, translated.
QString overlayTitle(const OverlayKind &kind);

} // namespace Terminal
