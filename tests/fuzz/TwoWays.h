#pragma once

#include <QByteArray>

#include <string>

/// Reads a message in place and through Qt's tree, as overlays do with answers of every kind, and holds the
/// one against the other. The first difference; empty when there is none, and when it is not read in place.
std::string differenceOfWays(const QByteArray &text);

/// Whether a message is read in place at all.
bool isReadInPlace(const QByteArray &text);
